#pragma once
#include <string>
#include <vector>

#include "platform/CodePage.h"
#include "platform/Environment.h"
#include "platform/portable/MachineFacts.h"
#include "platform/portable/WinPath.h"

namespace platform::portable {

// The machine's facts from machine.ini; the process's own from the host.
class PortableEnvironment final : public Environment {
public:
    PortableEnvironment(const MachineFacts& facts, const WinPath& paths, const CodePage& codePage);

    void setArguments(const std::vector<std::string>& arguments) { arguments_ = arguments; }

    // A variable the machine defines wins; others come from the host's environment, so that
    // a developer can set a switch such as TWVerbose for one run.
    std::optional<std::string> GetEnvironmentVariableA(const std::string& name) override;
    std::string commandLine() override;
    // The folder of the Windows program that machine.ini maps to the running host program;
    // "C:\Program Files\Tallowick" when none is mapped.
    std::string programFolder() override;
    std::string GetUserNameA() override;
    std::string GetComputerNameA() override;
    std::string GetLocaleInfoA(std::uint32_t lcType) override;
    OsVersion osVersion() override { return facts_.os; }
    std::vector<std::string> screenFonts() override;
    std::int32_t SHGetFolderPathA(int csidl, std::string* path) override;

private:
    std::string ansi(const std::string& utf8) const;

    const MachineFacts& facts_;
    const WinPath& paths_;
    const CodePage& codePage_;
    std::vector<std::string> arguments_;
};

}  // namespace platform::portable
