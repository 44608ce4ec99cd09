#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "VersionImageBuilder.h"
#include "support/TestMachine.h"

// What Windows leaves to the caller and the portable machine answers safely: blocks cut
// short by the caller's length, and string conversions that would not fit the buffer.
namespace {

using Block = std::vector<std::uint8_t>;

class PortableVersionInfo : public ::testing::Test {
protected:
    // A file whose block is about 2 * textUnits bytes: the size it reports is over 64,000
    // from about 16,000 units on.
    void placeLargeBlock(std::size_t textUnits) {
        const std::string block = version_image::block(
            0x0002000000010000, u"040904b0",
            {{u"FileVersion", u"2.0.1.0"}, {u"Comments", std::u16string(textUnits, u'x')}},
            0x04B00409);
        machine.placeFile(kPath, version_image::peImage(block, false));
    }

    // Read with the given length into a buffer of exactly that size.
    Block load(std::uint32_t length) {
        Block block(length);
        EXPECT_TRUE(versionInfo.GetFileVersionInfoA(kPath, 0, length, block.data()));
        return block;
    }

    bool found(Block& block, const std::string& subBlock) {
        void* buffer = nullptr;
        std::uint32_t len = 0;
        return versionInfo.VerQueryValueA(block.data(), subBlock, &buffer, &len);
    }

    const std::string kPath = "C:\\Program Files\\Big\\big.exe";
    testing_support::TestMachine machine;
    platform::VersionInfo& versionInfo = machine.platform().versionInfo;
};

// The block fits the program's 64,000 bytes but the ANSI copy of the long string does not:
// that one query fails instead of writing past the buffer.
TEST_F(PortableVersionInfo, ConversionsNeverWritePastTheBuffer) {
    placeLargeBlock(25000);
    EXPECT_GT(versionInfo.GetFileVersionInfoSizeA(kPath, nullptr), 64000u);
    Block block = load(64000);
    EXPECT_TRUE(found(block, "\\"));
    EXPECT_TRUE(found(block, "\\VarFileInfo\\Translation"));
    EXPECT_TRUE(found(block, "\\StringFileInfo\\040904b0\\FileVersion"));
    EXPECT_FALSE(found(block, "\\StringFileInfo\\040904b0\\Comments"));

    Block whole = load(versionInfo.GetFileVersionInfoSizeA(kPath, nullptr));
    EXPECT_TRUE(found(whole, "\\StringFileInfo\\040904b0\\Comments"));
}

// A length shorter than the block keeps what lies wholly within it; strings need the spare
// room that such a block lacks.
TEST_F(PortableVersionInfo, ACutBlockAnswersOnlyWhatItHolds) {
    placeLargeBlock(32000);
    Block block = load(64000);
    EXPECT_TRUE(found(block, "\\"));
    EXPECT_FALSE(found(block, "\\StringFileInfo\\040904b0\\FileVersion"));
    EXPECT_FALSE(found(block, "\\StringFileInfo\\040904b0\\Comments"));
    EXPECT_FALSE(found(block, "\\VarFileInfo\\Translation"));

    for (std::uint32_t length : {14u, 20u, 60u, 100u, 1000u}) {
        Block cut = load(length);
        EXPECT_EQ(found(cut, "\\"), length >= 100) << length;
        EXPECT_FALSE(found(cut, "\\VarFileInfo\\Translation")) << length;
    }
    Block tiny(13);
    EXPECT_FALSE(versionInfo.GetFileVersionInfoA(kPath, 0, 13, tiny.data()));
}

// The 16-bit form of NE files counts as no block.
TEST_F(PortableVersionInfo, SixteenBitBlocksAreNone) {
    const std::string header("\x40\x00\x34\x00", 4);
    std::string block = header + "VS_VERSION_INFO";
    block.resize(0x40, '\0');
    machine.placeFile(kPath, version_image::peImage(block));
    EXPECT_EQ(versionInfo.GetFileVersionInfoSizeA(kPath, nullptr), 0u);
}

}  // namespace
