#include "platform/FileSystem.h"

namespace platform {

namespace {

template <class Char>
bool isSeparator(Char c) {
    return c == Char('\\') || c == Char('/');
}

template <class Text>
Text parentFolderName(const Text& path) {
    int i = int(path.size()) - 1;
    while (i >= 0 && isSeparator(path[size_t(i)])) {
        --i;
    }
    while (i >= 0 && !isSeparator(path[size_t(i)])) {
        --i;
    }
    while (i >= 0 && isSeparator(path[size_t(i)])) {
        --i;
    }
    if (i < 0) {
        return {};
    }
    // The parent of "C:\A" is the root "C:\", separator included.
    if (i == 1 && path[1] == ':') {
        ++i;
    }
    return path.substr(0, size_t(i) + 1);
}

template <class Text>
Text fileName(const Text& path) {
    int end = int(path.size()) - 1;
    while (end >= 0 && isSeparator(path[size_t(end)])) {
        --end;
    }
    int start = end;
    while (start >= 0 && !isSeparator(path[size_t(start)])) {
        --start;
    }
    ++start;
    // A drive alone ("C:", "C:\") has no file name.
    if (start > end || (start == 0 && end == 1 && path[1] == ':')) {
        return {};
    }
    return path.substr(size_t(start), size_t(end - start + 1));
}

}  // namespace

std::string GetParentFolderName(const std::string& path) {
    return parentFolderName(path);
}
std::u16string GetParentFolderName(const std::u16string& path) {
    return parentFolderName(path);
}
std::string GetFileName(const std::string& path) {
    return fileName(path);
}
std::u16string GetFileName(const std::u16string& path) {
    return fileName(path);
}

}  // namespace platform
