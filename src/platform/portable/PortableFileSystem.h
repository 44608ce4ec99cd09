#pragma once
#include <QFile>

#include <map>
#include <memory>

#include "platform/FileSystem.h"
#include "platform/portable/WinPath.h"

namespace platform::portable {

// Files of the machine's drive folders. The host knows no hidden or system attribute, so
// every entry counts as a normal file or a folder; read-only is an entry without the owner's
// write permission.
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
    std::optional<std::uint64_t> FileLen(const std::string& path) override;
    std::optional<std::int64_t> FileDateTime(const std::string& path) override;
    bool SetAttr(const std::string& path, std::uint32_t attributes) override;
    bool Kill(const std::string& path) override;
    bool CopyFolder(const std::string& source, const std::string& destination,
                    bool overwrite) override;
    bool DeleteFolder(const std::string& folder, bool force) override;
    int openBinary(const std::string& path, int* basicError) override;
    bool putBytes(int handle, const std::string& bytes) override;
    void closeFile(int handle) override;
    std::unique_ptr<ChangeNotification> watchFolder(const std::string& folder) override;

private:
    const WinPath& paths_;
    std::map<int, std::unique_ptr<QFile>> open_;
    int nextHandle_ = 1;
};

}  // namespace platform::portable
