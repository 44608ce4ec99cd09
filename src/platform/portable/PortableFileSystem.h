#pragma once
#include "platform/FileSystem.h"
#include "platform/portable/WinPath.h"

namespace platform::portable {

// Files of the machine's drive folders. The host knows no hidden or system attribute, so
// every entry counts as a normal file or a folder.
class PortableFileSystem final : public FileSystem {
public:
    explicit PortableFileSystem(const WinPath& paths) : paths_(paths) {}

    std::uint32_t GetDriveTypeA(const std::string& root) override;
    std::string Dir(const std::string& pattern, std::uint32_t attributes) override;
    bool FileExists(const std::string& path) override;
    bool FolderExists(const std::string& path) override;
    bool MkDir(const std::string& path) override;
    std::optional<std::string> readFile(const std::string& path) override;
    bool writeFile(const std::string& path, const std::string& bytes) override;
    bool appendFile(const std::string& path, const std::string& bytes) override;

private:
    const WinPath& paths_;
};

}  // namespace platform::portable
