#include "platform/win32/Win32Installation.h"

#include <filesystem>
#include <system_error>

#include "platform/FolderCopy.h"
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

}  // namespace

long Win32Installation::copyFolderIn(const std::string& hostFolder, const std::string& winFolder,
                                     std::string* problem) {
    const fs::path target = windowsPath(winFolder);
    std::error_code error;
    fs::create_directories(target, error);
    if (error) {
        if (problem != nullptr) {
            *problem = winFolder + ": cannot be made";
        }
        return -1;
    }
    return copyEachFile(
        hostPath(hostFolder),
        [&target](const fs::path& file, const fs::path& relative) {
            std::error_code copyError;
            fs::create_directories((target / relative).parent_path(), copyError);
            return !copyError && fs::copy_file(file, target / relative,
                                               fs::copy_options::overwrite_existing, copyError);
        },
        problem);
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
