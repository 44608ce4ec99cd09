#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace platform::portable {

// A version block is a tree of nodes (VS_VERSIONINFO, StringFileInfo, string tables,
// strings, VarFileInfo, Translation). Each node is wLength, wValueLength, wType, a UTF-16
// key with its terminator, the value and the children, each part starting on a four-byte
// boundary of the block; all numbers are little-endian.
//
// Only the UTF-16 form that PE files carry is read. The 16-bit form of NE files, with
// one-byte keys and no wType, counts as no block.

// The place of a node's value in the block.
struct VersionValue {
    std::size_t offset = 0;
    std::uint16_t length = 0;  // wValueLength: UTF-16 units for text, bytes otherwise
    bool text = false;         // wType 1

    std::size_t byteSize() const { return text ? 2 * std::size_t(length) : length; }
};

// The size of a VS_FIXEDFILEINFO, the value of the root node.
inline constexpr std::uint16_t kFixedFileInfoSize = 52;

// True when the bytes start with a node header of the UTF-16 form. Windows tells the forms
// apart by the byte at offset 4: the low byte of wType (0 or 1) in the UTF-16 form, the
// first key character in the 16-bit form.
bool isUnicodeVersionBlock(std::span<const std::uint8_t> block);

// The value that subBlock names: "\" the VS_FIXEDFILEINFO (only when it has its
// signature), "\VarFileInfo\Translation", "\StringFileInfo\040904b0\FileVersion" and the
// like. Keys are matched without regard to case, separators may repeat. The walk stays
// within the root's wLength and within the bytes; nothing when a node on the way is
// missing, malformed or cut off, or when the value itself does not lie within its node.
std::optional<VersionValue> queryVersionValue(std::span<const std::uint8_t> block,
                                              std::u16string_view subBlock);

}  // namespace platform::portable
