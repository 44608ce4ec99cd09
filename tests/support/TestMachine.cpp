#include "support/TestMachine.h"

#include <QFile>

#include <fstream>
#include <stdexcept>

#include "platform/portable/WinPath.h"

namespace testing_support {

TestMachine::TestMachine(const platform::portable::MachineFacts& facts) {
    if (!dir_.isValid()) {
        throw std::runtime_error("no temporary folder");
    }
    folder_ = std::filesystem::path(dir_.path().toStdString()) / "machine";
    std::string problems;
    machine_ = platform::portable::Machine::create(folder_, facts, &problems);
    if (!machine_) {
        throw std::runtime_error("machine not created: " + problems);
    }
}

TestMachine::~TestMachine() = default;

void TestMachine::placeFile(const std::string& winPath, const std::string& bytes) {
    const auto& paths = machine_->paths();
    const auto folder = paths.createFolders(platform::GetParentFolderName(winPath));
    if (!folder) {
        throw std::runtime_error("cannot make the folder of " + winPath);
    }
    std::ofstream out(*folder / paths.hostName(platform::GetFileName(winPath)), std::ios::binary);
    out.write(bytes.data(), std::streamsize(bytes.size()));
    if (!out) {
        throw std::runtime_error("cannot write " + winPath);
    }
}

void TestMachine::placeTestData(const std::string& winPath, const std::string& dataName) {
    placeFile(winPath, readTestData(dataName));
}

std::string TestMachine::importReg(const std::string& regText) {
    const auto file = std::filesystem::path(dir_.path().toStdString()) / "import.reg";
    {
        std::ofstream out(file, std::ios::binary);
        out << regText;
    }
    const auto result = machine_->platform().regEdit.importFile(file.string());
    return result.ok ? std::string() : result.message;
}

void TestMachine::mapProgram(const std::string& windowsProgram, const std::string& hostProgram) {
    auto facts = machine_->facts();
    facts.programs[windowsProgram] = hostProgram;
    machine_.reset();
    std::string problems;
    if (!facts.write(folder_ / "machine.ini") ||
        !(machine_ = platform::portable::Machine::open(folder_, &problems))) {
        throw std::runtime_error("machine not opened again: " + problems);
    }
}

std::string readTestData(const std::string& name) {
    QFile file(QString::fromStdString(std::string(TALLOWICK_TEST_DATA) + "/" + name));
    if (!file.open(QIODevice::ReadOnly)) {
        throw std::runtime_error("missing test data " + name);
    }
    return file.readAll().toStdString();
}

}  // namespace testing_support
