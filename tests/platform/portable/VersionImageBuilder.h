#pragma once
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

// Builders of version blocks and of the smallest PE image that carries one, for tests that need
// a shape no real file has. All numbers are little-endian.
namespace version_image {

inline void put(std::string& bytes, std::size_t offset, std::uint32_t value, unsigned size = 4) {
    for (unsigned i = 0; i < size; ++i) {
        bytes[offset + i] = char(value >> (8 * i));
    }
}

inline std::string utf16(const std::u16string& text) {
    std::string bytes(2 * text.size(), '\0');
    for (std::size_t i = 0; i < text.size(); ++i) {
        put(bytes, 2 * i, text[i], 2);
    }
    return bytes;
}

// A node of a version block in its UTF-16 form.
struct Node {
    std::u16string key;
    std::string value;  // the value's bytes: UTF-16 units when text
    bool text = false;
    std::vector<Node> children = {};
};

// A string node whose length counts the terminator, as rc and windres store it.
inline Node text(const std::u16string& key, const std::u16string& value) {
    return {key, utf16(value + u'\0'), true, {}};
}

// Header, key, value and children, each on a four-byte boundary; wLength leaves out the padding
// after the last child.
inline std::string encode(const Node& node) {
    const auto alignTo4 = [](std::string& bytes) { bytes.resize((bytes.size() + 3) & ~3u, '\0'); };
    std::string bytes = std::string(6, '\0') + utf16(node.key + u'\0');
    alignTo4(bytes);
    bytes += node.value;
    for (const Node& child : node.children) {
        alignTo4(bytes);
        bytes += encode(child);
    }
    put(bytes, 0, std::uint32_t(bytes.size()), 2);
    put(bytes, 2, std::uint32_t(node.text ? node.value.size() / 2 : node.value.size()), 2);
    put(bytes, 4, node.text ? 1 : 0, 2);
    return bytes;
}

// A node without a value over its children.
inline Node parent(const std::u16string& key, std::vector<Node> children) {
    return {key, {}, true, std::move(children)};
}

// The root node: a VS_FIXEDFILEINFO of zeros but for its signature, over the children.
inline Node root(std::vector<Node> children) {
    std::string fixedInfo(52, '\0');
    put(fixedInfo, 0, 0xFEEF04BD);
    return {u"VS_VERSION_INFO", fixedInfo, false, std::move(children)};
}

// Where peImage puts things, for tests that damage them.
namespace layout {
inline constexpr std::size_t kPeOffsetField = 0x3C;
inline constexpr std::size_t kOptionalHeaderSizeField = 0x54;
inline constexpr std::size_t kOptionalHeader = 0x58;
inline constexpr std::size_t kDirectoryCount = kOptionalHeader + 108;
inline constexpr std::size_t kResourceDirectory = kOptionalHeader + 112 + 16;
inline constexpr std::size_t kSectionHeader = kOptionalHeader + 240;
inline constexpr std::size_t kResources = 0x200;  // file offset of the tree
inline constexpr std::uint32_t kResourceRva = 0x1000;
// Offsets within the tree: the root, then one directory per level, each with one ID entry.
inline constexpr std::size_t kNameDirectory = 0x18;
inline constexpr std::size_t kLanguageDirectory = 0x30;
inline constexpr std::size_t kDataEntry = 0x48;
inline constexpr std::size_t kData = 0x58;
}  // namespace layout

// A PE32+ image with one .rsrc section holding the resource as RT_VERSION, name 1, language 1033.
inline std::string peImage(const std::string& resource) {
    using namespace layout;
    std::string tree(kData, '\0');
    const std::size_t directories[][3] = {{0, 16, 0x80000000u | kNameDirectory},
                                          {kNameDirectory, 1, 0x80000000u | kLanguageDirectory},
                                          {kLanguageDirectory, 1033, kDataEntry}};
    for (const auto& [directory, id, target] : directories) {
        put(tree, directory + 14, 1, 2);
        put(tree, directory + 16, std::uint32_t(id));
        put(tree, directory + 20, std::uint32_t(target));
    }
    put(tree, kDataEntry, kResourceRva + kData);
    put(tree, kDataEntry + 4, std::uint32_t(resource.size()));
    tree += resource;
    tree.resize((tree.size() + 3) & ~3u, '\0');

    std::string image(kResources, '\0');
    put(image, 0, 0x5A4D, 2);  // "MZ"
    put(image, kPeOffsetField, 0x40);
    put(image, 0x40, 0x00004550);  // "PE\0\0"
    put(image, 0x44, 0x8664, 2);
    put(image, 0x46, 1, 2);  // one section
    put(image, kOptionalHeaderSizeField, 240, 2);
    put(image, kOptionalHeader, 0x20B, 2);
    put(image, kDirectoryCount, 16);
    put(image, kResourceDirectory, kResourceRva);
    put(image, kResourceDirectory + 4, std::uint32_t(tree.size()));
    image.replace(kSectionHeader, 5, ".rsrc");
    put(image, kSectionHeader + 8, std::uint32_t(tree.size()));  // virtual size
    put(image, kSectionHeader + 12, kResourceRva);
    put(image, kSectionHeader + 16, std::uint32_t(tree.size()));  // raw size
    put(image, kSectionHeader + 20, kResources);
    return image + tree;
}

}  // namespace version_image
