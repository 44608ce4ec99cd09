#include "scan/VersionInfoReader.h"

#include <algorithm>
#include <cstring>

#include "core/AnsiText.h"

namespace scan {

namespace {

constexpr std::uint32_t kMaximumBlock = 64000;
constexpr std::uint16_t kEnglishUs = 1033;
constexpr std::uint32_t kFixedSignature = 0xFEEF04BD;

QString hex4(std::uint16_t number) {
    return QStringLiteral("%1").arg(number, 4, 16, QLatin1Char('0')).toUpper();
}

std::uint32_t word32(const std::uint8_t* bytes) {
    std::uint32_t value = 0;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

}  // namespace

VersionInfoReader::VersionInfoReader(platform::VersionInfo& versionInfo,
                                     const platform::CodePage& codePage)
    : versionInfo_(versionInfo), codePage_(codePage), buffer_(1, 0) {}

bool VersionInfoReader::LoadVersionInfo(const QString& path) {
    const std::string file = core::toAnsi(codePage_, path);
    std::uint32_t handle = 0;
    const std::uint32_t size =
        std::min(versionInfo_.GetFileVersionInfoSizeA(file, &handle), kMaximumBlock);
    buffer_.assign(std::max<std::uint32_t>(size, 1), 0);
    if (size == 0 || !versionInfo_.GetFileVersionInfoA(file, handle, size, buffer_.data())) {
        buffer_.assign(1, 0);
    }
    return hasBlock();
}

std::optional<QString> VersionInfoReader::GetVersionInfoString(const QString& name) {
    if (!hasBlock()) {
        return std::nullopt;
    }
    std::uint16_t language = kEnglishUs;
    std::uint16_t codePage = 0;
    void* table = nullptr;
    std::uint32_t tableLength = 0;
    if (versionInfo_.VerQueryValueA(buffer_.data(), "\\VarFileInfo\\Translation", &table,
                                    &tableLength) &&
        tableLength >= 4) {
        // Stops at US English; without it the walk runs off the end and keeps the last.
        const auto* entries = static_cast<const std::uint8_t*>(table);
        for (std::uint32_t offset = 0; offset + 4 <= tableLength; offset += 4) {
            language = std::uint16_t(entries[offset] | entries[offset + 1] << 8);
            codePage = std::uint16_t(entries[offset + 2] | entries[offset + 3] << 8);
            if (language == kEnglishUs) {
                break;
            }
        }
    }
    const QString query = "\\StringFileInfo\\" + hex4(language) + hex4(codePage) + "\\" + name;
    void* value = nullptr;
    std::uint32_t length = 0;
    if (!versionInfo_.VerQueryValueA(buffer_.data(), core::toAnsi(codePage_, query), &value,
                                     &length)) {
        return std::nullopt;
    }
    const auto* text = static_cast<const char*>(value);
    const size_t available = buffer_.data() + buffer_.size() - static_cast<std::uint8_t*>(value);
    const size_t end = std::find(text, text + std::min<size_t>(length, available), '\0') - text;
    return core::fromAnsi(codePage_, std::string(text, end));
}

std::optional<VersionInfoReader::FixedInfo> VersionInfoReader::fixedInfo(const QString& path) {
    if (!LoadVersionInfo(path)) {
        return std::nullopt;
    }
    void* block = nullptr;
    std::uint32_t length = 0;
    if (!versionInfo_.VerQueryValueA(buffer_.data(), "\\", &block, &length) || length < 24) {
        return std::nullopt;
    }
    const auto* bytes = static_cast<const std::uint8_t*>(block);
    if (word32(bytes) != kFixedSignature) {
        return std::nullopt;
    }
    return FixedInfo{word32(bytes + 8), word32(bytes + 12), word32(bytes + 16), word32(bytes + 20)};
}

QString VersionInfoReader::GetFixedFileVersion(const QString& path) {
    const auto info = fixedInfo(path);
    if (!info) {
        return {};
    }
    return QStringLiteral("%1.%2.%3.%4")
        .arg(info->fileMs >> 16)
        .arg(info->fileMs & 0xFFFF)
        .arg(info->fileLs >> 16)
        .arg(info->fileLs & 0xFFFF);
}

QString VersionInfoReader::GetFixedProductVersion(const QString& path) {
    const auto info = fixedInfo(path);
    if (!info) {
        return {};
    }
    return QStringLiteral("%1.%2").arg(info->productMs >> 16).arg(info->productMs & 0xFFFF);
}

}  // namespace scan
