// The conformance suite's computer on the portable backend: every machine a folder of its own,
// held to the Windows rules themselves. The suite's service has a machine of its own whose
// machine.ini lets the conformance_service tool stand for the service's program.
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>

#include "ConformanceServices.h"
#include "ConformanceTest.h"
#include "platform/portable/Machine.h"
#include "platform/portable/PortableCodePage.h"
#include "platform/portable/WinPath.h"
#include "support/ServiceRegistration.h"
#include "support/TestMachine.h"

namespace conformance {

namespace {

namespace fs = std::filesystem;
using platform::portable::MachineFacts;
using testing_support::TestMachine;
using Opened = std::unique_ptr<platform::portable::Machine>;

constexpr const char* kServiceProgram =
    "C:\\Program Files\\Tallowick Conformance\\ConformanceService.exe";

// The machine in the folder as a second process opens it.
Opened openAgain(const TestMachine& owner) {
    std::string problems;
    Opened opened = platform::portable::Machine::open(owner.folder(), &problems);
    if (!opened) {
        throw std::runtime_error("machine not opened again: " + problems);
    }
    return opened;
}

// One process's view of a machine folder. The folder lives as long as any view of it; files
// are the host's, the same for every process.
class PortableConformanceMachine final : public Machine {
public:
    explicit PortableConformanceMachine(std::shared_ptr<TestMachine> owner, Opened opened = {})
        : owner_(std::move(owner)), opened_(std::move(opened)) {}

    platform::Platform& platform() override { return view().platform(); }
    void placeFile(const std::string& winPath, const std::string& bytes) override {
        owner_->placeFile(winPath, bytes);
    }
    std::string importReg(const std::string& regText) override {
        return owner_->importReg(regText);
    }

    // The portable file calls take a host folder without the owner's write permission for
    // one the user may not write into.
    bool denyWrites(const std::string& winFolder, bool denied) override {
        const auto host = view().paths().existing(winFolder);
        std::error_code error;
        if (!host || !fs::is_directory(*host, error)) {
            return false;
        }
        fs::permissions(*host, fs::perms::owner_write,
                        denied ? fs::perm_options::remove : fs::perm_options::add, error);
        return !error;
    }

    std::unique_ptr<Machine> secondProcess() override {
        return std::make_unique<PortableConformanceMachine>(owner_, openAgain(*owner_));
    }

private:
    platform::portable::Machine& view() { return opened_ ? *opened_ : owner_->machine(); }

    std::shared_ptr<TestMachine> owner_;
    Opened opened_;  // a second process's own
};

class PortableServiceMachine final : public ServiceMachine {
public:
    // The key and values an installer leaves for a service of its own process.
    PortableServiceMachine() {
        owner_.mapProgram(kServiceProgram, CONFORMANCE_SERVICE);
        if (testing_support::registerService(owner_.platform().registry, kServiceName,
                                             kServiceDisplayName, platform::regtype::ExpandSz,
                                             std::string("\"") + kServiceProgram + "\"") !=
            platform::status::Success) {
            throw std::runtime_error(std::string("cannot register the service ") + kServiceName);
        }
        second_ = openAgain(owner_);
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
    TestMachine owner_;
    Opened second_;
};

}  // namespace

std::unique_ptr<Machine> newMachine(unsigned codePage) {
    MachineFacts facts;
    facts.ansiCodePage = codePage != 0 ? codePage : facts.ansiCodePage;
    if (!platform::portable::PortableCodePage(facts.ansiCodePage).known()) {
        return nullptr;
    }
    return std::make_unique<PortableConformanceMachine>(std::make_shared<TestMachine>(facts));
}

std::unique_ptr<ServiceMachine> newServiceMachine() {
    return std::make_unique<PortableServiceMachine>();
}

std::string readTestData(const std::string& name) {
    return testing_support::readTestData(name);
}

bool wineDiffers(const char* /*rule*/) {
    return false;
}

}  // namespace conformance
