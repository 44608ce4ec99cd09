#pragma once
#include <cstdint>
#include <string>

namespace platform {

// The version-block calls of Windows. The block is the file's RT_VERSION resource as
// GetFileVersionInfoA copies it; VerQueryValueA answers pointers into the block and, for
// string values, converts them to the ANSI code page in the block's spare room, which is
// why GetFileVersionInfoSizeA asks for more than the resource's own size.
class VersionInfo {
public:
    virtual ~VersionInfo() = default;

    // 0 when the file is missing or has no version resource.
    virtual std::uint32_t GetFileVersionInfoSizeA(const std::string& path,
                                                  std::uint32_t* handle) = 0;
    // Copies at most len bytes of the block.
    virtual bool GetFileVersionInfoA(const std::string& path, std::uint32_t handle,
                                     std::uint32_t len, void* data) = 0;
    // subBlock: "\" for the fixed info, "\VarFileInfo\Translation",
    // "\StringFileInfo\040904b0\FileVersion" and the like.
    virtual bool VerQueryValueA(void* block, const std::string& subBlock, void** buffer,
                                std::uint32_t* len) = 0;
};

}  // namespace platform
