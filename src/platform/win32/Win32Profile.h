#pragma once
#include "platform/Profile.h"

namespace platform::win32 {

class Win32Profile final : public Profile {
public:
    std::uint32_t GetPrivateProfileStringA(const std::string& section, const std::string& key,
                                           const std::string& defaultValue,
                                           std::uint32_t bufferSize, std::string* value,
                                           const std::string& fileName) override;
    bool WritePrivateProfileStringA(const std::string& section,
                                    const std::optional<std::string>& key,
                                    const std::optional<std::string>& value,
                                    const std::string& fileName) override;
};

}  // namespace platform::win32
