// Feeds bytes to the PE resource reader and walks the version block it finds with the
// queries the program makes. The bytes are also walked as a block themselves, so that
// mutations reach the block walk without having to keep a PE image intact.
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "platform/portable/PeResource.h"
#include "platform/portable/VersionBlock.h"

namespace {

void walk(std::span<const std::uint8_t> bytes) {
    // A copy of exactly the block's size, so that the address sanitizer sees any read past it.
    const std::vector<std::uint8_t> block(bytes.begin(), bytes.end());
    for (std::u16string_view path :
         {u"\\", u"\\VarFileInfo\\Translation", u"\\StringFileInfo\\040904b0\\FileVersion",
          u"\\stringfileinfo\\040904E4\\CompanyName"}) {
        const auto value = platform::portable::queryVersionValue(block, path);
        if (!value) {
            continue;
        }
        volatile std::uint8_t sink = 0;
        for (std::size_t i = 0; i < value->byteSize(); ++i) {
            sink = sink ^ block.data()[value->offset + i];
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::span<const std::uint8_t> image(data, size);
    if (const auto resource = platform::portable::findVersionResource(image)) {
        walk(*resource);
    }
    walk(image);
    return 0;
}
