#include "platform/win32/Win32Installation.h"

#include <filesystem>
#include <system_error>

#include "platform/win32/WideText.h"
#include "platform/win32/WindowsApi.h"

namespace platform::win32 {

namespace fs = std::filesystem;

namespace {

fs::path hostPath(const std::string& utf8) {
    return fs::path(toWide(CP_UTF8, utf8));
}

fs::path windowsPath(const std::string& ansi) {
    return fs::path(toWide(CP_ACP, ansi));
}

long fail(std::string* problem, const std::string& reason) {
    if (problem != nullptr) {
        *problem = reason;
    }
    return -1;
}

}  // namespace

long Win32Installation::copyFolderIn(const std::string& hostFolder, const std::string& winFolder,
                                     std::string* problem) {
    const fs::path source = hostPath(hostFolder);
    const fs::path target = windowsPath(winFolder);
    std::error_code error;
    fs::create_directories(target, error);
    if (error) {
        return fail(problem, winFolder + ": cannot be made");
    }
    if (!fs::is_directory(source, error)) {
        return 0;
    }
    long copied = 0;
    for (fs::recursive_directory_iterator entry(source, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code typeError;
        if (!entry->is_regular_file(typeError)) {
            continue;
        }
        const fs::path destination = target / entry->path().lexically_relative(source);
        fs::create_directories(destination.parent_path(), error);
        if (error || !fs::copy_file(entry->path(), destination,
                                    fs::copy_options::overwrite_existing, error)) {
            return fail(problem, hostFolder + ": a file cannot be copied to " + winFolder);
        }
        ++copied;
    }
    return error ? fail(problem, hostFolder + ": " + error.message()) : copied;
}

Installation::Mapped Win32Installation::mapProgram(const std::string& winProgram,
                                                   const std::string&) {
    return runs(winProgram) ? Mapped::Yes : Mapped::NoHostProgram;
}

bool Win32Installation::runs(const std::string& winProgram) const {
    const DWORD attributes = GetFileAttributesA(winProgram.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

}  // namespace platform::win32
