#include "platform/win32/Win32Registry.h"

namespace platform::win32 {

namespace {

bool isPredefined(RegHandle key) {
    return key >= hkey::ClassesRoot && key <= hkey::DynData;
}

}  // namespace

Win32Registry::~Win32Registry() {
    for (const auto& [handle, opened] : open_) {
        ::RegCloseKey(opened);
    }
}

HKEY Win32Registry::find(RegHandle key) const {
    // The roots are 32-bit values that 64-bit Windows sign-extends into its HKEYs.
    if (isPredefined(key)) {
        return reinterpret_cast<HKEY>(static_cast<ULONG_PTR>(static_cast<LONG>(key)));
    }
    const auto found = open_.find(key);
    return found == open_.end() ? nullptr : found->second;
}

RegHandle Win32Registry::remember(HKEY opened) {
    const RegHandle handle = nextHandle_;
    nextHandle_ += 4;
    open_.emplace(handle, opened);
    return handle;
}

long Win32Registry::RegOpenKeyExA(RegHandle key, const std::string& subKey, std::uint32_t options,
                                  std::uint32_t samDesired, RegHandle* result) {
    if (result == nullptr) {
        return status::InvalidParameter;
    }
    *result = 0;
    const HKEY parent = find(key);
    if (parent == nullptr) {
        return status::InvalidHandle;
    }
    HKEY opened = nullptr;
    const LONG error =
        ::RegOpenKeyExA(parent, subKey.c_str(), options, samDesired | KEY_WOW64_32KEY, &opened);
    if (error == ERROR_SUCCESS) {
        *result = remember(opened);
    }
    return error;
}

// Windows answers the very handle for an empty subkey.
long Win32Registry::RegOpenKeyA(RegHandle key, const std::string& subKey, RegHandle* result) {
    if (result != nullptr && subKey.c_str()[0] == '\0' && find(key) != nullptr) {
        *result = key;
        return status::Success;
    }
    return RegOpenKeyExA(key, subKey, 0, MAXIMUM_ALLOWED, result);
}

long Win32Registry::RegCreateKeyA(RegHandle key, const std::string& subKey, RegHandle* result) {
    if (result == nullptr) {
        return status::InvalidParameter;
    }
    *result = 0;
    const HKEY parent = find(key);
    if (parent == nullptr) {
        return status::InvalidHandle;
    }
    HKEY created = nullptr;
    const LONG error =
        ::RegCreateKeyExA(parent, subKey.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                          MAXIMUM_ALLOWED | KEY_WOW64_32KEY, nullptr, &created, nullptr);
    if (error == ERROR_SUCCESS) {
        *result = remember(created);
    }
    return error;
}

long Win32Registry::RegCloseKey(RegHandle key) {
    if (isPredefined(key)) {
        return status::Success;
    }
    const auto found = open_.find(key);
    if (found == open_.end()) {
        return status::InvalidHandle;
    }
    const LONG error = ::RegCloseKey(found->second);
    open_.erase(found);
    return error;
}

long Win32Registry::RegQueryValueExA(RegHandle key, const std::string& valueName,
                                     std::uint32_t* type, std::uint8_t* data,
                                     std::uint32_t* dataSize) {
    const HKEY opened = find(key);
    if (opened == nullptr) {
        return status::InvalidHandle;
    }
    DWORD readType = 0;
    DWORD size = dataSize == nullptr ? 0 : *dataSize;
    const LONG error = ::RegQueryValueExA(opened, valueName.c_str(), nullptr, &readType, data,
                                          dataSize == nullptr ? nullptr : &size);
    if (type != nullptr && (error == ERROR_SUCCESS || error == ERROR_MORE_DATA)) {
        *type = readType;
    }
    if (dataSize != nullptr) {
        *dataSize = size;
    }
    return error;
}

long Win32Registry::RegSetValueExA(RegHandle key, const std::string& valueName, std::uint32_t type,
                                   const std::uint8_t* data, std::uint32_t dataSize) {
    const HKEY opened = find(key);
    if (opened == nullptr) {
        return status::InvalidHandle;
    }
    return ::RegSetValueExA(opened, valueName.c_str(), 0, type, data, dataSize);
}

long Win32Registry::RegDeleteValueA(RegHandle key, const std::string& valueName) {
    const HKEY opened = find(key);
    if (opened == nullptr) {
        return status::InvalidHandle;
    }
    return ::RegDeleteValueA(opened, valueName.c_str());
}

long Win32Registry::RegDeleteKeyA(RegHandle key, const std::string& subKey) {
    const HKEY opened = find(key);
    if (opened == nullptr) {
        return status::InvalidHandle;
    }
    return ::RegDeleteKeyExA(opened, subKey.c_str(), KEY_WOW64_32KEY, 0);
}

long Win32Registry::RegEnumKeyExA(RegHandle key, std::uint32_t index, char* name,
                                  std::uint32_t* nameSize) {
    if (nameSize == nullptr) {
        return status::InvalidParameter;
    }
    const HKEY opened = find(key);
    if (opened == nullptr) {
        return status::InvalidHandle;
    }
    DWORD size = *nameSize;
    const LONG error =
        ::RegEnumKeyExA(opened, index, name, &size, nullptr, nullptr, nullptr, nullptr);
    *nameSize = size;
    return error;
}

}  // namespace platform::win32
