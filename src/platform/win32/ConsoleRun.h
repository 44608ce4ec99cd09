#pragma once
#include <cstdint>
#include <optional>
#include <string>

namespace platform::win32 {

// What a console program said and how it ended.
struct ConsoleResult {
    std::uint32_t exitCode = 0;
    std::string output;  // standard output and standard error together, as written
};

// Runs a console program without a window and waits for it; nothing when it could not be
// started. commandLine is ANSI, quoted as CreateProcessA takes it.
std::optional<ConsoleResult> runConsoleProgram(const std::string& program,
                                               const std::string& commandLine);

// Quotes an argument for a command line when it holds blanks.
std::string quoteArgument(const std::string& argument);

}  // namespace platform::win32
