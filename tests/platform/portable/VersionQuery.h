#pragma once
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "platform/VersionInfo.h"

// A value of a file's version block, loaded and queried the way the program does it; nothing
// when the file has no block or the block no such value.
inline std::optional<std::string> versionValue(platform::VersionInfo& versionInfo,
                                               const std::string& path,
                                               const std::string& subBlock) {
    std::vector<std::uint8_t> block(versionInfo.GetFileVersionInfoSizeA(path, nullptr));
    void* value = nullptr;
    std::uint32_t length = 0;
    if (block.empty() ||
        !versionInfo.GetFileVersionInfoA(path, 0, std::uint32_t(block.size()), block.data()) ||
        !versionInfo.VerQueryValueA(block.data(), subBlock, &value, &length)) {
        return std::nullopt;
    }
    return std::string(static_cast<const char*>(value), length);
}

// A string of a table such as "040904b0", up to its terminator.
inline std::optional<std::string> versionText(platform::VersionInfo& versionInfo,
                                              const std::string& path, const std::string& table,
                                              const std::string& name) {
    const auto value = versionValue(versionInfo, path, "\\StringFileInfo\\" + table + "\\" + name);
    return value ? std::optional(std::string(value->c_str())) : std::nullopt;
}

// File version MS and LS, product version MS and LS of a file's fixed info.
inline std::vector<std::uint32_t> fixedVersions(platform::VersionInfo& versionInfo,
                                                const std::string& path) {
    std::vector<std::uint32_t> words(4);
    if (const auto info = versionValue(versionInfo, path, "\\"); info && info->size() >= 24) {
        std::memcpy(words.data(), info->data() + 8, 16);
    }
    return words;
}
