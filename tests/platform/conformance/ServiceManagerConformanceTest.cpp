// The service control manager as the program uses it: the list of services with their states,
// the room that list takes, and starting and stopping a service. The suite installs a service
// of its own; a real computer lists others beside it.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "ConformanceServices.h"
#include "ConformanceTest.h"

namespace {

using namespace platform;

const std::string kName = conformance::kServiceName;

class ServiceManagerConformance : public ::testing::Test {
protected:
    void SetUp() override {
        machine = conformance::newServiceMachine();
        if (!machine) {
            GTEST_SKIP() << "needs the right to install a service";
        }
        ASSERT_EQ(
            services().OpenSCManagerA(scmaccess::Connect | scmaccess::EnumerateService, &manager),
            status::Success);
    }
    void TearDown() override {
        if (manager != 0) {
            services().CloseServiceHandle(manager);
        }
    }

    ServiceManager& services() { return machine->platform().services; }

    // The services of the states as the program asks for them: the room first, then the list.
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

    // The state of the test service in the list of the states; 0 when it is not listed.
    std::uint32_t stateIn(std::uint32_t states, std::uint32_t types = servicetype::Win32) {
        const auto listed = list(states, types);
        const auto found = std::find_if(listed.begin(), listed.end(), [](const auto& service) {
            return service.serviceName == kName;
        });
        return found == listed.end() ? 0 : found->currentState;
    }

    // The test service's state, and whether the active and the inactive services list it.
    std::tuple<std::uint32_t, bool, bool> where() {
        return {stateIn(serviceenum::All), stateIn(serviceenum::Active) != 0,
                stateIn(serviceenum::Inactive) != 0};
    }

    std::unique_ptr<conformance::ServiceMachine> machine;
    ScHandle manager = 0;
};

// Listed stopped among the computer's own services. A buffer short by a single byte gets the
// room the whole list needs (each record's fixed part and both names with their terminators)
// and no record; the exact room gets them all.
TEST_F(ServiceManagerConformance, ListsTheInstalledServiceStoppedInTheRoomItTells) {
    const auto all = list(serviceenum::All);
    const auto service = std::find_if(all.begin(), all.end(),
                                      [](const auto& each) { return each.serviceName == kName; });
    ASSERT_NE(service, all.end());
    EXPECT_EQ(std::pair(service->displayName, service->serviceType),
              std::pair(std::string(conformance::kServiceDisplayName), servicetype::OwnProcess));
    EXPECT_EQ(where(), std::tuple(servicestate::Stopped, false, true));
    EXPECT_EQ(stateIn(serviceenum::All, servicetype::ShareProcess), 0u);

    std::uint32_t room = 0;
    for (const auto& each : all) {
        room += kEnumServiceStatusSize +
                std::uint32_t(each.serviceName.size() + each.displayName.size() + 2);
    }
    for (const std::uint32_t offered : {0u, room - 1, room}) {
        std::vector<EnumServiceStatus> listed;
        std::uint32_t needed = 0;
        const long result = services().EnumServicesStatusA(
            manager, servicetype::Win32, serviceenum::All, offered, &listed, &needed);
        if (offered < room) {
            EXPECT_EQ(std::tuple(result, needed, listed.size()),
                      std::tuple(status::MoreData, room, size_t(0)));
        } else {
            EXPECT_EQ(std::pair(result, listed.size()), std::pair(status::Success, all.size()));
        }
    }
}

// A service runs once, whatever the case of its name; a stop ends only a running one, and
// nothing of a run that has stopped keeps the service from starting again.
TEST_F(ServiceManagerConformance, StartRunsTheServiceOnceAndStopEndsIt) {
    EXPECT_EQ(services().stopService(manager, kName), servicestatus::NotActive);
    for (int run = 0; run < 2; ++run) {
        ASSERT_EQ(services().startService(manager, kName), status::Success);
        EXPECT_EQ(where(), std::tuple(servicestate::Running, true, false));
        EXPECT_EQ(services().startService(manager, kName), servicestatus::AlreadyRunning);
        EXPECT_EQ(services().startService(manager, conformance::inCase(kName, true)),
                  servicestatus::AlreadyRunning);
        ASSERT_EQ(services().stopService(manager, kName), status::Success);
        EXPECT_EQ(where(), std::tuple(servicestate::Stopped, false, true));
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
    EXPECT_EQ(stateIn(serviceenum::All), servicestate::Running);
}

}  // namespace
