#pragma once
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/portable/RegText.h"

namespace platform::portable {

// Status codes of the registry that only the portable store gives.
namespace regstatus {
inline constexpr long NoAccess = 998;     // ERROR_NOACCESS: data pointer missing
inline constexpr long BadPathname = 161;  // ERROR_BAD_PATHNAME
inline constexpr long KeyDeleted = 1018;  // ERROR_KEY_DELETED: the open key is gone
}  // namespace regstatus

// Windows keeps keys at most this many levels deep.
inline constexpr size_t kMaxKeyDepth = 512;

// Names compare as Windows compares them: each UTF-16 unit upper-cased.
std::u16string foldName(std::u16string_view name);

struct RegValue {
    std::u16string name;
    std::u16string folded;
    std::uint32_t type = 0;
    std::vector<std::uint8_t> data;  // as Windows keeps it: string types UTF-16LE
};

// A key with its values in the order they were first set, and its subkeys in the order
// Windows keeps them, which is the order of their upper-cased names.
class RegKey {
public:
    explicit RegKey(std::u16string name = {});

    const std::u16string& name() const { return name_; }
    const std::u16string& folded() const { return folded_; }
    const std::vector<RegValue>& values() const { return values_; }
    const std::vector<std::unique_ptr<RegKey>>& subkeys() const { return subkeys_; }

    RegKey* subkey(std::u16string_view folded) const;
    // The subkey of that name; *created tells whether it was new.
    RegKey& addSubkey(std::u16string_view name, bool* created);
    bool removeSubkey(std::u16string_view folded);

    const RegValue* value(std::u16string_view name) const;
    // False when the value already held exactly this.
    bool setValue(std::u16string_view name, std::uint32_t type, std::vector<std::uint8_t> data);
    bool removeValue(std::u16string_view name);

private:
    std::vector<std::unique_ptr<RegKey>>::const_iterator lowerBound(
        std::u16string_view folded) const;

    std::u16string name_;
    std::u16string folded_;
    std::vector<RegValue> values_;
    std::unordered_map<std::u16string, size_t> valueIndex_;  // folded name -> position
    std::vector<std::unique_ptr<RegKey>> subkeys_;
};

// Splits a subkey path at "\" into names, as the registry calls take it. Trailing "\" are
// ignored, as Windows ignores them; a path that starts with "\" is refused with
// BadPathname, as Windows refuses it below a handle, and so is an empty name between two
// "\", which no key can have. A name longer than 255 characters is InvalidParameter, and
// so is a name with a line break, which the store's text cannot hold.
long splitKeyPath(std::u16string_view path, std::vector<std::u16string>* names);

// The key at the folded path below root; null when one of them is missing.
const RegKey* findKey(const RegKey& root, const std::vector<std::u16string>& foldedPath);
inline RegKey* findKey(RegKey& root, const std::vector<std::u16string>& foldedPath) {
    return const_cast<RegKey*>(findKey(std::as_const(root), foldedPath));
}

// Writes key and everything below it, key first, as regedit exports them.
void writeKeyTree(RegTextWriter& writer, const RegKey& key, const std::u16string& path);

// The trees of the roots that a store holds; null for a root it does not hold.
using RootTrees = std::array<RegKey*, kRegRootCount>;
using RootFlags = std::array<bool, kRegRootCount>;

// What regedit does with the lines of a .reg file: key lines create their keys and the
// values go to the last one. A line whose root has no tree, a path that is not valid and a
// delete of a root are passed over, and so are the values behind them. The first line passed
// over is returned with its reason when stopAtSkip is set, and nothing after it is applied.
struct SkippedLine {
    int line = 0;  // 0: nothing was passed over
    std::string why;
};
SkippedLine applyRegOperations(const std::vector<RegOperation>& operations, const RootTrees& trees,
                               bool stopAtSkip, RootFlags* changed);

}  // namespace platform::portable
