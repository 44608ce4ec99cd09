#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "support/TestMachine.h"

namespace {

using Block = std::vector<std::uint8_t>;

// VS_FIXEDFILEINFO, as far as the tests read it.
struct FixedFileInfo {
    std::uint32_t signature;
    std::uint32_t structVersion;
    std::uint32_t fileVersionMS;
    std::uint32_t fileVersionLS;
    std::uint32_t productVersionMS;
    std::uint32_t productVersionLS;
};

class VersionInfoConformance : public ::testing::Test {
protected:
    void SetUp() override {
        machine.placeTestData("C:\\Lib\\zlib1.dll", "zlib1-x64.dll");
        machine.placeTestData("C:\\Lib32\\zlib1.dll", "zlib1-x86.dll");
        machine.placeTestData("C:\\Lib\\libwinpthread-1.dll", "libwinpthread-1.dll");
    }

    // The block as the program reads it: the size the file reports, at most 64,000 bytes.
    std::optional<Block> load(const std::string& path) {
        std::uint32_t handle = 7;
        const std::uint32_t size = versionInfo.GetFileVersionInfoSizeA(path, &handle);
        if (size == 0) {
            return std::nullopt;
        }
        EXPECT_EQ(handle, 0u);
        Block block(std::min<std::uint32_t>(size, 64000));
        if (!versionInfo.GetFileVersionInfoA(path, handle, std::uint32_t(block.size()),
                                             block.data())) {
            return std::nullopt;
        }
        return block;
    }

    // The answer's bytes, which must lie within the block.
    std::optional<std::string> query(Block& block, const std::string& subBlock,
                                     std::uint32_t* length = nullptr) {
        void* buffer = nullptr;
        std::uint32_t len = 0;
        if (!versionInfo.VerQueryValueA(block.data(), subBlock, &buffer, &len)) {
            return std::nullopt;
        }
        if (length != nullptr) {
            *length = len;
        }
        const auto* start = static_cast<const std::uint8_t*>(buffer);
        EXPECT_GE(start, block.data());
        EXPECT_LE(start + len, block.data() + block.size());
        return std::string(reinterpret_cast<const char*>(start), len);
    }

    // A string value up to its terminator, which Windows writes after it.
    std::optional<std::string> text(Block& block, const std::string& subBlock) {
        void* buffer = nullptr;
        std::uint32_t len = 0;
        if (!versionInfo.VerQueryValueA(block.data(), subBlock, &buffer, &len)) {
            return std::nullopt;
        }
        return std::string(static_cast<const char*>(buffer));
    }

    FixedFileInfo fixedInfo(Block& block) {
        FixedFileInfo info{};
        const auto value = query(block, "\\");
        EXPECT_TRUE(value);
        if (value && value->size() >= sizeof info) {
            std::memcpy(&info, value->data(), sizeof info);
        }
        return info;
    }

    testing_support::TestMachine machine;
    platform::VersionInfo& versionInfo = machine.platform().versionInfo;
};

// The size leaves room for the ANSI copies of the strings: twice the resource and four bytes.
TEST_F(VersionInfoConformance, SizeIsTwiceTheResourceAndFour) {
    EXPECT_EQ(versionInfo.GetFileVersionInfoSizeA("C:\\Lib\\zlib1.dll", nullptr), 2 * 820 + 4u);
    EXPECT_EQ(versionInfo.GetFileVersionInfoSizeA("c:\\lib32\\ZLIB1.DLL", nullptr), 2 * 820 + 4u);
    EXPECT_EQ(versionInfo.GetFileVersionInfoSizeA("C:\\Lib\\libwinpthread-1.dll", nullptr),
              2 * 1016 + 4u);
}

TEST_F(VersionInfoConformance, FixedInfoOfImagesOfBothBitnesses) {
    for (const char* path : {"C:\\Lib\\zlib1.dll", "C:\\Lib32\\zlib1.dll"}) {
        SCOPED_TRACE(path);
        auto block = load(path);
        ASSERT_TRUE(block);
        std::uint32_t len = 0;
        ASSERT_TRUE(query(*block, "\\", &len));
        EXPECT_EQ(len, 52u);
        const FixedFileInfo info = fixedInfo(*block);
        EXPECT_EQ(info.signature, 0xFEEF04BDu);
        EXPECT_EQ(info.fileVersionMS, 0x00010002u);  // 1.2
        EXPECT_EQ(info.fileVersionLS, 0x000D0000u);  // 13.0
        EXPECT_EQ(info.productVersionMS, 0x00010002u);
    }
    auto block = load("C:\\Lib\\libwinpthread-1.dll");
    ASSERT_TRUE(block);
    const FixedFileInfo info = fixedInfo(*block);
    EXPECT_EQ(info.fileVersionMS, 0x00010000u);
    EXPECT_EQ(info.fileVersionLS, 0u);
}

// Each entry is the language in the low word and the code page in the high word.
TEST_F(VersionInfoConformance, TranslationTableIsTheRawArray) {
    auto zlib = load("C:\\Lib\\zlib1.dll");
    auto pthread = load("C:\\Lib\\libwinpthread-1.dll");
    ASSERT_TRUE(zlib && pthread);
    EXPECT_EQ(query(*zlib, "\\VarFileInfo\\Translation"), std::string("\x09\x04\xE4\x04", 4));
    EXPECT_EQ(query(*pthread, "\\varfileinfo\\translation"), std::string("\x09\x04\xB0\x04", 4));
}

// The string table's name and the value's name match without regard to case; the length
// counts the terminator that the file stores with the text.
TEST_F(VersionInfoConformance, StringsAreFoundWithoutRegardToCase) {
    auto zlib = load("C:\\Lib\\zlib1.dll");
    ASSERT_TRUE(zlib);
    std::uint32_t len = 0;
    EXPECT_EQ(query(*zlib, "\\StringFileInfo\\040904E4\\FileVersion", &len),
              std::string("1.2.13\0", 7));
    EXPECT_EQ(len, 7u);
    EXPECT_EQ(text(*zlib, "\\StringFileInfo\\040904e4\\fileversion"), "1.2.13");
    EXPECT_EQ(text(*zlib, "\\StringFileInfo\\040904E4\\ProductName"), "zlib");

    auto pthread = load("C:\\Lib\\libwinpthread-1.dll");
    ASSERT_TRUE(pthread);
    EXPECT_EQ(text(*pthread, "\\StringFileInfo\\040904B0\\FileVersion"), "1, 0, 0, 0");
    EXPECT_EQ(text(*pthread, "\\StringFileInfo\\040904b0\\CompanyName"),
              "MingW-W64 Project. All rights reserved.");
}

// Every answer has a place of its own in the block: a later query leaves earlier ones be.
TEST_F(VersionInfoConformance, EarlierAnswersStayValid) {
    auto block = load("C:\\Lib\\libwinpthread-1.dll");
    ASSERT_TRUE(block);
    void* company = nullptr;
    void* version = nullptr;
    std::uint32_t len = 0;
    ASSERT_TRUE(versionInfo.VerQueryValueA(block->data(), "\\StringFileInfo\\040904b0\\CompanyName",
                                           &company, &len));
    ASSERT_TRUE(versionInfo.VerQueryValueA(block->data(), "\\StringFileInfo\\040904b0\\FileVersion",
                                           &version, &len));
    EXPECT_STREQ(static_cast<const char*>(company), "MingW-W64 Project. All rights reserved.");
    EXPECT_STREQ(static_cast<const char*>(version), "1, 0, 0, 0");
}

TEST_F(VersionInfoConformance, MissingValuesAreNotFound) {
    auto zlib = load("C:\\Lib\\zlib1.dll");
    ASSERT_TRUE(zlib);
    for (const char* subBlock :
         {"\\StringFileInfo\\040904E4\\CompanyName", "\\StringFileInfo\\040904b0\\FileVersion",
          "\\StringFileInfo\\040904E4\\FileVersio", "\\StringFileInfo\\040904E4\\FileVersions",
          "\\VarFileInfo\\Translation\\0", "\\FileVersion"}) {
        EXPECT_FALSE(query(*zlib, subBlock)) << subBlock;
    }
}

// A block shorter than the reported size, as the program's 64,000-byte limit or a caller's
// smaller buffer gives, still holds the resource when it is at least as long.
TEST_F(VersionInfoConformance, LengthCapsTheCopy) {
    Block large(64000, 0xCC);
    ASSERT_TRUE(versionInfo.GetFileVersionInfoA("C:\\Lib\\zlib1.dll", 0,
                                                std::uint32_t(large.size()), large.data()));
    EXPECT_EQ(text(large, "\\StringFileInfo\\040904E4\\FileVersion"), "1.2.13");

    const std::uint32_t size = versionInfo.GetFileVersionInfoSizeA("C:\\Lib\\zlib1.dll", nullptr);
    Block exact(size + 16, 0xCC);
    ASSERT_TRUE(versionInfo.GetFileVersionInfoA("C:\\Lib\\zlib1.dll", 0, size, exact.data()));
    EXPECT_TRUE(std::all_of(exact.begin() + size, exact.end(),
                            [](std::uint8_t byte) { return byte == 0xCC; }));
}

TEST_F(VersionInfoConformance, FilesWithoutABlockHaveSizeZero) {
    machine.placeFile("C:\\Lib\\readme.txt", "This is not a program.\r\n");
    machine.placeFile("C:\\Lib\\stub.exe", "MZ");
    std::uint8_t buffer[64] = {};
    for (const char* path : {"C:\\Lib\\readme.txt", "C:\\Lib\\stub.exe", "C:\\Lib\\missing.dll",
                             "C:\\Lib", "C:\\Missing\\zlib1.dll", "zlib1.dll", ""}) {
        SCOPED_TRACE(path);
        EXPECT_EQ(versionInfo.GetFileVersionInfoSizeA(path, nullptr), 0u);
        EXPECT_FALSE(versionInfo.GetFileVersionInfoA(path, 0, sizeof buffer, buffer));
    }
}

// String values come out in the machine's ANSI code page, with "?" for what it lacks.
TEST_F(VersionInfoConformance, StringsAreConvertedToTheAnsiCodePage) {
    std::string image = testing_support::readTestData("zlib1-x64.dll");
    const std::u16string original = u"zlib data compression library";
    const std::u16string replaced = u"Caf\u00e9 \u20ac 5 \u65e5\u672c \u00c5ngstr\u00f6m toolkit ";
    ASSERT_EQ(replaced.size(), original.size());
    const auto utf16 = [](const std::u16string& text) {
        std::string bytes;
        for (char16_t unit : text) {
            bytes.push_back(char(unit & 0xFF));
            bytes.push_back(char(unit >> 8));
        }
        return bytes;
    };
    const std::size_t at = image.find(utf16(original));
    ASSERT_NE(at, std::string::npos);
    image.replace(at, 2 * original.size(), utf16(replaced));
    machine.placeFile("C:\\Lib\\cafe.dll", image);

    ASSERT_EQ(machine.platform().codePage.GetACP(), 1252u);
    auto block = load("C:\\Lib\\cafe.dll");
    ASSERT_TRUE(block);
    std::uint32_t len = 0;
    EXPECT_EQ(query(*block, "\\StringFileInfo\\040904E4\\FileDescription", &len),
              std::string("Caf\xE9 \x80 5 ?? \xC5ngstr\xF6m toolkit \0", 30));
    EXPECT_EQ(len, 30u);
}

}  // namespace
