#pragma once
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "platform/VersionInfo.h"

// The version block of a file on a machine, loaded and queried the way the program does it.
class VersionQuery {
public:
    VersionQuery(platform::VersionInfo& versionInfo, const std::string& path)
        : versionInfo_(versionInfo) {
        const std::uint32_t size = versionInfo.GetFileVersionInfoSizeA(path, nullptr);
        bytes_.resize(size);
        loaded_ = size > 0 && versionInfo.GetFileVersionInfoA(path, 0, size, bytes_.data());
    }

    bool loaded() const { return loaded_; }

    // The value's bytes as the call answers them.
    std::optional<std::string> query(const std::string& subBlock) {
        void* buffer = nullptr;
        std::uint32_t len = 0;
        if (!loaded_ || !versionInfo_.VerQueryValueA(bytes_.data(), subBlock, &buffer, &len)) {
            return std::nullopt;
        }
        return std::string(static_cast<const char*>(buffer), len);
    }
    // A string of the table, up to its terminator.
    std::optional<std::string> text(const std::string& table, const std::string& name) {
        const auto value = query("\\StringFileInfo\\" + table + "\\" + name);
        return value ? std::optional(std::string(value->c_str())) : std::nullopt;
    }
    // The table that the first translation entry names, as "040904b0".
    std::string firstTable() {
        const auto translation = query("\\VarFileInfo\\Translation");
        std::uint16_t entry[2] = {};
        if (translation && translation->size() >= 4) {
            std::memcpy(entry, translation->data(), 4);
        }
        char table[9];
        std::snprintf(table, sizeof table, "%04x%04x", unsigned(entry[0]), unsigned(entry[1]));
        return table;
    }
    // File version MS and LS, product version MS and LS; zeros without a fixed block.
    std::vector<std::uint32_t> fixed() {
        const auto info = query("\\");
        std::vector<std::uint32_t> words(4);
        if (info && info->size() >= 24) {
            std::memcpy(words.data(), info->data() + 8, 16);
        }
        return words;
    }

private:
    platform::VersionInfo& versionInfo_;
    std::vector<std::uint8_t> bytes_;
    bool loaded_ = false;
};
