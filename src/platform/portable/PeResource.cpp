#include "platform/portable/PeResource.h"

#include <algorithm>
#include <vector>

namespace platform::portable {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::uint16_t kDosMagic = 0x5A4D;         // "MZ"
constexpr std::uint32_t kPeSignature = 0x00004550;  // "PE\0\0"
constexpr std::uint16_t kPe32Magic = 0x10B;
constexpr std::uint16_t kPe32PlusMagic = 0x20B;
constexpr std::uint32_t kResourceDirectoryIndex = 2;
constexpr std::uint32_t kSectionHeaderSize = 40;
constexpr std::uint32_t kVersionType = 16;  // RT_VERSION
constexpr std::uint32_t kVersionName = 1;   // VS_VERSION_INFO
constexpr std::uint32_t kHighBit = 0x80000000u;

// Little-endian reads in which a read past the end fails once and for all, so that a parse
// can read a group of fields and check them together.
class Reader {
public:
    explicit Reader(Bytes bytes) : bytes_(bytes) {}

    bool ok() const { return ok_; }
    Bytes bytes() const { return bytes_; }

    std::uint16_t u16(std::uint64_t offset) { return std::uint16_t(read(offset, 2)); }
    std::uint32_t u32(std::uint64_t offset) { return read(offset, 4); }

    std::optional<Bytes> slice(std::uint64_t offset, std::uint64_t size) const {
        if (offset > bytes_.size() || size > bytes_.size() - offset) {
            return std::nullopt;
        }
        return bytes_.subspan(std::size_t(offset), std::size_t(size));
    }

private:
    std::uint32_t read(std::uint64_t offset, unsigned size) {
        const auto field = slice(offset, size);
        if (!field) {
            ok_ = false;
            return 0;
        }
        std::uint32_t value = 0;
        for (unsigned i = size; i-- > 0;) {
            value = (value << 8) | (*field)[i];
        }
        return value;
    }

    Bytes bytes_;
    bool ok_ = true;
};

struct Section {
    std::uint32_t virtualAddress;
    std::uint32_t mappedSize;  // what the loader maps
    std::uint32_t rawSize;     // what of it the file holds
    std::uint32_t rawOffset;
};

// The section that holds an RVA and the offset of the RVA in it.
struct Location {
    const Section* section;
    std::uint32_t offset;
};

class Image {
public:
    explicit Image(Bytes bytes) : file_(bytes) {}

    // Reads the headers; false when the bytes are not a PE32 or PE32+ image.
    bool readHeaders() {
        if (file_.u16(0) != kDosMagic) {
            return false;
        }
        const std::uint64_t pe = file_.u32(0x3C);
        if (!file_.ok() || file_.u32(pe) != kPeSignature) {
            return false;
        }
        const std::uint16_t sectionCount = file_.u16(pe + 6);
        const std::uint16_t optionalSize = file_.u16(pe + 20);
        const std::uint64_t optional = pe + 24;
        const std::uint16_t magic = file_.u16(optional);
        if (!file_.ok() || (magic != kPe32Magic && magic != kPe32PlusMagic)) {
            return false;
        }
        const std::uint64_t countField = optional + (magic == kPe32Magic ? 92 : 108);
        const std::uint64_t directories = countField + 4;
        const std::uint64_t resourceEntry = directories + 8 * kResourceDirectoryIndex;
        if (file_.u32(countField) <= kResourceDirectoryIndex ||
            resourceEntry + 8 > optional + optionalSize) {
            return false;
        }
        resourceRva_ = file_.u32(resourceEntry);
        const std::uint64_t table = optional + optionalSize;
        for (std::uint32_t i = 0; i < sectionCount && file_.ok(); ++i) {
            const std::uint64_t header = table + std::uint64_t(i) * kSectionHeaderSize;
            const std::uint32_t virtualSize = file_.u32(header + 8);
            const std::uint32_t rawSize = file_.u32(header + 16);
            // A section without a virtual size is mapped as large as its raw data.
            sections_.push_back({file_.u32(header + 12), virtualSize ? virtualSize : rawSize,
                                 rawSize, file_.u32(header + 20)});
        }
        return file_.ok() && resourceRva_ != 0;
    }

    std::uint32_t resourceRva() const { return resourceRva_; }

    // The file bytes behind [rva, rva + size): they must lie within the raw data of the
    // section that maps rva. What the loader fills with zeros is not in the file and so
    // not found.
    std::optional<Bytes> map(std::uint32_t rva, std::uint64_t size) const {
        const auto where = locate(rva);
        if (!where || where->offset + size > backedSize(*where->section)) {
            return std::nullopt;
        }
        return file_.slice(std::uint64_t(where->section->rawOffset) + where->offset, size);
    }

    // The file bytes from rva to the end of its section's raw data.
    std::optional<Bytes> mapToSectionEnd(std::uint32_t rva) const {
        const auto where = locate(rva);
        if (!where) {
            return std::nullopt;
        }
        const std::uint64_t start = std::uint64_t(where->section->rawOffset) + where->offset;
        const std::uint64_t end = std::min<std::uint64_t>(
            std::uint64_t(where->section->rawOffset) + backedSize(*where->section),
            file_.bytes().size());
        if (start >= end) {
            return std::nullopt;
        }
        return file_.slice(start, end - start);
    }

private:
    std::optional<Location> locate(std::uint32_t rva) const {
        for (const Section& section : sections_) {
            if (rva >= section.virtualAddress &&
                rva - section.virtualAddress < section.mappedSize) {
                return Location{&section, rva - section.virtualAddress};
            }
        }
        return std::nullopt;
    }

    static std::uint32_t backedSize(const Section& section) {
        return std::min(section.mappedSize, section.rawSize);
    }

    Reader file_;
    std::uint32_t resourceRva_ = 0;
    std::vector<Section> sections_;
};

// The target of a resource directory entry: the entry named id, or the first entry when id
// is none. The target must be a subdirectory when one is wanted and a data entry otherwise;
// its offset is relative to the start of the resource tree.
std::optional<std::uint32_t> findEntry(Reader& tree, std::uint32_t directory,
                                       std::optional<std::uint32_t> id, bool wantDirectory) {
    const std::uint32_t count = std::uint32_t(tree.u16(std::uint64_t(directory) + 12)) +
                                tree.u16(std::uint64_t(directory) + 14);
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::uint64_t entry = std::uint64_t(directory) + 16 + 8 * std::uint64_t(i);
        const std::uint32_t name = tree.u32(entry);
        const std::uint32_t target = tree.u32(entry + 4);
        if (!tree.ok()) {
            return std::nullopt;
        }
        // A name given as a string has the high bit set and so never equals an ID.
        if (id && name != *id) {
            continue;
        }
        if (((target & kHighBit) != 0) != wantDirectory) {
            return std::nullopt;
        }
        return target & ~kHighBit;
    }
    return std::nullopt;
}

}  // namespace

std::optional<Bytes> findVersionResource(Bytes image) {
    Image pe(image);
    if (!pe.readHeaders()) {
        return std::nullopt;
    }
    const auto treeBytes = pe.mapToSectionEnd(pe.resourceRva());
    if (!treeBytes) {
        return std::nullopt;
    }
    // The tree has three fixed levels (type, name, language), so a directory that points
    // back at an upper one cannot make the walk go round.
    Reader tree(*treeBytes);
    const auto names = findEntry(tree, 0, kVersionType, true);
    if (!names) {
        return std::nullopt;
    }
    auto languages = findEntry(tree, *names, kVersionName, true);
    if (!languages) {
        languages = findEntry(tree, *names, std::nullopt, true);
    }
    if (!languages) {
        return std::nullopt;
    }
    const auto data = findEntry(tree, *languages, std::nullopt, false);
    if (!data) {
        return std::nullopt;
    }
    const std::uint32_t rva = tree.u32(*data);
    const std::uint32_t size = tree.u32(std::uint64_t(*data) + 4);
    if (!tree.ok()) {
        return std::nullopt;
    }
    return pe.map(rva, size);
}

}  // namespace platform::portable
