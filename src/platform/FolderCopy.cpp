#include "platform/FolderCopy.h"

#include <system_error>

namespace platform {

namespace fs = std::filesystem;

long copyEachFile(const fs::path& folder,
                  const std::function<bool(const fs::path&, const fs::path&)>& copy,
                  std::string* problem) {
    const auto fail = [problem](const std::string& reason) {
        if (problem != nullptr) {
            *problem = reason;
        }
        return -1L;
    };
    std::error_code error;
    if (!fs::is_directory(folder, error)) {
        return 0;
    }
    long copied = 0;
    for (fs::recursive_directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code typeError;
        if (!entry->is_regular_file(typeError)) {
            continue;
        }
        if (!copy(entry->path(), entry->path().lexically_relative(folder))) {
            return fail(entry->path().string() + ": cannot be copied");
        }
        ++copied;
    }
    return error ? fail(folder.string() + ": " + error.message()) : copied;
}

}  // namespace platform
