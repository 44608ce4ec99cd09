// Feeds bytes to the .reg reader. What parses is applied to registry trees as an import does,
// the trees are written out as the store writes its files, and reading that text again must
// give the same trees: the store relies on it to keep its data across a rewrite.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

#include "platform/portable/PortableCodePage.h"
#include "platform/portable/RegText.h"
#include "platform/portable/RegistryTree.h"

namespace {

using namespace platform::portable;

// A tree for each root a .reg file can name.
struct Trees {
    Trees() {
        for (int i = 0; i < kRegRootCount; ++i) {
            const auto name = std::u16string(regRootName(RegRoot(i)));
            keys[size_t(i)] = std::make_unique<RegKey>(name);
            pointers[size_t(i)] = regRootFromName(name) ? keys[size_t(i)].get() : nullptr;
        }
    }
    std::array<std::unique_ptr<RegKey>, kRegRootCount> keys;
    RootTrees pointers{};
};

bool same(const RegKey& a, const RegKey& b) {
    if (a.name() != b.name() || a.values().size() != b.values().size() ||
        a.subkeys().size() != b.subkeys().size()) {
        return false;
    }
    for (size_t i = 0; i < a.values().size(); ++i) {
        const RegValue& x = a.values()[i];
        const RegValue& y = b.values()[i];
        if (x.name != y.name || x.type != y.type || x.data != y.data) {
            return false;
        }
    }
    for (size_t i = 0; i < a.subkeys().size(); ++i) {
        if (!same(*a.subkeys()[i], *b.subkeys()[i])) {
            return false;
        }
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size) {
    static const PortableCodePage codePage(1252);
    const RegParseResult parsed =
        parseRegText(std::string_view(reinterpret_cast<const char*>(data), size), codePage);
    if (!parsed.ok()) {
        return 0;
    }
    Trees first;
    RootFlags changed{};
    applyRegOperations(parsed.operations, first.pointers, false, &changed);
    RegTextWriter writer;
    for (const RegKey* root : first.pointers) {
        if (root != nullptr) {
            writeKeyTree(writer, *root, root->name());
        }
    }
    const RegParseResult again = parseRegText(regFileBytes(writer.text()), codePage);
    if (!again.ok()) {
        std::abort();
    }
    Trees second;
    if (applyRegOperations(again.operations, second.pointers, true, &changed).line != 0) {
        std::abort();
    }
    for (size_t i = 0; i < first.keys.size(); ++i) {
        if (!same(*first.keys[i], *second.keys[i])) {
            std::abort();
        }
    }
    return 0;
}
