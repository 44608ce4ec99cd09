#include "platform/win32/Win32Profile.h"

#include "platform/win32/WindowsApi.h"

#include <algorithm>
#include <vector>

namespace platform::win32 {

std::uint32_t Win32Profile::GetPrivateProfileStringA(const std::string& section,
                                                     const std::string& key,
                                                     const std::string& defaultValue,
                                                     std::uint32_t bufferSize, std::string* value,
                                                     const std::string& fileName) {
    // A buffer of no characters still gets its terminator from Windows.
    std::vector<char> buffer(std::max<std::uint32_t>(bufferSize, 1), '\0');
    const DWORD copied =
        ::GetPrivateProfileStringA(section.c_str(), key.c_str(), defaultValue.c_str(),
                                   buffer.data(), DWORD(bufferSize), fileName.c_str());
    value->assign(buffer.data(), copied);
    return copied;
}

bool Win32Profile::WritePrivateProfileStringA(const std::string& section,
                                              const std::optional<std::string>& key,
                                              const std::optional<std::string>& value,
                                              const std::string& fileName) {
    return ::WritePrivateProfileStringA(section.c_str(), key ? key->c_str() : nullptr,
                                        value ? value->c_str() : nullptr, fileName.c_str()) != 0;
}

}  // namespace platform::win32
