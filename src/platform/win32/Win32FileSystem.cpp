#include "platform/win32/Win32FileSystem.h"

#include "platform/win32/WindowsApi.h"

#include "platform/win32/FileBytes.h"
#include "platform/win32/FolderTree.h"
#include "platform/win32/FolderWatch.h"

namespace platform::win32 {

namespace {

constexpr std::int64_t kFileTimeOf1970 = 116444736000000000;  // in 100 ns since 1601
constexpr std::int64_t kFileTimePerSecond = 10000000;

bool isSeparator(char c) {
    return c == '\\' || c == '/';
}

bool hasWildcard(const std::string& path) {
    return path.find_first_of("*?") != std::string::npos;
}

// The FileSystemObject takes a path of a drive only ("C:\..."); what Windows would resolve
// against a current folder counts as malformed here.
bool isDrivePath(const std::string& path) {
    const auto letter = static_cast<unsigned char>(path.empty() ? 0 : path[0]);
    return path.size() >= 3 && ((letter | 0x20) >= 'a' && (letter | 0x20) <= 'z') &&
           path[1] == ':' && isSeparator(path[2]) && !hasWildcard(path);
}

DWORD attributesOf(const std::string& path) {
    return ::GetFileAttributesA(path.c_str());
}

bool isDirectory(DWORD attributes) {
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// Basic's Dir finds an entry with one of these marks only when the caller asks for it.
constexpr DWORD kAskedForMarks =
    FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_DIRECTORY;

// Opens for writing, shared with readers; OPEN_ALWAYS rather than CREATE_ALWAYS, which refuses
// to replace a hidden or system file.
HANDLE openForWriting(const std::string& path, DWORD access) {
    return ::CreateFileA(path.c_str(), access, FILE_SHARE_READ, nullptr, OPEN_ALWAYS,
                         FILE_ATTRIBUTE_NORMAL, nullptr);
}

}  // namespace

Win32FileSystem::~Win32FileSystem() {
    for (const auto& [number, handle] : open_) {
        ::CloseHandle(handle);
    }
}

std::uint32_t Win32FileSystem::GetDriveTypeA(const std::string& root) {
    return ::GetDriveTypeA(root.c_str());
}

std::string Win32FileSystem::Dir(const std::string& pattern, std::uint32_t attributes) {
    if (pattern.empty()) {
        return {};
    }
    // A folder path with its separator lists the folder.
    const std::string search = isSeparator(pattern.back()) ? pattern + "*" : pattern;
    WIN32_FIND_DATAA entry;
    const HANDLE found = ::FindFirstFileA(search.c_str(), &entry);
    if (found == INVALID_HANDLE_VALUE) {
        return {};
    }
    std::string name;
    do {
        if ((entry.dwFileAttributes & kAskedForMarks & ~DWORD(attributes)) == 0) {
            name = entry.cFileName;
        }
    } while (name.empty() && ::FindNextFileA(found, &entry));
    ::FindClose(found);
    return name;
}

bool Win32FileSystem::FileExists(const std::string& path) {
    const DWORD attributes = attributesOf(path);
    return isDrivePath(path) && attributes != INVALID_FILE_ATTRIBUTES && !isDirectory(attributes);
}

bool Win32FileSystem::FolderExists(const std::string& path) {
    return isDrivePath(path) && isDirectory(attributesOf(path));
}

bool Win32FileSystem::MkDir(const std::string& path) {
    return ::CreateDirectoryA(path.c_str(), nullptr) != 0;
}

std::optional<std::string> Win32FileSystem::readFile(const std::string& path) {
    return readWholeFile(path);
}

bool Win32FileSystem::writeFile(const std::string& path, const std::string& bytes) {
    const HANDLE file = openForWriting(path, GENERIC_WRITE);
    if (file == INVALID_HANDLE_VALUE) {
        return false;
    }
    const bool written = writeAll(file, bytes) && ::SetEndOfFile(file);
    ::CloseHandle(file);
    return written;
}

bool Win32FileSystem::appendFile(const std::string& path, const std::string& bytes) {
    const HANDLE file = openForWriting(path, FILE_APPEND_DATA);
    if (file == INVALID_HANDLE_VALUE) {
        return false;
    }
    const bool written = writeAll(file, bytes);
    ::CloseHandle(file);
    return written;
}

std::optional<std::uint64_t> Win32FileSystem::FileLen(const std::string& path) {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!::GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &data) ||
        (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        return std::nullopt;
    }
    return (std::uint64_t(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
}

std::optional<std::int64_t> Win32FileSystem::FileDateTime(const std::string& path) {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!::GetFileAttributesExA(path.c_str(), GetFileExInfoStandard, &data)) {
        return std::nullopt;
    }
    const std::int64_t time = (std::int64_t(data.ftLastWriteTime.dwHighDateTime) << 32) |
                              data.ftLastWriteTime.dwLowDateTime;
    return (time - kFileTimeOf1970) / kFileTimePerSecond;
}

// Basic's SetAttr sets the marks it is given and clears the others.
bool Win32FileSystem::SetAttr(const std::string& path, std::uint32_t attributes) {
    constexpr DWORD kSettable = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN |
                                FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE;
    const DWORD marks = attributes & kSettable;
    return ::SetFileAttributesA(path.c_str(), marks == 0 ? FILE_ATTRIBUTE_NORMAL : marks) != 0;
}

bool Win32FileSystem::Kill(const std::string& path) {
    return !hasWildcard(path) && ::DeleteFileA(path.c_str()) != 0;
}

bool Win32FileSystem::CopyFolder(const std::string& source, const std::string& destination,
                                 bool overwrite) {
    return copyFolder(source, destination, overwrite);
}

bool Win32FileSystem::DeleteFolder(const std::string& folder, bool force) {
    return deleteFolder(folder, force);
}

int Win32FileSystem::openBinary(const std::string& path, int* basicError) {
    constexpr int kFileNotFound = 53;
    constexpr int kAccessError = 75;
    constexpr int kPathNotFound = 76;
    const HANDLE file = ::CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        switch (::GetLastError()) {
            case ERROR_FILE_NOT_FOUND:
                *basicError = kFileNotFound;
                break;
            case ERROR_PATH_NOT_FOUND:
            case ERROR_INVALID_NAME:
                *basicError = kPathNotFound;
                break;
            default:
                *basicError = kAccessError;
        }
        return 0;
    }
    *basicError = 0;
    open_.emplace(nextHandle_, file);
    return nextHandle_++;
}

bool Win32FileSystem::putBytes(int handle, const std::string& bytes) {
    const auto found = open_.find(handle);
    return found != open_.end() && writeAll(found->second, bytes);
}

void Win32FileSystem::closeFile(int handle) {
    const auto found = open_.find(handle);
    if (found != open_.end()) {
        ::CloseHandle(found->second);
        open_.erase(found);
    }
}

std::unique_ptr<ChangeNotification> Win32FileSystem::watchFolder(const std::string& folder) {
    return watchFolderChanges(folder);
}

}  // namespace platform::win32
