// The service control manager as the program uses it: the list of services with their states,
// the room that list takes, and starting and stopping a service. The suite installs a service
// of its own; a real computer lists others beside it.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ConformanceServices.h"
#include "ConformanceTest.h"

namespace {

using platform::EnumServiceStatus;
using platform::kEnumServiceStatusSize;
namespace serviceenum = platform::serviceenum;
namespace servicestate = platform::servicestate;
namespace servicestatus = platform::servicestatus;
namespace servicetype = platform::servicetype;
namespace status = platform::status;

const std::string kName = conformance::kServiceName;

std::optional<EnumServiceStatus> findTestService(const std::vector<EnumServiceStatus>& listed) {
    const auto found = std::find_if(listed.begin(), listed.end(), [](const auto& service) {
        return service.serviceName == kName;
    });
    return found == listed.end() ? std::nullopt : std::optional(*found);
}

// The room a list takes: each record's fixed part and both names with their terminators.
std::uint32_t roomFor(const std::vector<EnumServiceStatus>& listed) {
    std::uint32_t room = 0;
    for (const auto& service : listed) {
        room += kEnumServiceStatusSize + std::uint32_t(service.serviceName.size() + 1) +
                std::uint32_t(service.displayName.size() + 1);
    }
    return room;
}

class ServiceManagerConformance : public ::testing::Test {
protected:
    void SetUp() override {
        machine = conformance::newServiceMachine();
        if (!machine) {
            GTEST_SKIP() << "needs the right to install a service";
        }
        ASSERT_EQ(
            services().OpenSCManagerA(
                platform::scmaccess::Connect | platform::scmaccess::EnumerateService, &manager),
            status::Success);
    }
    void TearDown() override {
        if (manager != 0) {
            services().CloseServiceHandle(manager);
        }
    }

    platform::ServiceManager& services() { return machine->platform().services; }

    // The services of a state as the program asks for them: the room first, then the list.
    // Services of the computer may change their state between the two calls.
    std::vector<EnumServiceStatus> list(std::uint32_t states,
                                        std::uint32_t types = servicetype::Win32) {
        std::vector<EnumServiceStatus> listed;
        std::uint32_t needed = 0;
        long result = services().EnumServicesStatusA(manager, types, states, 0, nullptr, &needed);
        for (int attempt = 0; attempt < 3 && result == status::MoreData; ++attempt) {
            result =
                services().EnumServicesStatusA(manager, types, states, needed, &listed, &needed);
        }
        EXPECT_EQ(result, status::Success);
        return listed;
    }
    // The state the list shows for the test service; 0 when it is not listed.
    std::uint32_t testServiceState() {
        const auto service = findTestService(list(serviceenum::All));
        return service ? service->currentState : 0;
    }
    bool listedIn(std::uint32_t states) { return findTestService(list(states)).has_value(); }

    std::unique_ptr<conformance::ServiceMachine> machine;
    platform::ScHandle manager = 0;
};

// Listed stopped among the computer's own services. A buffer short by a single byte gets the
// room the whole list needs and no record; the exact room gets them all.
TEST_F(ServiceManagerConformance, ListsTheInstalledServiceStoppedInTheRoomItTells) {
    const auto all = list(serviceenum::All);
    const auto service = findTestService(all);
    ASSERT_TRUE(service.has_value());
    EXPECT_EQ(service->displayName, conformance::kServiceDisplayName);
    EXPECT_EQ(service->serviceType, servicetype::OwnProcess);
    EXPECT_EQ(service->currentState, servicestate::Stopped);
    EXPECT_TRUE(listedIn(serviceenum::Inactive));
    EXPECT_FALSE(listedIn(serviceenum::Active));
    EXPECT_FALSE(findTestService(list(serviceenum::All, servicetype::ShareProcess)));

    const std::uint32_t room = roomFor(all);
    for (const std::uint32_t offered : {0u, room - 1}) {
        std::vector<EnumServiceStatus> listed;
        std::uint32_t needed = 0;
        EXPECT_EQ(services().EnumServicesStatusA(manager, servicetype::Win32, serviceenum::All,
                                                 offered, &listed, &needed),
                  status::MoreData);
        EXPECT_EQ(needed, room);
        EXPECT_TRUE(listed.empty());
    }
    std::vector<EnumServiceStatus> listed;
    std::uint32_t needed = 0;
    ASSERT_EQ(services().EnumServicesStatusA(manager, servicetype::Win32, serviceenum::All, room,
                                             &listed, &needed),
              status::Success);
    EXPECT_EQ(listed.size(), all.size());
    EXPECT_TRUE(findTestService(listed));
}

// A service runs once, whatever the case of its name; a stop ends only a running one, and
// nothing of a run that has stopped keeps the service from starting again.
TEST_F(ServiceManagerConformance, StartRunsTheServiceOnceAndStopEndsIt) {
    EXPECT_EQ(services().stopService(manager, kName), servicestatus::NotActive);
    for (int run = 0; run < 2; ++run) {
        ASSERT_EQ(services().startService(manager, kName), status::Success);
        EXPECT_EQ(testServiceState(), servicestate::Running);
        EXPECT_TRUE(listedIn(serviceenum::Active));
        EXPECT_FALSE(listedIn(serviceenum::Inactive));
        EXPECT_EQ(services().startService(manager, kName), servicestatus::AlreadyRunning);
        EXPECT_EQ(services().startService(manager, conformance::upperCase(kName)),
                  servicestatus::AlreadyRunning);

        ASSERT_EQ(services().stopService(manager, kName), status::Success);
        EXPECT_EQ(testServiceState(), servicestate::Stopped);
        EXPECT_TRUE(listedIn(serviceenum::Inactive));
        EXPECT_EQ(services().stopService(manager, kName), servicestatus::NotActive);
    }
    const std::string unknown = kName + " That Is Not Installed";
    EXPECT_EQ(services().startService(manager, unknown), servicestatus::DoesNotExist);
    EXPECT_EQ(services().stopService(manager, unknown), servicestatus::DoesNotExist);
}

// The service's program started by hand while the service runs does not run it a second time.
TEST_F(ServiceManagerConformance, SecondProcessCannotRunARunningService) {
    ASSERT_EQ(services().startService(manager, kName), status::Success);
    bool bodyRan = false;
    EXPECT_EQ(machine->secondProcess().serviceHost.runService(
                  kName, [&bodyRan](const std::atomic<bool>&) { bodyRan = true; }),
              servicestatus::AlreadyRunning);
    EXPECT_FALSE(bodyRan);
    EXPECT_EQ(testServiceState(), servicestate::Running);
}

}  // namespace
