#pragma once
#include <string>

namespace platform::win32 {

// Folder-wide work of the FileSystemObject on ANSI paths. Each call stops at the first entry
// it can't handle and leaves what it did so far.

// Makes a folder and every missing folder above it; false when one could not be made or a
// file is in the way.
bool makeFolders(const std::string& folder);
// CopyFolder: the source's contents into destination, made when missing; an existing file
// is replaced only with overwrite.
bool copyFolder(const std::string& source, const std::string& destination, bool overwrite);
// DeleteFolder: the folder with everything in it; force also takes read-only entries.
bool deleteFolder(const std::string& folder, bool force);

// "a" and "b" joined by one separator.
std::string joinPath(const std::string& folder, const std::string& name);

}  // namespace platform::win32
