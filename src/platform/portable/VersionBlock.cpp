#include "platform/portable/VersionBlock.h"

#include <QChar>

#include <algorithm>

namespace platform::portable {

namespace {

using Bytes = std::span<const std::uint8_t>;

constexpr std::size_t kHeaderSize = 6;  // wLength, wValueLength, wType
constexpr std::uint32_t kFixedFileInfoSignature = 0xFEEF04BD;
constexpr std::uint16_t kTextType = 1;
constexpr char16_t kSeparator = u'\\';

// Callers check that the bytes are there.
std::uint16_t u16(Bytes block, std::size_t offset) {
    return std::uint16_t(block[offset] | block[offset + 1] << 8);
}

std::uint32_t u32(Bytes block, std::size_t offset) {
    return std::uint32_t(u16(block, offset)) | std::uint32_t(u16(block, offset + 2)) << 16;
}

std::size_t alignUp4(std::size_t offset) {
    return (offset + 3) & ~std::size_t(3);
}

struct Node {
    std::size_t end = 0;  // cut to the parent's end
    bool intact = false;  // key and value lie within the node
    std::size_t keyOffset = 0;
    std::size_t keyLength = 0;  // UTF-16 units, terminator excluded
    VersionValue value;
    std::size_t childrenOffset = 0;
};

// The node at offset; nothing when not even its header and a usable wLength are there. A
// node that claims to reach past its parent is cut at the parent's end. A node whose key
// or value does not lie within it can only be stepped over.
std::optional<Node> readNode(Bytes block, std::size_t offset, std::size_t limit) {
    if (offset > limit || limit - offset < kHeaderSize) {
        return std::nullopt;
    }
    const std::size_t length = u16(block, offset);
    if (length < kHeaderSize) {
        return std::nullopt;
    }
    Node node;
    node.end = std::min(offset + length, limit);
    node.keyOffset = offset + kHeaderSize;
    std::size_t unit = node.keyOffset;
    for (;; unit += 2) {
        if (unit + 2 > node.end) {
            return node;
        }
        if (u16(block, unit) == 0) {
            break;
        }
    }
    node.keyLength = (unit - node.keyOffset) / 2;
    node.value.length = u16(block, offset + 2);
    node.value.text = u16(block, offset + 4) == kTextType;
    const std::size_t valueOffset = alignUp4(unit + 2);
    const std::size_t valueSize = node.value.byteSize();
    if (valueSize > 0 && (valueOffset > node.end || valueSize > node.end - valueOffset)) {
        return node;
    }
    // An empty value at the very end of a node has no padding before it.
    node.value.offset = std::min(valueOffset, node.end);
    node.childrenOffset = alignUp4(node.value.offset + valueSize);
    node.intact = true;
    return node;
}

char32_t folded(char16_t unit) {
    return QChar::toCaseFolded(char32_t(unit));
}

bool keyMatches(Bytes block, const Node& node, std::u16string_view name) {
    if (node.keyLength != name.size()) {
        return false;
    }
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (folded(u16(block, node.keyOffset + 2 * i)) != folded(name[i])) {
            return false;
        }
    }
    return true;
}

std::optional<Node> findChild(Bytes block, const Node& parent, std::u16string_view name) {
    std::size_t offset = parent.childrenOffset;
    while (const auto child = readNode(block, offset, parent.end)) {
        if (child->intact && keyMatches(block, *child, name)) {
            return child;
        }
        // A node is at least a header long, so the walk always moves on.
        offset = alignUp4(child->end);
    }
    return std::nullopt;
}

bool holdsFixedFileInfo(Bytes block, const VersionValue& value) {
    return !value.text && value.length >= kFixedFileInfoSize &&
           u32(block, value.offset) == kFixedFileInfoSignature;
}

}  // namespace

bool isUnicodeVersionBlock(Bytes block) {
    return block.size() >= kHeaderSize && u16(block, 0) >= kHeaderSize && block[4] < 0x20;
}

std::optional<VersionValue> queryVersionValue(Bytes block, std::u16string_view subBlock) {
    if (!isUnicodeVersionBlock(block)) {
        return std::nullopt;
    }
    const std::size_t limit = std::min<std::size_t>(block.size(), u16(block, 0));
    auto node = readNode(block, 0, limit);
    if (!node || !node->intact) {
        return std::nullopt;
    }
    bool root = true;
    std::size_t start = 0;
    while (node && start < subBlock.size()) {
        std::size_t stop = subBlock.find(kSeparator, start);
        if (stop == std::u16string_view::npos) {
            stop = subBlock.size();
        }
        if (stop > start) {
            node = findChild(block, *node, subBlock.substr(start, stop - start));
            root = false;
        }
        start = stop + 1;
    }
    if (!node || (root && !holdsFixedFileInfo(block, node->value))) {
        return std::nullopt;
    }
    return node->value;
}

}  // namespace platform::portable
