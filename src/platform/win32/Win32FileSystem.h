#pragma once
#include <unordered_map>

#include "platform/FileSystem.h"

namespace platform::win32 {

// Files and folders through the "A" calls of Windows, which already find names without
// regard to case and take both separators.
class Win32FileSystem final : public FileSystem {
public:
    Win32FileSystem() = default;
    Win32FileSystem(const Win32FileSystem&) = delete;
    Win32FileSystem& operator=(const Win32FileSystem&) = delete;
    ~Win32FileSystem() override;

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
    std::unordered_map<int, void*> open_;  // Basic's file numbers and their handles
    int nextHandle_ = 1;
};

}  // namespace platform::win32
