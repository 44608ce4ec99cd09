#pragma once
#include "platform/VersionInfo.h"

namespace platform::win32 {

class Win32VersionInfo final : public VersionInfo {
public:
    std::uint32_t GetFileVersionInfoSizeA(const std::string& path, std::uint32_t* handle) override;
    bool GetFileVersionInfoA(const std::string& path, std::uint32_t handle, std::uint32_t len,
                             void* data) override;
    bool VerQueryValueA(void* block, const std::string& subBlock, void** buffer,
                        std::uint32_t* len) override;
};

}  // namespace platform::win32
