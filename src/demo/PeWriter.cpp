#include "demo/PeWriter.h"

#include <QString>

#include <cstdio>
#include <utility>
#include <vector>

namespace demo {

namespace {

constexpr std::uint32_t kFixedFileInfoSignature = 0xFEEF04BD;
constexpr std::uint32_t kFixedFileInfoVersion = 0x00010000;
constexpr std::uint32_t kOsNtWindows32 = 0x00040004;  // VOS_NT_WINDOWS32
constexpr std::uint32_t kFileTypeApp = 1;             // VFT_APP

constexpr std::uint32_t kPeOffset = 0x40;
constexpr std::uint32_t kFileAlignment = 0x200;
constexpr std::uint32_t kSectionAlignment = 0x1000;
constexpr std::uint32_t kResourceRva = kSectionAlignment;
constexpr std::uint32_t kResourceTypeVersion = 16;  // RT_VERSION
constexpr std::uint32_t kResourceNameVersion = 1;   // VS_VERSION_INFO
constexpr std::uint32_t kSubdirectory = 0x80000000u;

void put(std::string& bytes, std::size_t offset, std::uint64_t value, unsigned size) {
    for (unsigned i = 0; i < size; ++i) {
        bytes[offset + i] = char(value >> (8 * i));
    }
}

std::uint32_t alignUp(std::size_t size, std::uint32_t alignment) {
    return std::uint32_t((size + alignment - 1) / alignment * alignment);
}

void padTo4(std::string& bytes) {
    bytes.resize(alignUp(bytes.size(), 4), '\0');
}

std::uint64_t packed(const std::array<std::uint16_t, 4>& parts) {
    std::uint64_t value = 0;
    for (std::uint16_t part : parts) {
        value = value << 16 | part;
    }
    return value;
}

std::string fixedFileInfo(const PeVersionInfo& info) {
    std::string bytes(52, '\0');
    const std::uint64_t file = packed(info.fixedFileVersion);
    const std::uint64_t product = packed(info.fixedProductVersion);
    put(bytes, 0, kFixedFileInfoSignature, 4);
    put(bytes, 4, kFixedFileInfoVersion, 4);
    put(bytes, 8, file >> 32, 4);
    put(bytes, 12, file, 4);
    put(bytes, 16, product >> 32, 4);
    put(bytes, 20, product, 4);
    put(bytes, 24, 0x3F, 4);  // every flag is meaningful, none is set
    put(bytes, 32, kOsNtWindows32, 4);
    put(bytes, 36, kFileTypeApp, 4);
    return bytes;
}

// The resource tree: one directory per level with a single ID entry, then the data entry
// and the data.
std::string resourceTree(std::string_view resource, std::uint16_t language) {
    constexpr std::size_t kNameDirectory = 0x18;
    constexpr std::size_t kLanguageDirectory = 0x30;
    constexpr std::size_t kDataEntry = 0x48;
    constexpr std::size_t kData = 0x58;
    std::string tree(kData, '\0');
    const std::size_t levels[][3] = {
        {0, kResourceTypeVersion, kSubdirectory | kNameDirectory},
        {kNameDirectory, kResourceNameVersion, kSubdirectory | kLanguageDirectory},
        {kLanguageDirectory, language, kDataEntry}};
    for (const auto& [directory, id, target] : levels) {
        put(tree, directory + 14, 1, 2);  // one ID entry, no named ones
        put(tree, directory + 16, id, 4);
        put(tree, directory + 20, target, 4);
    }
    put(tree, kDataEntry, kResourceRva + kData, 4);
    put(tree, kDataEntry + 4, resource.size(), 4);
    tree += resource;
    padTo4(tree);
    return tree;
}

}  // namespace

std::string utf16Bytes(const std::u16string& text) {
    std::string bytes(2 * text.size(), '\0');
    for (std::size_t i = 0; i < text.size(); ++i) {
        put(bytes, 2 * i, text[i], 2);
    }
    return bytes;
}

std::string encodeVersionNode(const VersionNode& node) {
    std::string bytes = std::string(6, '\0') + utf16Bytes(node.key + u'\0');
    padTo4(bytes);
    bytes += node.value;
    for (const VersionNode& child : node.children) {
        padTo4(bytes);
        bytes += encodeVersionNode(child);
    }
    const std::size_t valueLength = node.text ? node.value.size() / 2 : node.value.size();
    put(bytes, 0, bytes.size(), 2);
    put(bytes, 2, valueLength, 2);
    put(bytes, 4, node.text ? 1 : 0, 2);
    return bytes;
}

std::string versionBlock(const PeVersionInfo& info) {
    const std::pair<const char16_t*, const std::optional<std::string>*> strings[] = {
        {u"CompanyName", &info.companyName},
        {u"FileDescription", &info.fileDescription},
        {u"FileVersion", &info.fileVersion},
        {u"ProductVersion", &info.productVersion}};
    char tableName[9];
    std::snprintf(tableName, sizeof tableName, "%04x%04x", unsigned(info.language),
                  unsigned(info.codePage));
    VersionNode table{QString::fromLatin1(tableName).toStdU16String(), {}};
    for (const auto& [name, value] : strings) {
        if (value->has_value()) {
            const std::u16string text = QString::fromStdString(**value).toStdU16String();
            table.children.push_back({name, utf16Bytes(text + u'\0')});
        }
    }
    std::string translation(4, '\0');
    put(translation, 0, info.language, 2);
    put(translation, 2, info.codePage, 2);
    const VersionNode root{u"VS_VERSION_INFO",
                           fixedFileInfo(info),
                           false,
                           {{u"StringFileInfo", {}, true, {std::move(table)}},
                            {u"VarFileInfo", {}, true, {{u"Translation", translation, false}}}}};
    return encodeVersionNode(root);
}

std::string peImageWithVersionResource(std::string_view resource, bool pe32Plus,
                                       std::uint16_t language) {
    const std::string tree = resourceTree(resource, language);
    const std::uint32_t rawSize = alignUp(tree.size(), kFileAlignment);
    const std::uint32_t optionalSize = pe32Plus ? 240 : 224;
    const std::uint32_t optional = kPeOffset + 24;
    const std::uint32_t sectionHeader = optional + optionalSize;
    const std::uint32_t headersSize = alignUp(sectionHeader + 40, kFileAlignment);

    std::string image(headersSize, '\0');
    put(image, 0, 0x5A4D, 2);  // "MZ"
    put(image, 0x3C, kPeOffset, 4);
    put(image, kPeOffset, 0x00004550, 4);  // "PE\0\0"
    put(image, kPeOffset + 4, pe32Plus ? 0x8664 : 0x014C, 2);
    put(image, kPeOffset + 6, 1, 2);  // one section
    put(image, kPeOffset + 20, optionalSize, 2);
    // An executable without relocations; 64-bit images take large addresses, 32-bit ones
    // say that their words are 32 bits.
    put(image, kPeOffset + 22, pe32Plus ? 0x0023 : 0x0103, 2);

    put(image, optional, pe32Plus ? 0x20B : 0x10B, 2);
    put(image, optional + 8, rawSize, 4);  // initialized data
    if (pe32Plus) {
        put(image, optional + 24, 0x140000000ull, 8);
    } else {
        put(image, optional + 28, 0x400000, 4);
    }
    put(image, optional + 32, kSectionAlignment, 4);
    put(image, optional + 36, kFileAlignment, 4);
    put(image, optional + 40, 6, 2);  // operating system 6.0
    put(image, optional + 48, 6, 2);  // subsystem 6.0
    put(image, optional + 56, kResourceRva + alignUp(tree.size(), kSectionAlignment), 4);
    put(image, optional + 60, headersSize, 4);
    put(image, optional + 68, 2, 2);       // the Windows GUI subsystem
    put(image, optional + 70, 0x8100, 2);  // NX compatible, terminal-server aware
    // Stack and heap reserve and commit, then the loader flags and the directory count.
    const unsigned word = pe32Plus ? 8 : 4;
    const std::uint32_t sizes[] = {0x100000, 0x1000, 0x100000, 0x1000};
    for (unsigned i = 0; i < 4; ++i) {
        put(image, optional + 72 + i * word, sizes[i], word);
    }
    const std::uint32_t countField = optional + 72 + 4 * word + 4;
    put(image, countField, 16, 4);
    put(image, countField + 4 + 8 * 2, kResourceRva, 4);  // directory 2: resources
    put(image, countField + 4 + 8 * 2 + 4, tree.size(), 4);

    image.replace(sectionHeader, 5, ".rsrc");
    put(image, sectionHeader + 8, tree.size(), 4);  // virtual size
    put(image, sectionHeader + 12, kResourceRva, 4);
    put(image, sectionHeader + 16, rawSize, 4);
    put(image, sectionHeader + 20, headersSize, 4);
    put(image, sectionHeader + 36, 0x40000040, 4);  // initialized data, readable

    image += tree;
    image.resize(headersSize + rawSize, '\0');
    return image;
}

std::string writeVersionedPe(const PeVersionInfo& info) {
    return peImageWithVersionResource(versionBlock(info), info.pe32Plus, info.language);
}

}  // namespace demo
