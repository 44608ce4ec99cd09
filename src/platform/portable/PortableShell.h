#pragma once
#include "platform/Shell.h"
#include "platform/portable/ProgramLauncher.h"

namespace platform::portable {

// The shell of the portable machine. An executable runs as the host program that machine.ini
// maps to it; an address or a document goes to the program mapped to the machine's browser,
// with the target as its argument. Every request lands in run/launched.log, also one that
// starts nothing, so that a user and a test can see what the program asked the shell for.
class PortableShell final : public Shell {
public:
    static constexpr const char* kBrowser = "C:\\Program Files\\Internet Explorer\\iexplore.exe";

    explicit PortableShell(ProgramLauncher& launcher) : launcher_(launcher) {}

    std::intptr_t ShellExecuteA(std::uintptr_t window, const std::string& verb,
                                const std::string& file, const std::string& parameters,
                                const std::string& directory, int showCommand) override;

private:
    ProgramLauncher& launcher_;
};

}  // namespace platform::portable
