// The service control manager as the program uses it: the list of services with their states,
// the room that list takes, and starting and stopping a service. The suite installs a service
// of its own; a real computer lists others beside it.
#include <algorithm>
#include <atomic>

#include "ConformanceServices.h"
#include "ConformanceTest.h"

namespace {

using namespace conformance;
using namespace platform;

class ServiceManagerConformance : public ::testing::Test {
protected:
    void SetUp() override {
        machine = newServiceMachine();
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

    // The test service as the list of the states shows it; nothing when it is not listed.
    std::optional<EnumServiceStatus> find(std::uint32_t states,
                                          std::uint32_t types = servicetype::Win32) {
        for (const auto& service : list(states, types)) {
            if (service.serviceName == kServiceName) {
                return service;
            }
        }
        return std::nullopt;
    }

    // The test service's state, and whether the active and the inactive services list it.
    std::tuple<std::uint32_t, bool, bool> where() {
        const auto service = find(serviceenum::All);
        return {service ? service->currentState : 0, find(serviceenum::Active).has_value(),
                find(serviceenum::Inactive).has_value()};
    }

    std::unique_ptr<ServiceMachine> machine;
    ScHandle manager = 0;
};

// Listed stopped among the computer's own services. A buffer short by a single byte gets the
// room the whole list needs (each record's fixed part and both names with their terminators)
// and no record; the exact room gets them all.
TEST_F(ServiceManagerConformance, ListsTheInstalledServiceStoppedInTheRoomItTells) {
    const auto service = find(serviceenum::All);
    ASSERT_TRUE(service);
    EXPECT_EQ(std::pair(service->displayName, service->serviceType),
              std::pair(std::string(kServiceDisplayName), servicetype::OwnProcess));
    EXPECT_EQ(where(), std::tuple(servicestate::Stopped, false, true));
    EXPECT_FALSE(find(serviceenum::All, servicetype::ShareProcess));

    const auto all = list(serviceenum::All);
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
        EXPECT_EQ(std::pair(result, listed.size()), offered < room
                                                        ? std::pair(status::MoreData, size_t(0))
                                                        : std::pair(status::Success, all.size()))
            << offered;
        EXPECT_TRUE(offered == room || needed == room) << offered;
    }
}

// A service runs once, whatever the case of its name; a stop ends only a running one, and
// nothing of a run that has stopped keeps the service from starting again. The service's
// program started by hand while the service runs does not run it a second time.
TEST_F(ServiceManagerConformance, StartRunsTheServiceOnceAndStopEndsIt) {
    const std::string unknown = std::string(kServiceName) + " That Is Not Installed";
    EXPECT_EQ(services().startService(manager, unknown), servicestatus::DoesNotExist);
    EXPECT_EQ(services().stopService(manager, unknown), servicestatus::DoesNotExist);
    EXPECT_EQ(services().stopService(manager, kServiceName), servicestatus::NotActive);
    for (int run = 0; run < 2; ++run) {
        ASSERT_EQ(services().startService(manager, kServiceName), status::Success);
        EXPECT_EQ(where(), std::tuple(servicestate::Running, true, false));
        EXPECT_EQ(services().startService(manager, kServiceName), servicestatus::AlreadyRunning);
        EXPECT_EQ(services().startService(manager, inCase(kServiceName, true)),
                  servicestatus::AlreadyRunning);
        bool bodyRan = false;
        EXPECT_EQ(machine->secondProcess().serviceHost.runService(
                      kServiceName, [&bodyRan](const std::atomic<bool>&) { bodyRan = true; }),
                  servicestatus::AlreadyRunning);
        EXPECT_FALSE(bodyRan);
        EXPECT_EQ(where(), std::tuple(servicestate::Running, true, false));

        ASSERT_EQ(services().stopService(manager, kServiceName), status::Success);
        EXPECT_EQ(where(), std::tuple(servicestate::Stopped, false, true));
        EXPECT_EQ(services().stopService(manager, kServiceName), servicestatus::NotActive);
    }
}

}  // namespace
