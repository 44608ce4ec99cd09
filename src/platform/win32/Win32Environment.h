#pragma once
#include "platform/Environment.h"

namespace platform::win32 {

// The facts of this Windows and this process, as the "A" calls give them.
class Win32Environment final : public Environment {
public:
    std::optional<std::string> GetEnvironmentVariableA(const std::string& name) override;
    std::string commandLine() override;
    std::string programFolder() override;
    std::string GetUserNameA() override;
    std::string GetComputerNameA() override;
    std::string GetLocaleInfoA(std::uint32_t lcType) override;
    // GetVersionExA, which answers what a program without a manifest is told.
    OsVersion osVersion() override;
    std::vector<std::string> screenFonts() override;
    std::int32_t SHGetFolderPathA(int csidl, std::string* path) override;
};

}  // namespace platform::win32
