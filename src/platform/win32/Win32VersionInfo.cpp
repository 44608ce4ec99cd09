#include "platform/win32/Win32VersionInfo.h"

#include "platform/win32/WindowsApi.h"

#include <winver.h>

namespace platform::win32 {

std::uint32_t Win32VersionInfo::GetFileVersionInfoSizeA(const std::string& path,
                                                        std::uint32_t* handle) {
    DWORD zero = 0;
    const DWORD size = ::GetFileVersionInfoSizeA(path.c_str(), &zero);
    if (handle != nullptr) {
        *handle = zero;
    }
    return size;
}

bool Win32VersionInfo::GetFileVersionInfoA(const std::string& path, std::uint32_t handle,
                                           std::uint32_t len, void* data) {
    return ::GetFileVersionInfoA(path.c_str(), handle, len, data) != 0;
}

bool Win32VersionInfo::VerQueryValueA(void* block, const std::string& subBlock, void** buffer,
                                      std::uint32_t* len) {
    UINT length = 0;
    const bool found = ::VerQueryValueA(block, subBlock.c_str(), buffer, &length) != 0;
    if (len != nullptr) {
        *len = length;
    }
    return found;
}

}  // namespace platform::win32
