#pragma once
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

// Builders of version blocks and of the smallest PE images that carry one, for tests that
// need a shape no real file has.
namespace version_image {

// A node of a version block in its UTF-16 form.
struct Node {
    std::u16string key;
    std::string value;              // the value's bytes
    std::uint16_t valueLength = 0;  // wValueLength as stored
    bool text = false;
    std::vector<Node> children;
};

// A string node whose length counts the terminator, as rc and windres store it.
Node text(const std::u16string& key, const std::u16string& value);

// Header, key, value and children, each on a four-byte boundary; wLength leaves out the
// padding after the last child.
std::string encode(const Node& node);

// A block of the usual shape: the fixed info with the file version (most significant word
// first), one string table and a one-entry translation table.
std::string block(std::uint64_t fileVersion, const std::u16string& table,
                  const std::vector<std::pair<std::u16string, std::u16string>>& strings,
                  std::uint32_t translation);

// A PE image with one .rsrc section holding the resource as RT_VERSION, name 1, language
// 1033.
std::string peImage(const std::string& resource, bool pe32Plus = true);

// Where peImage puts things, for tests that damage them (PE32+ offsets).
namespace layout {
inline constexpr std::size_t kPeOffsetField = 0x3C;
inline constexpr std::size_t kOptionalHeader = 0x58;
inline constexpr std::size_t kOptionalHeaderSizeField = 0x54;
inline constexpr std::size_t kDirectoryCount = kOptionalHeader + 108;
inline constexpr std::size_t kResourceDirectory = kOptionalHeader + 112 + 16;
inline constexpr std::size_t kSectionHeader = kOptionalHeader + 240;
inline constexpr std::size_t kSectionRawSize = kSectionHeader + 16;
inline constexpr std::size_t kSectionRawOffset = kSectionHeader + 20;
inline constexpr std::size_t kResources = 0x200;  // file offset of the tree
inline constexpr std::uint32_t kResourceRva = 0x1000;
inline constexpr std::size_t kTypeEntry = kResources + 0x10;
inline constexpr std::size_t kNameDirectory = 0x18;  // offsets within the tree
inline constexpr std::size_t kLanguageDirectory = 0x30;
inline constexpr std::size_t kDataEntry = 0x48;
inline constexpr std::size_t kData = 0x58;
}  // namespace layout

void put16(std::string& bytes, std::size_t offset, std::uint16_t value);
void put32(std::string& bytes, std::size_t offset, std::uint32_t value);

}  // namespace version_image
