// The conformance suite's computer on the portable backend: every machine a folder of its own.
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>

#include "ConformanceMachine.h"
#include "platform/portable/Machine.h"
#include "platform/portable/PortableCodePage.h"
#include "platform/portable/WinPath.h"
#include "support/TestMachine.h"

namespace conformance {

namespace {

namespace fs = std::filesystem;
using platform::portable::MachineFacts;
using testing_support::TestMachine;

// One process's view of a machine folder. The folder lives as long as any view of it.
class PortableConformanceMachine final : public Machine {
public:
    explicit PortableConformanceMachine(const MachineFacts& facts)
        : owner_(std::make_shared<TestMachine>(facts)), machine_(&owner_->machine()) {}

    platform::Platform& platform() override { return machine_->platform(); }

    // Files are the host's, the same for every process.
    void placeFile(const std::string& winPath, const std::string& bytes) override {
        owner_->placeFile(winPath, bytes);
    }

    std::string importReg(const std::string& regText) override {
        const fs::path file = owner_->folder().parent_path() / "import.reg";
        std::ofstream(file, std::ios::binary) << regText;
        const auto result = machine_->platform().regEdit.importFile(file.string());
        return result.ok ? std::string() : result.message;
    }

    // The portable file calls take a host folder without the owner's write permission for
    // one the user may not write into.
    bool denyWrites(const std::string& winFolder, bool denied) override {
        const auto host = machine_->paths().existing(winFolder);
        std::error_code error;
        if (!host || !fs::is_directory(*host, error)) {
            return false;
        }
        fs::permissions(*host, fs::perms::owner_write,
                        denied ? fs::perm_options::remove : fs::perm_options::add, error);
        return !error;
    }

    std::unique_ptr<Machine> secondProcess() override {
        std::string problems;
        auto opened = platform::portable::Machine::open(owner_->folder(), &problems);
        if (!opened) {
            throw std::runtime_error("machine not opened again: " + problems);
        }
        return std::unique_ptr<Machine>(new PortableConformanceMachine(owner_, std::move(opened)));
    }

private:
    PortableConformanceMachine(std::shared_ptr<TestMachine> owner,
                               std::unique_ptr<platform::portable::Machine> opened)
        : owner_(std::move(owner)), opened_(std::move(opened)), machine_(opened_.get()) {}

    std::shared_ptr<TestMachine> owner_;
    std::unique_ptr<platform::portable::Machine> opened_;  // a second process's own
    platform::portable::Machine* machine_;
};

}  // namespace

std::unique_ptr<Machine> newMachine(unsigned codePage) {
    MachineFacts facts;
    if (codePage != 0) {
        if (!platform::portable::PortableCodePage(codePage).known()) {
            return nullptr;
        }
        facts.ansiCodePage = codePage;
    }
    return std::make_unique<PortableConformanceMachine>(facts);
}

std::string readTestData(const std::string& name) {
    return testing_support::readTestData(name);
}

}  // namespace conformance
