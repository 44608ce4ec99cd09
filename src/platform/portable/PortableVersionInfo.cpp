#include "platform/portable/PortableVersionInfo.h"

#include <QByteArray>
#include <QFile>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <span>

#include "platform/portable/PeResource.h"
#include "platform/portable/VersionBlock.h"
#include "platform/portable/WinPath.h"

namespace platform::portable {

namespace {

constexpr std::uint32_t kHeaderSize = 6;
constexpr char kMark[4] = {'F', 'E', '2', 'X'};
constexpr std::uint32_t kMarkSize = sizeof(kMark) + 4;  // the mark and the caller's length

std::uint32_t readLe(const std::uint8_t* bytes, unsigned size) {
    std::uint32_t value = 0;
    for (unsigned i = size; i-- > 0;) {
        value = (value << 8) | bytes[i];
    }
    return value;
}

void writeLe(std::uint8_t* bytes, std::uint32_t value, unsigned size) {
    for (unsigned i = 0; i < size; ++i) {
        bytes[i] = std::uint8_t(value >> (8 * i));
    }
}

// The version resource of a file image, or nothing.
std::optional<std::vector<std::uint8_t>> blockOf(std::span<const std::uint8_t> image) {
    const auto resource = findVersionResource(image);
    if (!resource || !isUnicodeVersionBlock(*resource)) {
        return std::nullopt;
    }
    const std::size_t length = std::min<std::size_t>(resource->size(), readLe(resource->data(), 2));
    std::vector<std::uint8_t> block(resource->begin(), resource->begin() + std::ptrdiff_t(length));
    writeLe(block.data(), std::uint32_t(length), 2);
    return block;
}

}  // namespace

PortableVersionInfo::PortableVersionInfo(const WinPath& paths, const CodePage& codePage)
    : paths_(paths), codePage_(codePage) {}

std::optional<std::vector<std::uint8_t>> PortableVersionInfo::readBlock(
    const std::string& path) const {
    const auto host = paths_.existing(path);
    std::error_code error;
    if (!host || !std::filesystem::is_regular_file(*host, error)) {
        return std::nullopt;
    }
    QFile file(*host);
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    // Mapped, so that only the pages of the headers and the resource are read of a large
    // executable.
    if (const uchar* mapped = file.size() > 0 ? file.map(0, file.size()) : nullptr) {
        return blockOf({mapped, std::size_t(file.size())});
    }
    const QByteArray contents = file.readAll();
    return blockOf({reinterpret_cast<const std::uint8_t*>(contents.constData()),
                    std::size_t(contents.size())});
}

std::uint32_t PortableVersionInfo::GetFileVersionInfoSizeA(const std::string& path,
                                                           std::uint32_t* handle) {
    if (handle != nullptr) {
        *handle = 0;
    }
    const auto block = readBlock(path);
    return block ? 2 * std::uint32_t(block->size()) + 4 : 0;
}

bool PortableVersionInfo::GetFileVersionInfoA(const std::string& path, std::uint32_t,
                                              std::uint32_t len, void* data) {
    if (data == nullptr || len < kHeaderSize + kMarkSize) {
        return false;
    }
    const auto block = readBlock(path);
    if (!block) {
        return false;
    }
    auto* out = static_cast<std::uint8_t*>(data);
    const auto kept = std::uint32_t(std::min<std::size_t>(block->size(), len - kMarkSize));
    std::memcpy(out, block->data(), kept);
    writeLe(out, kept, 2);
    std::memcpy(out + kept, kMark, sizeof(kMark));
    writeLe(out + kept + sizeof(kMark), len, 4);
    return true;
}

bool PortableVersionInfo::VerQueryValueA(void* block, const std::string& subBlock, void** buffer,
                                         std::uint32_t* len) {
    if (block == nullptr || buffer == nullptr) {
        return false;
    }
    auto* bytes = static_cast<std::uint8_t*>(block);
    const std::uint32_t length = readLe(bytes, 2);
    const auto value = queryVersionValue({bytes, length}, codePage_.toWide(subBlock));
    if (!value) {
        return false;
    }
    if (!value->text) {
        *buffer = bytes + value->offset;
        if (len != nullptr) {
            *len = value->length;
        }
        return true;
    }
    if (std::memcmp(bytes + length, kMark, sizeof(kMark)) != 0) {
        return false;
    }
    std::u16string wide(value->length, u'\0');
    for (std::size_t i = 0; i < wide.size(); ++i) {
        wide[i] = char16_t(readLe(bytes + value->offset + 2 * i, 2));
    }
    const std::string ansi = codePage_.toAnsi(wide);
    // A text value lies past its node's header, so its slot never overlaps the mark.
    const std::size_t slot = std::size_t(length) + sizeof(kMark) + value->offset;
    const std::uint32_t room = readLe(bytes + length + sizeof(kMark), 4);
    if (slot + ansi.size() + 1 > room) {
        return false;
    }
    std::memcpy(bytes + slot, ansi.data(), ansi.size());
    bytes[slot + ansi.size()] = 0;
    *buffer = bytes + slot;
    if (len != nullptr) {
        *len = std::uint32_t(ansi.size());
    }
    return true;
}

}  // namespace platform::portable
