#include "platform/win32/Win32Environment.h"

#include "platform/win32/WindowsApi.h"

#include <lmcons.h>
#include <shlobj.h>

#include "platform/FileSystem.h"

namespace platform::win32 {

namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

int CALLBACK addFontName(const LOGFONTA* font, const TEXTMETRICA*, DWORD, LPARAM names) {
    reinterpret_cast<std::vector<std::string>*>(names)->emplace_back(font->lfFaceName);
    return 1;
}

}  // namespace

std::optional<std::string> Win32Environment::GetEnvironmentVariableA(const std::string& name) {
    std::string value(256, '\0');
    for (;;) {
        ::SetLastError(ERROR_SUCCESS);
        const DWORD length =
            ::GetEnvironmentVariableA(name.c_str(), value.data(), DWORD(value.size()));
        if (length == 0) {
            if (::GetLastError() == ERROR_ENVVAR_NOT_FOUND) {
                return std::nullopt;
            }
            return std::string();
        }
        // Too small a buffer answers the size needed with the terminator.
        if (length < value.size()) {
            value.resize(length);
            return value;
        }
        value.resize(length);
    }
}

// The program's name ends at the closing quote when it starts with one, otherwise at the
// first blank; Command$ is what follows, without the blanks before it.
std::string Win32Environment::commandLine() {
    const std::string line = ::GetCommandLineA();
    size_t at = 0;
    if (!line.empty() && line[0] == '"') {
        const size_t close = line.find('"', 1);
        at = close == std::string::npos ? line.size() : close + 1;
    }
    while (at < line.size() && !isBlank(line[at])) {
        ++at;
    }
    while (at < line.size() && isBlank(line[at])) {
        ++at;
    }
    return line.substr(at);
}

std::string Win32Environment::programFolder() {
    std::string path(MAX_PATH, '\0');
    for (;;) {
        const DWORD length = ::GetModuleFileNameA(nullptr, path.data(), DWORD(path.size()));
        if (length < path.size()) {
            path.resize(length);
            break;
        }
        path.resize(path.size() * 2);
    }
    return GetParentFolderName(path);
}

std::string Win32Environment::GetUserNameA() {
    char name[UNLEN + 1];
    DWORD size = sizeof name;
    // The size it answers counts the terminator.
    return ::GetUserNameA(name, &size) ? std::string(name, size - 1) : std::string();
}

std::string Win32Environment::GetComputerNameA() {
    char name[MAX_COMPUTERNAME_LENGTH + 1];
    DWORD size = sizeof name;
    return ::GetComputerNameA(name, &size) ? std::string(name, size) : std::string();
}

std::string Win32Environment::GetLocaleInfoA(std::uint32_t lcType) {
    const int size = ::GetLocaleInfoA(LOCALE_USER_DEFAULT, lcType, nullptr, 0);
    if (size <= 0) {
        return {};
    }
    std::string value(size_t(size), '\0');
    const int written = ::GetLocaleInfoA(LOCALE_USER_DEFAULT, lcType, value.data(), size);
    value.resize(written > 0 ? size_t(written - 1) : 0);
    return value;
}

OsVersion Win32Environment::osVersion() {
    OSVERSIONINFOA info{};
    info.dwOSVersionInfoSize = sizeof info;
    OsVersion version;
    if (::GetVersionExA(&info)) {
        version.platform = int(info.dwPlatformId);
        version.major = int(info.dwMajorVersion);
        version.minor = int(info.dwMinorVersion);
        version.build = int(info.dwBuildNumber);
    }
    return version;
}

// One name per family, as EnumFontFamilies gives them for the screen.
std::vector<std::string> Win32Environment::screenFonts() {
    std::vector<std::string> names;
    const HDC screen = ::GetDC(nullptr);
    if (screen == nullptr) {
        return names;
    }
    ::EnumFontFamiliesA(screen, nullptr, addFontName, reinterpret_cast<LPARAM>(&names));
    ::ReleaseDC(nullptr, screen);
    return names;
}

std::int32_t Win32Environment::SHGetFolderPathA(int csidl, std::string* path) {
    char folder[MAX_PATH];
    const HRESULT result = ::SHGetFolderPathA(nullptr, csidl, nullptr, SHGFP_TYPE_CURRENT, folder);
    if (result == S_OK) {
        *path = folder;
    }
    return result;
}

}  // namespace platform::win32
