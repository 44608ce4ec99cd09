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
using platform::portable::ServiceLock;
namespace status = platform::status;

const std::string kService = "Test Service";
const std::string kDisplay = "Dienst f\xfcr Tests";  // ANSI: one byte for the u-umlaut
const std::string kProgram = "C:\\Program Files\\Test Vendor\\TestSvc.exe";
const std::string kQuickProgram = "C:\\Program Files\\Other\\quick.exe";

class ServiceManagerTest : public ::testing::Test {
protected:
    ServiceManagerTest() {
        machine.mapProgram(kProgram, TEST_SERVICE);
        machine.mapProgram(kQuickProgram, "/bin/true");
        for (const auto& [name, display, type, imagePath] :
             {std::tuple(kService, kDisplay, platform::regtype::ExpandSz, "\"" + kProgram + "\""),
              std::tuple(std::string("Quick"), std::string("Q"), platform::regtype::Sz,
                         kQuickProgram + " /run --now"),
              std::tuple(std::string("Unmapped"), std::string("U"), platform::regtype::Sz,
                         std::string("\"C:\\Program Files\\Other\\none.exe\" -k group"))}) {
            EXPECT_EQ(testing_support::registerService(machine.platform().registry, name, display,
                                                       type, imagePath),
                      status::Success);
        }
        EXPECT_EQ(services().OpenSCManagerA(platform::scmaccess::EnumerateService, &manager),
                  status::Success);
    }
    // Whatever a failed test left running ends with it.
    ~ServiceManagerTest() override {
        if (const auto pid = ServiceLock::holder(ServiceLock::file(machine.folder(), kService))) {
            ::kill(*pid, SIGKILL);
            ::waitpid(*pid, nullptr, 0);
        }
        services().CloseServiceHandle(manager);
    }

    platform::ServiceManager& services() { return machine.platform().services; }
    std::uint32_t state(const std::string& name) {
        std::vector<platform::EnumServiceStatus> listed;
        std::uint32_t needed = 0;
        EXPECT_EQ(
            services().EnumServicesStatusA(manager, platform::servicetype::Win32,
                                           platform::serviceenum::All, 1 << 16, &listed, &needed),
            status::Success);
        const auto found =
            std::ranges::find(listed, name, &platform::EnumServiceStatus::serviceName);
        return found == listed.end() ? 0 : found->currentState;
    }
    std::string launched() {
        std::ostringstream text;
        text << std::ifstream(machine.folder() / "run" / "launched.log").rdbuf();
        return text.str();
    }

    testing_support::TestMachine machine;
    platform::ScHandle manager = 0;
};

// The service runs in a process of its own, started once, until it is asked to stop; it ends
// its work before the stop returns. The program started by hand does not run it again.
TEST_F(ServiceManagerTest, StartRunsTheMappedProgramAndStopEndsItCleanly) {
    ASSERT_EQ(services().startService(manager, "TEST SERVICE"), status::Success);
    EXPECT_EQ(state(kService), platform::servicestate::Running);
    const std::string log = launched();
    EXPECT_EQ(std::ranges::count(log, '\n'), 1) << log;
    EXPECT_NE(log.find("\t" + kProgram), std::string::npos) << log;
    EXPECT_EQ(services().startService(manager, kService), platform::servicestatus::AlreadyRunning);
    EXPECT_EQ(launched(), log);
    EXPECT_EQ(testing_support::runProgram(TEST_SERVICE, {QString::fromStdString(kService)},
                                          QString::fromStdString(machine.folder().string()))
                  .status,
              3);
    ASSERT_EQ(services().stopService(manager, "test service"), status::Success);
    EXPECT_TRUE(fs::exists(machine.folder() / "run" / (kService + ".stopped")));
    EXPECT_EQ(state(kService), platform::servicestate::Stopped);
}

// An unmapped program is not found; the program of an unquoted ImagePath ends at ".exe", and
// this one ends without running.
TEST_F(ServiceManagerTest, StartFailsForWhatCannotRun) {
    EXPECT_EQ(services().startService(manager, "Unmapped"), status::FileNotFound);
    EXPECT_EQ(services().startService(manager, "Quick"), platform::servicestatus::ProcessAborted);
    EXPECT_EQ(state("Quick"), platform::servicestate::Stopped);
    const std::string log = launched();
    EXPECT_NE(log.find("\t" + kQuickProgram), std::string::npos) << log;
    EXPECT_EQ(log.find(kQuickProgram + " "), std::string::npos) << log;
    EXPECT_EQ(log.find("none.exe"), std::string::npos) << log;
}

// The room of a record counts both names in ANSI bytes; once its manager is closed, a handle
// lists nothing.
TEST_F(ServiceManagerTest, EnumerationCountsAnsiBytesAndNeedsAnOpenManager) {
    std::vector<platform::EnumServiceStatus> listed;
    std::uint32_t needed = 0;
    EXPECT_EQ(services().EnumServicesStatusA(manager, platform::servicetype::Win32,
                                             platform::serviceenum::All, 0, &listed, &needed),
              status::MoreData);
    EXPECT_EQ(needed, 3 * platform::kEnumServiceStatusSize + kService.size() + kDisplay.size() +
                          std::strlen("QuickQUnmappedU") + 6);
    ASSERT_EQ(services().CloseServiceHandle(manager), status::Success);
    EXPECT_EQ(services().EnumServicesStatusA(manager, platform::servicetype::Win32,
                                             platform::serviceenum::All, 1 << 16, &listed, &needed),
              status::InvalidHandle);
    EXPECT_EQ(services().OpenSCManagerA(platform::scmaccess::Connect, &manager), status::Success);
}

}  // namespace
