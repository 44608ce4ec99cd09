#pragma once
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "platform/CodePage.h"

namespace platform::portable {

// Maps the Windows paths of the machine onto its folder: "C:\A\b.exe" is
// <machine>/drive_c/A/b.exe, "D:\x" is <machine>/drive_d/x. Each element is found without
// regard to case, as Windows finds it.
class WinPath {
public:
    WinPath(std::filesystem::path machineFolder, const CodePage& codePage);

    // The parts of an absolute Windows path: the drive letter in lower case and the
    // elements between separators. Nothing for a relative, UNC or malformed path (a
    // character Windows forbids in a name, an element of only dots beyond "." and "..").
    struct Parsed {
        char drive = 'c';
        std::vector<std::string> elements;  // ANSI, "." and ".." already applied
    };
    static std::optional<Parsed> parse(const std::string& winPath, bool allowWildcards = false);

    // The host path of an existing entry.
    std::optional<std::filesystem::path> existing(const std::string& winPath) const;
    // The host path where an entry of that name is or would be: every element but the last
    // found case-insensitively, the last one as found or else as given. Nothing when the
    // parent folder does not exist.
    std::optional<std::filesystem::path> target(const std::string& winPath) const;
    // Makes the folder and every missing folder above it, reusing the ones that exist in
    // any case; its host path, or nothing when a folder could not be made.
    std::optional<std::filesystem::path> createFolders(const std::string& winPath) const;
    // The drive folder of a letter, whether it exists or not.
    std::filesystem::path driveFolder(char drive) const;
    // The host name of an ANSI element, and back.
    std::string hostName(const std::string& ansiElement) const;
    std::string ansiName(const std::filesystem::path& hostElement) const;

private:
    std::optional<std::filesystem::path> findElement(const std::filesystem::path& folder,
                                                     const std::string& ansiElement) const;

    std::filesystem::path machineFolder_;
    const CodePage& codePage_;
};

}  // namespace platform::portable
