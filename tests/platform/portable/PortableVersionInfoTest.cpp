#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "VersionImageBuilder.h"
#include "support/TestMachine.h"

// What Windows leaves to the caller and the portable machine answers safely: blocks cut short by
// the caller's length, and string conversions that would not fit the buffer.
namespace {

using Block = std::vector<std::uint8_t>;

class PortableVersionInfo : public ::testing::Test {
protected:
    bool found(Block& block, const char* subBlock) {
        void* buffer = nullptr;
        std::uint32_t len = 0;
        return versionInfo.VerQueryValueA(block.data(), subBlock, &buffer, &len);
    }

    const std::string kPath = "C:\\Program Files\\Big\\big.exe";
    testing_support::TestMachine machine;
    platform::VersionInfo& versionInfo = machine.platform().versionInfo;
};

// A length too short for the block and the eight bytes after it keeps what lies wholly within
// it; a string's ANSI copy that does not fit the length fails instead of writing past it.
TEST_F(PortableVersionInfo, ShortLengthsCutTheBlockAndConversionsStayWithinIt) {
    using namespace version_image;
    const Node table = parent(u"040904b0", {text(u"FileVersion", u"2.0.1.0"),
                                            text(u"Comments", std::u16string(25000, u'x'))});
    const Node translation{u"Translation", std::string("\x09\x04\xB0\x04", 4), false};
    machine.placeFile(kPath, peImage(encode(root({parent(u"StringFileInfo", {table}),
                                                  parent(u"VarFileInfo", {translation})}))));
    const std::uint32_t size = versionInfo.GetFileVersionInfoSizeA(kPath, nullptr);
    ASSERT_GT(size, 64000u);  // the program reads 64,000 bytes of it

    const struct {
        std::uint32_t length;
        bool fixedInfo, fileVersion, translation, comments;
    } cases[] = {
        {size, true, true, true, true},
        {64000, true, true, true, false},    // the block fits, the long ANSI copy does not
        {40000, true, false, false, false},  // cut: strings lack the spare room
        {100, true, false, false, false},    // the fixed info ends at 92 bytes
        {99, false, false, false, false},
        {14, false, false, false, false},  // a node header and the mark
    };
    for (const auto& c : cases) {
        Block block(c.length);
        ASSERT_TRUE(versionInfo.GetFileVersionInfoA(kPath, 0, c.length, block.data()));
        EXPECT_EQ(found(block, "\\"), c.fixedInfo) << c.length;
        EXPECT_EQ(found(block, "\\StringFileInfo\\040904b0\\FileVersion"), c.fileVersion)
            << c.length;
        EXPECT_EQ(found(block, "\\VarFileInfo\\Translation"), c.translation) << c.length;
        EXPECT_EQ(found(block, "\\StringFileInfo\\040904b0\\Comments"), c.comments) << c.length;
    }
    Block tiny(13);
    EXPECT_FALSE(versionInfo.GetFileVersionInfoA(kPath, 0, 13, tiny.data()));
}

}  // namespace
