#pragma once
#include <unordered_map>

#include "platform/Registry.h"
#include "platform/win32/WindowsApi.h"

namespace platform::win32 {

// The registry calls of Windows, in the 32-bit view the program has always seen: every open
// and create asks for KEY_WOW64_32KEY. Handles are numbers of a table of HKEYs; the
// predefined roots keep the values of hkey::.
class Win32Registry final : public Registry {
public:
    Win32Registry() = default;
    Win32Registry(const Win32Registry&) = delete;
    Win32Registry& operator=(const Win32Registry&) = delete;
    ~Win32Registry() override;

    long RegOpenKeyExA(RegHandle key, const std::string& subKey, std::uint32_t options,
                       std::uint32_t samDesired, RegHandle* result) override;
    long RegOpenKeyA(RegHandle key, const std::string& subKey, RegHandle* result) override;
    long RegCreateKeyA(RegHandle key, const std::string& subKey, RegHandle* result) override;
    long RegCloseKey(RegHandle key) override;
    long RegQueryValueExA(RegHandle key, const std::string& valueName, std::uint32_t* type,
                          std::uint8_t* data, std::uint32_t* dataSize) override;
    long RegSetValueExA(RegHandle key, const std::string& valueName, std::uint32_t type,
                        const std::uint8_t* data, std::uint32_t dataSize) override;
    long RegDeleteValueA(RegHandle key, const std::string& valueName) override;
    long RegDeleteKeyA(RegHandle key, const std::string& subKey) override;
    long RegEnumKeyExA(RegHandle key, std::uint32_t index, char* name,
                       std::uint32_t* nameSize) override;

private:
    // The HKEY behind a handle; null for one that is not open.
    HKEY find(RegHandle key) const;
    // Enters a key that Windows opened into the table.
    RegHandle remember(HKEY opened);

    std::unordered_map<RegHandle, HKEY> open_;
    RegHandle nextHandle_ = 0x100;
};

}  // namespace platform::win32
