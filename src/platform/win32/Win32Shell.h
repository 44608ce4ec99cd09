#pragma once
#include "platform/Shell.h"

namespace platform::win32 {

class Win32Shell final : public Shell {
public:
    std::intptr_t ShellExecuteA(std::uintptr_t window, const std::string& verb,
                                const std::string& file, const std::string& parameters,
                                const std::string& directory, int showCommand) override;
};

}  // namespace platform::win32
