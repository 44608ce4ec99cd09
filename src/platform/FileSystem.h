#pragma once
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace platform {

namespace drivetype {
inline constexpr std::uint32_t Unknown = 0;
inline constexpr std::uint32_t NoRootDir = 1;
inline constexpr std::uint32_t Removable = 2;
inline constexpr std::uint32_t Fixed = 3;
inline constexpr std::uint32_t Remote = 4;
inline constexpr std::uint32_t CdRom = 5;
inline constexpr std::uint32_t RamDisk = 6;
}  // namespace drivetype

namespace fileattr {
inline constexpr std::uint32_t Normal = 0;
inline constexpr std::uint32_t ReadOnly = 1;
inline constexpr std::uint32_t Hidden = 2;
inline constexpr std::uint32_t System = 4;
inline constexpr std::uint32_t Directory = 16;
}  // namespace fileattr

// FindFirstChangeNotificationA on one folder: entries made, changed, renamed or deleted in
// it, not below it.
class ChangeNotification {
public:
    virtual ~ChangeNotification() = default;
    // Waits at most timeoutMs for a change since the last call; true when there was one.
    // A signal that reaches the process ends the wait early.
    virtual bool wait(int timeoutMs) = 0;
};

// Files and folders by Windows path ("C:\Program Files\App\app.exe"). Paths are ANSI bytes,
// found without regard to case; "\" and "/" both separate.
class FileSystem {
public:
    virtual ~FileSystem() = default;

    // GetDriveTypeA of a root such as "C:\".
    virtual std::uint32_t GetDriveTypeA(const std::string& root) = 0;

    // The first entry that Basic's Dir(pattern, attributes) finds: a file name, or "" when
    // nothing matches. The last path element may hold * and ?; entries with the hidden,
    // system or directory attribute are found only when that attribute is asked for.
    virtual std::string Dir(const std::string& pattern, std::uint32_t attributes) = 0;

    // The FileSystemObject tests: true for an existing file (folder); false for a
    // malformed path.
    virtual bool FileExists(const std::string& path) = 0;
    virtual bool FolderExists(const std::string& path) = 0;

    // MkDir: the parent must exist. False when it could not be made.
    virtual bool MkDir(const std::string& path) = 0;

    // The whole file, or nothing when it can't be read.
    virtual std::optional<std::string> readFile(const std::string& path) = 0;
    // Replaces the file's contents; false when it can't be written.
    virtual bool writeFile(const std::string& path, const std::string& bytes) = 0;
    // Adds to the end of the file, making it when missing; false when it can't be written.
    virtual bool appendFile(const std::string& path, const std::string& bytes) = 0;

    // FileLen: the size in bytes; nothing for a missing file or a folder.
    virtual std::optional<std::uint64_t> FileLen(const std::string& path) = 0;
    // FileDateTime: the last modification, in whole seconds since 1970-01-01 UTC; nothing for
    // a missing entry.
    virtual std::optional<std::int64_t> FileDateTime(const std::string& path) = 0;
    // SetAttr: fileattr::ReadOnly sets the read-only mark, fileattr::Normal clears it. False for a
    // missing entry.
    virtual bool SetAttr(const std::string& path, std::uint32_t attributes) = 0;
    // Kill of one file (no wildcards); false when there is no such file or it stays.
    virtual bool Kill(const std::string& path) = 0;
    // The FileSystemObject's CopyFolder: the folder's contents go into destination, which is
    // made when missing; an existing file there is replaced only with overwrite, otherwise
    // the copy stops at it. False when anything was not copied.
    virtual bool CopyFolder(const std::string& source, const std::string& destination,
                            bool overwrite) = 0;
    // The FileSystemObject's DeleteFolder: the folder and everything in it; force also takes
    // read-only entries. False when the folder is missing or something stays.
    virtual bool DeleteFolder(const std::string& folder, bool force) = 0;
    // Basic's Open ... For Binary: a handle for writes at the current position, starting at
    // the beginning; the file is made when missing and never truncated. 0 when it can't be
    // opened, with a Basic error number in *basicError (53 file not found, 75 path/file
    // access error, 76 path not found).
    virtual int openBinary(const std::string& path, int* basicError) = 0;
    // Basic's Put at the current position; false when not all bytes were written.
    virtual bool putBytes(int handle, const std::string& bytes) = 0;
    virtual void closeFile(int handle) = 0;

    // Watches a folder; nothing when it does not exist or can't be watched.
    virtual std::unique_ptr<ChangeNotification> watchFolder(const std::string& folder) = 0;
};

// The FileSystemObject's path texts, which never look at the disk.
// "C:\A\b.exe" -> "C:\A"; "C:\A" -> "C:\"; "C:\" -> ""; "b.exe" -> "".
std::string GetParentFolderName(const std::string& path);
std::u16string GetParentFolderName(const std::u16string& path);
// "C:\A\b.exe" -> "b.exe"; "C:\A\" -> "A"; "C:\" -> "".
std::string GetFileName(const std::string& path);
std::u16string GetFileName(const std::u16string& path);

}  // namespace platform
