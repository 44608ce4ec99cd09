#pragma once
#include <filesystem>
#include <functional>
#include <string>

namespace platform {

// Walks every file below a host folder, sub-folders and all, and hands each to `copy` with its
// path relative to the folder; `copy` answers false when the file could not be copied. The
// number of files copied, or -1 with the reason in *problem. A missing folder copies nothing.
long copyEachFile(const std::filesystem::path& folder,
                  const std::function<bool(const std::filesystem::path& file,
                                           const std::filesystem::path& relative)>& copy,
                  std::string* problem);

}  // namespace platform
