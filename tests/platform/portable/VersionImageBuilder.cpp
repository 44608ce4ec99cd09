#include "VersionImageBuilder.h"

namespace version_image {

namespace {

void append16(std::string& bytes, std::uint16_t value) {
    bytes.push_back(char(value & 0xFF));
    bytes.push_back(char(value >> 8));
}

void append32(std::string& bytes, std::uint32_t value) {
    append16(bytes, std::uint16_t(value));
    append16(bytes, std::uint16_t(value >> 16));
}

void alignTo4(std::string& bytes) {
    bytes.resize((bytes.size() + 3) & ~std::size_t(3), '\0');
}

std::string utf16(const std::u16string& text) {
    std::string bytes;
    for (char16_t unit : text) {
        append16(bytes, unit);
    }
    return bytes;
}

std::string fixedFileInfo(std::uint64_t version) {
    std::string info;
    append32(info, 0xFEEF04BD);
    append32(info, 0x00010000);
    for (int i = 0; i < 2; ++i) {  // file version, then product version
        append32(info, std::uint32_t(version >> 32));
        append32(info, std::uint32_t(version));
    }
    info.resize(52, '\0');
    return info;
}

}  // namespace

Node text(const std::u16string& key, const std::u16string& value) {
    return {key, utf16(value) + std::string(2, '\0'), std::uint16_t(value.size() + 1), true, {}};
}

std::string encode(const Node& node) {
    std::string bytes(6, '\0');
    bytes += utf16(node.key) + std::string(2, '\0');
    alignTo4(bytes);
    bytes += node.value;
    for (const Node& child : node.children) {
        alignTo4(bytes);
        bytes += encode(child);
    }
    put16(bytes, 0, std::uint16_t(bytes.size()));
    put16(bytes, 2, node.valueLength);
    put16(bytes, 4, node.text ? 1 : 0);
    return bytes;
}

std::string block(std::uint64_t fileVersion, const std::u16string& table,
                  const std::vector<std::pair<std::u16string, std::u16string>>& strings,
                  std::uint32_t translation) {
    Node stringTable{table, {}, 0, true, {}};
    for (const auto& [name, value] : strings) {
        stringTable.children.push_back(text(name, value));
    }
    std::string translationBytes;
    append32(translationBytes, translation);
    const Node root{
        u"VS_VERSION_INFO",
        fixedFileInfo(fileVersion),
        52,
        false,
        {Node{u"StringFileInfo", {}, 0, true, {stringTable}},
         Node{
             u"VarFileInfo", {}, 0, true, {Node{u"Translation", translationBytes, 4, false, {}}}}}};
    return encode(root);
}

std::string peImage(const std::string& resource, bool pe32Plus) {
    using namespace layout;
    const std::uint16_t optionalSize = pe32Plus ? 240 : 224;
    std::string image(kResources, '\0');
    put16(image, 0, 0x5A4D);
    put32(image, kPeOffsetField, 0x40);
    put32(image, 0x40, 0x00004550);
    put16(image, 0x44, pe32Plus ? 0x8664 : 0x14C);
    put16(image, 0x46, 1);  // one section
    put16(image, kOptionalHeaderSizeField, optionalSize);
    put16(image, kOptionalHeader, pe32Plus ? 0x20B : 0x10B);
    const std::size_t directories = kOptionalHeader + (pe32Plus ? 112 : 96);
    put32(image, directories - 4, 16);
    put32(image, directories + 16, kResourceRva);
    put32(image, directories + 20, std::uint32_t(kData + resource.size()));

    std::string tree(kData, '\0');
    put16(tree, 14, 1);  // root: one ID entry
    put32(tree, 16, 16);
    put32(tree, 20, 0x80000000u | kNameDirectory);
    put16(tree, kNameDirectory + 14, 1);
    put32(tree, kNameDirectory + 16, 1);
    put32(tree, kNameDirectory + 20, 0x80000000u | kLanguageDirectory);
    put16(tree, kLanguageDirectory + 14, 1);
    put32(tree, kLanguageDirectory + 16, 1033);
    put32(tree, kLanguageDirectory + 20, kDataEntry);
    put32(tree, kDataEntry, kResourceRva + kData);
    put32(tree, kDataEntry + 4, std::uint32_t(resource.size()));
    tree += resource;
    alignTo4(tree);

    const std::size_t section = kOptionalHeader + optionalSize;
    image.replace(section, 6, ".rsrc\0", 6);
    put32(image, section + 8, std::uint32_t(tree.size()));
    put32(image, section + 12, kResourceRva);
    put32(image, section + 16, std::uint32_t(tree.size()));
    put32(image, section + 20, kResources);
    return image + tree;
}

void put16(std::string& bytes, std::size_t offset, std::uint16_t value) {
    bytes[offset] = char(value & 0xFF);
    bytes[offset + 1] = char(value >> 8);
}

void put32(std::string& bytes, std::size_t offset, std::uint32_t value) {
    put16(bytes, offset, std::uint16_t(value));
    put16(bytes, offset + 2, std::uint16_t(value >> 16));
}

}  // namespace version_image
