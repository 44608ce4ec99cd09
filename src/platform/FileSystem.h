#pragma once
#include <cstdint>
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
inline constexpr std::uint32_t Hidden = 2;
inline constexpr std::uint32_t System = 4;
inline constexpr std::uint32_t Directory = 16;
}  // namespace fileattr

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
};

// The FileSystemObject's path texts, which never look at the disk.
// "C:\A\b.exe" -> "C:\A"; "C:\A" -> "C:\"; "C:\" -> ""; "b.exe" -> "".
std::string GetParentFolderName(const std::string& path);
std::u16string GetParentFolderName(const std::u16string& path);
// "C:\A\b.exe" -> "b.exe"; "C:\A\" -> "A"; "C:\" -> "".
std::string GetFileName(const std::string& path);
std::u16string GetFileName(const std::u16string& path);

}  // namespace platform
