#include "platform/win32/FileBytes.h"

#include "platform/win32/WindowsApi.h"

#include <algorithm>

namespace platform::win32 {

std::optional<std::string> readWholeFile(const std::string& path) {
    const HANDLE file = ::CreateFileA(path.c_str(), GENERIC_READ,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return std::nullopt;
    }
    std::string bytes;
    char buffer[65536];
    DWORD read = 0;
    bool ok = true;
    while ((ok = ::ReadFile(file, buffer, sizeof buffer, &read, nullptr) != 0) && read > 0) {
        bytes.append(buffer, read);
    }
    ::CloseHandle(file);
    return ok ? std::optional<std::string>(std::move(bytes)) : std::nullopt;
}

bool writeAll(void* file, const std::string& bytes) {
    size_t done = 0;
    while (done < bytes.size()) {
        const DWORD chunk = DWORD(std::min<size_t>(bytes.size() - done, 1u << 30));
        DWORD written = 0;
        if (!::WriteFile(file, bytes.data() + done, chunk, &written, nullptr) || written == 0) {
            return false;
        }
        done += written;
    }
    return true;
}

}  // namespace platform::win32
