// The suite's service on the portable backend: a machine of its own whose machine.ini lets the
// conformance_service tool stand for the service's program.
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>

#include "ConformanceServices.h"
#include "platform/portable/Machine.h"
#include "support/ServiceRegistration.h"
#include "support/TestMachine.h"

namespace conformance {

namespace {

constexpr const char* kServiceProgram =
    "C:\\Program Files\\Tallowick Conformance\\ConformanceService.exe";

// The key and values an installer leaves for a service of its own process.
void install(platform::Registry& registry) {
    if (testing_support::registerService(
            registry, kServiceName, kServiceDisplayName, platform::regtype::ExpandSz,
            std::string("\"") + kServiceProgram + "\"") != platform::status::Success) {
        throw std::runtime_error(std::string("cannot register the service ") + kServiceName);
    }
}

class PortableServiceMachine final : public ServiceMachine {
public:
    PortableServiceMachine() {
        owner_.mapProgram(kServiceProgram, CONFORMANCE_SERVICE);
        install(owner_.platform().registry);
        std::string problems;
        second_ = platform::portable::Machine::open(owner_.folder(), &problems);
        if (!second_) {
            throw std::runtime_error("machine not opened again: " + problems);
        }
    }
    // The service would notice its folder go, but not before the next test has begun.
    ~PortableServiceMachine() override {
        platform::ServiceManager& services = owner_.platform().services;
        platform::ScHandle manager = 0;
        if (services.OpenSCManagerA(platform::scmaccess::Connect, &manager) ==
            platform::status::Success) {
            services.stopService(manager, kServiceName);
            services.CloseServiceHandle(manager);
        }
    }

    platform::Platform& platform() override { return owner_.platform(); }
    platform::Platform& secondProcess() override { return second_->platform(); }

private:
    testing_support::TestMachine owner_;
    std::unique_ptr<platform::portable::Machine> second_;
};

}  // namespace

std::unique_ptr<ServiceMachine> newServiceMachine() {
    return std::make_unique<PortableServiceMachine>();
}

}  // namespace conformance
