#include "platform/win32/ConsoleRun.h"

#include "platform/win32/WindowsApi.h"

namespace platform::win32 {

namespace {

// Closes a handle when it goes.
class OwnedHandle {
public:
    OwnedHandle() = default;
    OwnedHandle(const OwnedHandle&) = delete;
    OwnedHandle& operator=(const OwnedHandle&) = delete;
    ~OwnedHandle() { reset(); }
    HANDLE* out() { return &handle_; }
    HANDLE get() const { return handle_; }
    void reset() {
        if (handle_ != nullptr) {
            ::CloseHandle(handle_);
            handle_ = nullptr;
        }
    }

private:
    HANDLE handle_ = nullptr;
};

}  // namespace

std::optional<ConsoleResult> runConsoleProgram(const std::string& program,
                                               const std::string& commandLine) {
    SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    OwnedHandle readEnd;
    OwnedHandle writeEnd;
    if (!::CreatePipe(readEnd.out(), writeEnd.out(), &inheritable, 0) ||
        !::SetHandleInformation(readEnd.get(), HANDLE_FLAG_INHERIT, 0)) {
        return std::nullopt;
    }
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = ::GetStdHandle(STD_INPUT_HANDLE);
    startup.hStdOutput = writeEnd.get();
    startup.hStdError = writeEnd.get();
    PROCESS_INFORMATION process{};
    std::string line = commandLine;  // CreateProcessA may write into it
    if (!::CreateProcessA(program.c_str(), line.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW,
                          nullptr, nullptr, &startup, &process)) {
        return std::nullopt;
    }
    ::CloseHandle(process.hThread);
    // Only the child holds the write end now, so the reads end when it does.
    writeEnd.reset();
    ConsoleResult result;
    char buffer[4096];
    DWORD read = 0;
    while (::ReadFile(readEnd.get(), buffer, sizeof buffer, &read, nullptr) && read > 0) {
        result.output.append(buffer, read);
    }
    ::WaitForSingleObject(process.hProcess, INFINITE);
    DWORD exitCode = 0;
    ::GetExitCodeProcess(process.hProcess, &exitCode);
    ::CloseHandle(process.hProcess);
    result.exitCode = exitCode;
    return result;
}

// The rules the C runtime splits a command line by: backslashes count only before a quote.
std::string quoteArgument(const std::string& argument) {
    if (!argument.empty() && argument.find_first_of(" \t\"") == std::string::npos) {
        return argument;
    }
    std::string quoted = "\"";
    size_t backslashes = 0;
    for (const char c : argument) {
        if (c == '\\') {
            ++backslashes;
            continue;
        }
        quoted.append(c == '"' ? 2 * backslashes + 1 : backslashes, '\\');
        backslashes = 0;
        quoted += c;
    }
    quoted.append(2 * backslashes, '\\');
    return quoted + "\"";
}

}  // namespace platform::win32
