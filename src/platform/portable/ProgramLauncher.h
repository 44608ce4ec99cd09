#pragma once
#include <sys/types.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "platform/portable/MachineFacts.h"

namespace platform::portable {

// Starts the host program that machine.ini maps to a Windows executable, in the machine of
// this process (TALLOWICK_MACHINE), and notes every start in run/launched.log.
class ProgramLauncher {
public:
    ProgramLauncher(std::filesystem::path machineFolder, const MachineFacts& facts);

    // The host program that stands for a Windows executable (UTF-8), found without regard to
    // case; nothing when machine.ini maps none.
    std::optional<std::string> hostProgram(const std::string& windowsProgram) const;

    // Starts it in a session of its own, its output going to run/<log name>; the process id,
    // or nothing when no host program stands for it or it can't be started.
    std::optional<pid_t> launch(const std::string& windowsProgram,
                                const std::vector<std::string>& arguments,
                                const std::string& logName);

    // Adds a line to run/launched.log: the time, the program, its arguments and, for a
    // request that started nothing, why.
    void note(const std::string& windowsProgram, const std::vector<std::string>& arguments,
              const std::string& remark = {});

private:
    std::filesystem::path machineFolder_;
    const MachineFacts& facts_;
};

}  // namespace platform::portable
