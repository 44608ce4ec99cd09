#pragma once
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace demo {

// What the version resource of a written image says. Texts are UTF-8; a text left out has
// no string node at all, which a reader tells apart from an empty one.
struct PeVersionInfo {
    std::optional<std::string> fileVersion;
    std::optional<std::string> productVersion;
    std::optional<std::string> companyName;
    std::optional<std::string> fileDescription;
    // The one translation entry, which also names the string table.
    std::uint16_t language = 0x0409;
    std::uint16_t codePage = 0x04B0;
    // Most significant part first: {1, 2, 3, 4} is 1.2.3.4.
    std::array<std::uint16_t, 4> fixedFileVersion{};
    std::array<std::uint16_t, 4> fixedProductVersion{};
    bool pe32Plus = true;  // x86-64, else i386
};

// One node of a version block in its UTF-16 form: a key, a value (UTF-16 units when text,
// bytes otherwise) and the children.
struct VersionNode {
    std::u16string key;
    std::string value;
    bool text = true;
    std::vector<VersionNode> children = {};
};

// Header, key, value and children, each on a four-byte boundary; wLength leaves out the
// padding after the last child.
std::string encodeVersionNode(const VersionNode& node);

// UTF-16LE bytes of a text, without a terminator.
std::string utf16Bytes(const std::u16string& text);

// A version block (VS_VERSION_INFO) as rc writes it: the fixed info, a StringFileInfo with
// one table and a VarFileInfo with the translation.
std::string versionBlock(const PeVersionInfo& info);

// The smallest well-formed image around one RT_VERSION resource: headers, then a single
// .rsrc section at RVA 0x1000 and file offset 0x200 whose resource tree (type 16, name 1,
// the given language) ends in the resource at tree offset 0x58. It has no code: it is read,
// never run.
std::string peImageWithVersionResource(std::string_view resource, bool pe32Plus,
                                       std::uint16_t language = 0x0409);

// Both of the above: the bytes of an executable carrying that version information.
std::string writeVersionedPe(const PeVersionInfo& info);

}  // namespace demo
