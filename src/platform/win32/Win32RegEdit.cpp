#include "platform/win32/Win32RegEdit.h"

#include "platform/win32/WindowsApi.h"

#include <cstring>

#include "platform/win32/ConsoleRun.h"
#include "platform/win32/FileBytes.h"
#include "platform/win32/WideText.h"

namespace platform::win32 {

namespace {

std::string regTool() {
    char folder[MAX_PATH];
    const UINT length = ::GetSystemDirectoryA(folder, MAX_PATH);
    return std::string(folder, length) + "\\reg.exe";
}

// What the tool said, on one line.
std::string said(const std::string& output) {
    std::string line;
    for (const char c : output) {
        if (c == '\r' || c == '\n') {
            if (!line.empty() && line.back() != ' ') {
                line += ' ';
            }
        } else {
            line += c;
        }
    }
    while (!line.empty() && line.back() == ' ') {
        line.pop_back();
    }
    return line;
}

RegEdit::Result runReg(const std::string& arguments, const std::string& subject) {
    const std::string program = regTool();
    const auto run = runConsoleProgram(program, "reg.exe " + arguments);
    if (!run) {
        return {false,
                program + ": cannot be started (error " + std::to_string(::GetLastError()) + ")"};
    }
    if (run->exitCode != 0) {
        const std::string why = said(run->output);
        return {false,
                subject + ": " +
                    (why.empty() ? "reg ended with code " + std::to_string(run->exitCode) : why)};
    }
    return {true, {}};
}

// A fresh file in the temporary folder, removed when the object goes.
class TemporaryFile {
public:
    TemporaryFile() {
        char folder[MAX_PATH];
        char file[MAX_PATH];
        if (::GetTempPathA(MAX_PATH, folder) != 0 &&
            ::GetTempFileNameA(folder, "reg", 0, file) != 0) {
            path_ = file;
        }
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (!path_.empty()) {
            ::DeleteFileA(path_.c_str());
        }
    }
    const std::string& path() const { return path_; }

private:
    std::string path_;
};

}  // namespace

RegEdit::Result Win32RegEdit::importFile(const std::string& hostFile) {
    return runReg("import " + quoteArgument(hostFile) + " /reg:32", hostFile);
}

RegEdit::Result Win32RegEdit::exportKey(const std::string& keyPath, std::string* text) {
    const TemporaryFile file;
    if (file.path().empty()) {
        return {false, "no temporary file for the export (error " +
                           std::to_string(::GetLastError()) + ")"};
    }
    Result result = runReg(
        "export " + quoteArgument(keyPath) + " " + quoteArgument(file.path()) + " /y /reg:32",
        keyPath);
    if (!result.ok) {
        return result;
    }
    const auto bytes = readWholeFile(file.path());
    if (!bytes) {
        return {false, file.path() + ": the export cannot be read"};
    }
    // The tool writes UTF-16LE behind a byte-order mark.
    std::u16string wide(bytes->size() / 2, u'\0');
    std::memcpy(wide.data(), bytes->data(), wide.size() * sizeof(char16_t));
    if (!wide.empty() && wide.front() == u'\xFEFF') {
        wide.erase(0, 1);
    }
    *text = toUtf8(wide);
    return result;
}

}  // namespace platform::win32
