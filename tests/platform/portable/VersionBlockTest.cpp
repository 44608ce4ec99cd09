#include <gtest/gtest.h>

#include <optional>
#include <span>
#include <string>

#include "VersionImageBuilder.h"
#include "platform/portable/PeResource.h"
#include "platform/portable/VersionBlock.h"
#include "support/TestMachine.h"

namespace {

using platform::portable::queryVersionValue;
using platform::portable::VersionValue;
using version_image::put16;

std::span<const std::uint8_t> bytesOf(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

std::string realBlock(const char* file) {
    const std::string image = testing_support::readTestData(file);
    const auto resource = platform::portable::findVersionResource(bytesOf(image));
    return resource ? std::string(reinterpret_cast<const char*>(resource->data()), resource->size())
                    : std::string();
}

std::optional<VersionValue> query(std::string_view block, std::u16string_view subBlock) {
    return queryVersionValue(bytesOf(block), subBlock);
}

TEST(VersionBlock, ACutBlockAnswersWhatLiesWhollyWithinIt) {
    const std::string whole = realBlock("libwinpthread-1.dll");
    const std::u16string paths[] = {u"\\", u"\\StringFileInfo\\040904b0\\FileVersion",
                                    u"\\StringFileInfo\\040904b0\\Comment",
                                    u"\\VarFileInfo\\Translation"};
    for (const auto& path : paths) {
        ASSERT_TRUE(query(whole, path));
    }
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        std::string cut = whole.substr(0, length);
        if (length >= 2) {
            put16(cut, 0, std::uint16_t(length));
        }
        for (const auto& path : paths) {
            const auto full = query(whole, path);
            const auto found = query(cut, path);
            ASSERT_EQ(found.has_value(), full->offset + full->byteSize() <= length) << length;
            if (found) {
                EXPECT_EQ(found->offset, full->offset);
                EXPECT_EQ(found->length, full->length);
            }
        }
        // wLength alone bounds the walk, whatever follows in memory.
        if (length >= 2) {
            ASSERT_EQ(query(cut + whole.substr(length), u"\\VarFileInfo\\Translation").has_value(),
                      length == whole.size());
        }
    }
}

TEST(VersionBlock, MalformedNodesAreNotFound) {
    using version_image::Node;
    const Node table{u"040904b0",
                     {},
                     0,
                     true,
                     {version_image::text(u"A", u"x"), version_image::text(u"B", u"y")}};
    const Node strings{u"StringFileInfo", {}, 0, true, {table}};
    const Node good{u"VS_VERSION_INFO", {}, 0, false, {strings}};
    const std::string block = version_image::encode(good);
    const std::u16string pathB = u"\\StringFileInfo\\040904b0\\B";
    ASSERT_TRUE(query(block, pathB));
    const std::size_t nodeA = 0x28 + 0x24 + 0x18;  // after the headers and keys above it
    ASSERT_EQ(block[nodeA + 6], 'A');

    std::string zeroLength = block;
    put16(zeroLength, nodeA, 0);
    EXPECT_FALSE(query(zeroLength, pathB));

    std::string pastParent = block;
    put16(pastParent, nodeA, 0x7FFF);
    EXPECT_FALSE(query(pastParent, pathB));
    EXPECT_TRUE(query(pastParent, u"\\StringFileInfo\\040904b0\\A"));

    std::string unterminatedKey = block;
    put16(unterminatedKey, nodeA, 8);
    EXPECT_FALSE(query(unterminatedKey, u"\\StringFileInfo\\040904b0\\A"));

    std::string longText = block;
    put16(longText, nodeA + 2, 40);
    EXPECT_FALSE(query(longText, u"\\StringFileInfo\\040904b0\\A"));
    EXPECT_TRUE(query(longText, pathB));

    // The root here has no VS_FIXEDFILEINFO.
    EXPECT_FALSE(query(block, u"\\"));

    std::string sixteenBit = block;
    sixteenBit[4] = 'V';
    EXPECT_FALSE(query(sixteenBit, pathB));
}

}  // namespace
