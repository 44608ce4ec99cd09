#pragma once
#include <cstdint>
#include <string>

namespace platform {

namespace showcmd {
inline constexpr int Hide = 0;
inline constexpr int Normal = 1;
inline constexpr int Maximized = 3;
}  // namespace showcmd

namespace shellerror {
inline constexpr std::intptr_t FileNotFound = 2;
inline constexpr std::intptr_t NoAssociation = 31;  // SE_ERR_NOASSOC
}  // namespace shellerror

// ShellExecuteA: hands a program, a document or an address to the shell, which starts the
// program or the one associated with it (the browser for an address).
class Shell {
public:
    virtual ~Shell() = default;
    // Above 32 when the shell started something; otherwise the shell's error number. The window
    // handle only owns the boxes the shell may show.
    virtual std::intptr_t ShellExecuteA(std::uintptr_t window, const std::string& verb,
                                        const std::string& file, const std::string& parameters,
                                        const std::string& directory, int showCommand) = 0;
};

}  // namespace platform
