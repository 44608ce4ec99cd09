#pragma once
#include <cstdint>
#include <string>
#include <utility>
#include <vector>
#include "demo/PeWriter.h"

// Builders of version blocks and of the smallest PE image that carries one, for tests that need
// a shape no real file has. All numbers are little-endian.
namespace version_image {

inline void put(std::string& bytes, std::size_t offset, std::uint32_t value, unsigned size = 4) {
    for (unsigned i = 0; i < size; ++i) {
        bytes[offset + i] = char(value >> (8 * i));
    }
}

inline std::string utf16(const std::u16string& text) {
    return demo::utf16Bytes(text);
}

// A node of a version block in its UTF-16 form.
using Node = demo::VersionNode;

// A string node whose length counts the terminator, as rc and windres store it.
inline Node text(const std::u16string& key, const std::u16string& value) {
    return {key, utf16(value + u'\0'), true, {}};
}

inline std::string encode(const Node& node) {
    return demo::encodeVersionNode(node);
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

// Where the PE writer puts things, for tests that damage them.
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
    return demo::peImageWithVersionResource(resource, true, 0x0409);
}

}  // namespace version_image
