#pragma once
#include <optional>
#include <string>

namespace platform::win32 {

// The whole file at an ANSI path, shared with other readers and writers; nothing when it
// can't be opened or read.
std::optional<std::string> readWholeFile(const std::string& path);

// Writes all bytes to an open file handle at its current position; false when not all were
// written.
bool writeAll(void* file, const std::string& bytes);

}  // namespace platform::win32
