#pragma once
#include <QTemporaryDir>

#include <filesystem>
#include <memory>
#include <string>

#include "platform/Platform.h"
#include "platform/portable/Machine.h"

namespace testing_support {

// A fresh machine in a temporary folder, removed when the object goes. Tests reach the
// operating system only through platform(); the helpers below set the machine up the way a
// Windows user would, with files and .reg imports.
class TestMachine {
public:
    explicit TestMachine(
        const platform::portable::MachineFacts& facts = platform::portable::MachineFacts{});
    ~TestMachine();

    platform::Platform& platform() { return machine_->platform(); }
    platform::portable::Machine& machine() { return *machine_; }
    std::filesystem::path folder() const { return folder_; }

    // Writes a file at a Windows path of the machine, making its folders.
    void placeFile(const std::string& winPath, const std::string& bytes);
    // Copies a file of tests/data to a Windows path of the machine.
    void placeTestData(const std::string& winPath, const std::string& dataName);
    // Imports .reg text (UTF-8) as regedit would; the message when it was refused.
    std::string importReg(const std::string& regText);
    // Lets a host program stand for a Windows executable (machine.ini's [Programs]) and opens
    // the machine again, as a process started afterwards would see it. References taken from
    // platform() before the call are stale after it.
    void mapProgram(const std::string& windowsProgram, const std::string& hostProgram);

private:
    QTemporaryDir dir_;
    std::filesystem::path folder_;
    std::unique_ptr<platform::portable::Machine> machine_;
};

// The bytes of a file of tests/data.
std::string readTestData(const std::string& name);

}  // namespace testing_support
