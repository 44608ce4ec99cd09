#include "platform/win32/FolderTree.h"

#include "platform/win32/WindowsApi.h"

#include <functional>

namespace platform::win32 {

namespace {

bool isSeparator(char c) {
    return c == '\\' || c == '/';
}

bool isFolder(const std::string& path) {
    const DWORD attributes = ::GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// Calls visit for each entry of a folder but "." and ".."; false as soon as visit is, or when
// the folder can't be listed.
bool forEachEntry(const std::string& folder,
                  const std::function<bool(const WIN32_FIND_DATAA&)>& visit) {
    WIN32_FIND_DATAA entry;
    const HANDLE search = ::FindFirstFileA(joinPath(folder, "*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) {
        return ::GetLastError() == ERROR_FILE_NOT_FOUND;
    }
    bool ok = true;
    do {
        const std::string name = entry.cFileName;
        if (name != "." && name != "..") {
            ok = visit(entry);
        }
    } while (ok && ::FindNextFileA(search, &entry));
    ::FindClose(search);
    return ok;
}

bool removeTree(const std::string& folder, DWORD attributes, bool force) {
    const bool readOnly = (attributes & FILE_ATTRIBUTE_READONLY) != 0;
    if (readOnly && !force) {
        return false;
    }
    const bool emptied = forEachEntry(folder, [&](const WIN32_FIND_DATAA& entry) {
        const std::string path = joinPath(folder, entry.cFileName);
        if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
            return removeTree(path, entry.dwFileAttributes, force);
        }
        if (force && (entry.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0 &&
            !::SetFileAttributesA(path.c_str(),
                                  entry.dwFileAttributes & ~DWORD(FILE_ATTRIBUTE_READONLY))) {
            return false;
        }
        return ::DeleteFileA(path.c_str()) != 0;
    });
    if (!emptied) {
        return false;
    }
    if (readOnly &&
        !::SetFileAttributesA(folder.c_str(), attributes & ~DWORD(FILE_ATTRIBUTE_READONLY))) {
        return false;
    }
    return ::RemoveDirectoryA(folder.c_str()) != 0;
}

bool copyContents(const std::string& source, const std::string& destination, bool overwrite) {
    if (!makeFolders(destination)) {
        return false;
    }
    return forEachEntry(source, [&](const WIN32_FIND_DATAA& entry) {
        const std::string from = joinPath(source, entry.cFileName);
        const std::string to = joinPath(destination, entry.cFileName);
        if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
            return copyContents(from, to, overwrite);
        }
        return ::CopyFileA(from.c_str(), to.c_str(), !overwrite) != 0;
    });
}

}  // namespace

std::string joinPath(const std::string& folder, const std::string& name) {
    if (!folder.empty() && isSeparator(folder.back())) {
        return folder + name;
    }
    return folder + "\\" + name;
}

bool makeFolders(const std::string& folder) {
    for (size_t end = 0; end <= folder.size(); ++end) {
        if (end < folder.size() && !isSeparator(folder[end])) {
            continue;
        }
        const std::string prefix = folder.substr(0, end);
        // The drive ("C:") and empty parts of doubled separators need no making.
        if (prefix.empty() || isSeparator(prefix.back()) || prefix.back() == ':') {
            continue;
        }
        if (!::CreateDirectoryA(prefix.c_str(), nullptr) && !isFolder(prefix)) {
            return false;
        }
    }
    return isFolder(folder);
}

bool copyFolder(const std::string& source, const std::string& destination, bool overwrite) {
    return isFolder(source) && copyContents(source, destination, overwrite);
}

bool deleteFolder(const std::string& folder, bool force) {
    const DWORD attributes = ::GetFileAttributesA(folder.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
        return false;
    }
    return removeTree(folder, attributes, force);
}

}  // namespace platform::win32
