// The service manager of the portable machine with real service processes: test_service
// stands for the service's program, /bin/true for one that ends without running.
#include <gtest/gtest.h>

#include <signal.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "platform/portable/ServiceLock.h"
#include "support/ProgramRun.h"
#include "support/ServiceRegistration.h"
#include "support/TestMachine.h"

namespace {

namespace fs = std::filesystem;
using platform::EnumServiceStatus;
using platform::kEnumServiceStatusSize;
using platform::ScHandle;
using platform::portable::ServiceLock;
namespace servicestate = platform::servicestate;
namespace servicestatus = platform::servicestatus;
namespace serviceenum = platform::serviceenum;
namespace status = platform::status;

const std::string kService = "Test Service";
const std::string kDisplay = "Dienst f\xfcr Tests";  // ANSI: one byte for the u-umlaut
const std::string kProgram = "C:\\Program Files\\Test Vendor\\TestSvc.exe";
const std::string kQuick = "Quick Exit";
const std::string kQuickProgram = "C:\\Program Files\\Other\\quick.exe";
const std::string kUnmapped = "Unmapped";

std::string slurp(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

class ServiceManagerTest : public ::testing::Test {
protected:
    ServiceManagerTest() {
        machine.mapProgram(kProgram, TEST_SERVICE);
        machine.mapProgram(kQuickProgram, "/bin/true");
        install(kService, kDisplay, platform::regtype::ExpandSz, "\"" + kProgram + "\"");
        install(kQuick, kQuick, platform::regtype::Sz, kQuickProgram + " /run --now");
        install(kUnmapped, "Not mapped", platform::regtype::Sz,
                "\"C:\\Program Files\\Other\\none.exe\" -k group");
        EXPECT_EQ(services().OpenSCManagerA(platform::scmaccess::EnumerateService, &manager),
                  status::Success);
    }
    // Whatever a failed test left running ends with it.
    ~ServiceManagerTest() override {
        if (const auto pid = ServiceLock::holder(lockFile())) {
            ::kill(*pid, SIGKILL);
            ::waitpid(*pid, nullptr, 0);
        }
        services().CloseServiceHandle(manager);
    }

    platform::ServiceManager& services() { return machine.platform().services; }
    fs::path lockFile() const { return ServiceLock::file(machine.folder(), kService); }
    fs::path marker() const { return machine.folder() / "run" / (kService + ".stopped"); }

    void install(const std::string& name, const std::string& display, std::uint32_t imageType,
                 const std::string& imagePath) {
        EXPECT_EQ(testing_support::registerService(machine.platform().registry, name, display,
                                                   imageType, imagePath),
                  status::Success);
    }

    // The services in the states asked for, with room for all of them.
    std::vector<EnumServiceStatus> list(std::uint32_t states) {
        std::vector<EnumServiceStatus> listed;
        std::uint32_t needed = 0;
        const long result = services().EnumServicesStatusA(manager, platform::servicetype::Win32,
                                                           states, 1 << 16, &listed, &needed);
        EXPECT_EQ(result, status::Success);
        return listed;
    }
    std::uint32_t state(const std::string& name) {
        for (const auto& service : list(serviceenum::All)) {
            if (service.serviceName == name) {
                return service.currentState;
            }
        }
        return 0;
    }
    // A second process of the service's program, as a user would start it by hand.
    int runSecondProcess() {
        return testing_support::runProgram(TEST_SERVICE, {QString::fromStdString(kService)},
                                           QString::fromStdString(machine.folder().string()))
            .status;
    }

    testing_support::TestMachine machine;
    ScHandle manager = 0;
};

// The room of a record counts both names in ANSI bytes; once its manager is closed, a handle
// lists nothing.
TEST_F(ServiceManagerTest, EnumerationCountsAnsiBytesAndNeedsAnOpenManager) {
    std::vector<EnumServiceStatus> listed;
    std::uint32_t needed = 0;
    EXPECT_EQ(services().EnumServicesStatusA(manager, platform::servicetype::Win32,
                                             serviceenum::All, 0, &listed, &needed),
              status::MoreData);
    EXPECT_EQ(needed, 3 * kEnumServiceStatusSize + kService.size() + kDisplay.size() +
                          2 * kQuick.size() + kUnmapped.size() + std::strlen("Not mapped") + 6);
    EXPECT_EQ(list(serviceenum::Inactive).size(), 3u);
    ASSERT_EQ(services().CloseServiceHandle(manager), status::Success);
    EXPECT_EQ(services().EnumServicesStatusA(manager, platform::servicetype::Win32,
                                             serviceenum::All, 1 << 16, &listed, &needed),
              status::InvalidHandle);
    EXPECT_EQ(services().OpenSCManagerA(platform::scmaccess::Connect, &manager), status::Success);
}

// The service runs in a process of its own until it is asked to stop; it ends its work before
// the stop returns.
TEST_F(ServiceManagerTest, StartRunsTheMappedProgramAndStopEndsItCleanly) {
    ASSERT_EQ(services().startService(manager, "TEST SERVICE"), status::Success);
    EXPECT_EQ(state(kService), servicestate::Running);
    const std::string launched = slurp(machine.folder() / "run" / "launched.log");
    EXPECT_EQ(std::count(launched.begin(), launched.end(), '\n'), 1) << launched;
    EXPECT_NE(launched.find("\t" + kProgram), std::string::npos) << launched;

    // Neither a second start nor the program started by hand runs it again.
    EXPECT_EQ(services().startService(manager, kService), servicestatus::AlreadyRunning);
    EXPECT_EQ(slurp(machine.folder() / "run" / "launched.log"), launched);
    EXPECT_EQ(runSecondProcess(), 3);
    EXPECT_EQ(state(kService), servicestate::Running);

    ASSERT_EQ(services().stopService(manager, "test service"), status::Success);
    EXPECT_TRUE(fs::exists(marker()));
    EXPECT_EQ(state(kService), servicestate::Stopped);
}

TEST_F(ServiceManagerTest, StartFailsForWhatCannotRun) {
    EXPECT_EQ(services().startService(manager, kUnmapped), status::FileNotFound);

    // The program of an unquoted ImagePath ends at ".exe"; this one ends without running.
    EXPECT_EQ(services().startService(manager, kQuick), servicestatus::ProcessAborted);
    EXPECT_EQ(state(kQuick), servicestate::Stopped);
    const std::string launched = slurp(machine.folder() / "run" / "launched.log");
    EXPECT_NE(launched.find("\t" + kQuickProgram), std::string::npos) << launched;
    EXPECT_EQ(launched.find(kQuickProgram + " "), std::string::npos) << launched;
    EXPECT_EQ(launched.find("none.exe"), std::string::npos) << launched;
}

}  // namespace
