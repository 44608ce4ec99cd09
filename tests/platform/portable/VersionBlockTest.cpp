#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "VersionImageBuilder.h"
#include "platform/portable/PeResource.h"
#include "platform/portable/VersionBlock.h"
#include "support/TestMachine.h"

namespace {

using platform::portable::VersionValue;
using version_image::put;

std::span<const std::uint8_t> bytesOf(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

std::optional<VersionValue> query(std::string_view block, std::u16string_view subBlock) {
    return platform::portable::queryVersionValue(bytesOf(block), subBlock);
}

// A block cut short, with its wLength saying so, answers what lies wholly within the cut.
TEST(VersionBlock, ACutBlockAnswersWhatLiesWhollyWithinIt) {
    const std::string image = testing_support::readTestData("libwinpthread-1.dll");
    const auto resource = platform::portable::findVersionResource(bytesOf(image));
    ASSERT_TRUE(resource);
    const std::string whole(reinterpret_cast<const char*>(resource->data()), resource->size());
    const std::u16string paths[] = {u"\\", u"\\StringFileInfo\\040904b0\\FileVersion",
                                    u"\\StringFileInfo\\040904b0\\Comment",
                                    u"\\VarFileInfo\\Translation"};
    for (std::size_t length = 2; length <= whole.size(); ++length) {
        std::string cut = whole.substr(0, length);
        put(cut, 0, std::uint32_t(length), 2);
        for (const auto& path : paths) {
            const auto full = query(whole, path);
            ASSERT_TRUE(full);
            const auto found = query(cut, path);
            ASSERT_EQ(found.has_value(), full->offset + full->byteSize() <= length) << length;
        }
    }
}

TEST(VersionBlock, MalformedNodesAreNotFound) {
    using namespace version_image;
    const std::string block = encode(
        root({parent(u"StringFileInfo", {parent(u"t", {text(u"A", u"x"), text(u"B", u"y")})})}));
    const std::size_t nodeA = 0x28 + 52 + 0x24 + 0x0C;  // after the headers, keys and fixed info
    ASSERT_EQ(block[nodeA + 6], 'A');
    const std::u16string a = u"\\StringFileInfo\\t\\A";
    const std::u16string b = u"\\StringFileInfo\\t\\B";
    ASSERT_TRUE(query(block, u"\\") && query(block, a) && query(block, b));

    const struct {
        const char* what;
        std::size_t offset;  // of the 16-bit field set to value
        std::uint16_t value;
        std::u16string_view path;
        bool found;
    } cases[] = {
        {"a zero wLength ends the walk", nodeA, 0, b, false},
        {"a node claiming more than its parent is cut at the parent's end", nodeA, 0x7FFF, a, true},
        {"... and so hides its siblings", nodeA, 0x7FFF, b, false},
        {"a key without its terminator", nodeA, 8, a, false},
        {"a value past its node", nodeA + 2, 40, a, false},
        {"... is stepped over", nodeA + 2, 40, b, true},
        {"the 16-bit form: a key character at offset 4", 4, 'V', b, false},
        {"a fixed info without its signature", 0x28, 0, u"\\", false},
    };
    for (const auto& c : cases) {
        std::string damaged = block;
        put(damaged, c.offset, c.value, 2);
        EXPECT_EQ(query(damaged, c.path).has_value(), c.found) << c.what;
    }
}

}  // namespace
