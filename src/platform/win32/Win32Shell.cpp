#include "platform/win32/Win32Shell.h"

#include "platform/win32/WindowsApi.h"

#include <shellapi.h>

namespace platform::win32 {

namespace {

// The call takes no string at all for an empty verb, parameter list or folder.
const char* orNull(const std::string& text) {
    return text.empty() ? nullptr : text.c_str();
}

}  // namespace

std::intptr_t Win32Shell::ShellExecuteA(std::uintptr_t window, const std::string& verb,
                                        const std::string& file, const std::string& parameters,
                                        const std::string& directory, int showCommand) {
    const HINSTANCE result =
        ::ShellExecuteA(reinterpret_cast<HWND>(window), orNull(verb), file.c_str(),
                        orNull(parameters), orNull(directory), showCommand);
    return reinterpret_cast<std::intptr_t>(result);
}

}  // namespace platform::win32
