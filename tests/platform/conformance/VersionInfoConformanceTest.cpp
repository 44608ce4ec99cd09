#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ConformanceTest.h"

namespace {

using namespace std::string_literals;
using Block = std::vector<std::uint8_t>;

using conformance::at;

class VersionInfoConformance : public conformance::ConformanceTest {
protected:
    explicit VersionInfoConformance(unsigned codePage = 0) : ConformanceTest(codePage) {}

    void SetUp() override {
        ConformanceTest::SetUp();
        if (IsSkipped() || HasFatalFailure()) {
            return;
        }
        placeTestData(at("\\Lib\\zlib1.dll"), "zlib1-x64.dll");
        placeTestData(at("\\Lib32\\zlib1.dll"), "zlib1-x86.dll");
        placeTestData(at("\\Lib\\libwinpthread-1.dll"), "libwinpthread-1.dll");
    }

    void placeTestData(const std::string& winPath, const std::string& name) {
        machine->placeFile(winPath, conformance::readTestData(name));
    }

    platform::VersionInfo& versionInfo() { return machine->platform().versionInfo; }

    // The block as the program reads it: the size the file reports, at most 64,000 bytes.
    std::optional<Block> load(const std::string& path) {
        std::uint32_t handle = 7;
        Block block(
            std::min<std::uint32_t>(versionInfo().GetFileVersionInfoSizeA(path, &handle), 64000));
        EXPECT_EQ(handle, 0u);
        if (block.empty() || !versionInfo().GetFileVersionInfoA(
                                 path, handle, std::uint32_t(block.size()), block.data())) {
            return std::nullopt;
        }
        return block;
    }

    // The answer's len bytes where they lie, which must be within the block.
    std::optional<std::string_view> query(Block& block, const std::string& subBlock) {
        void* buffer = nullptr;
        std::uint32_t len = 0;
        if (!versionInfo().VerQueryValueA(block.data(), subBlock, &buffer, &len)) {
            return std::nullopt;
        }
        const auto* start = static_cast<const std::uint8_t*>(buffer);
        EXPECT_TRUE(start >= block.data() && start + len <= block.data() + block.size());
        return std::string_view(reinterpret_cast<const char*>(start), len);
    }
};

// Tests whose strings are those of Western European Windows.
using VersionInfoConformanceIn1252 = conformance::InCodePage<VersionInfoConformance, 1252>;

// The size is twice the resource and four bytes, room for the ANSI copies of the strings; "\" is
// the 52-byte VS_FIXEDFILEINFO; the translation table is the raw array (language in the low
// word, code page in the high word); a string's length counts the terminator the file stores.
TEST_F(VersionInfoConformance, AnswersOfRealFilesOfBothBitnesses) {
    const struct {
        std::string path;
        std::uint32_t resourceSize, fileVersionMS, fileVersionLS;
        std::string translation, subBlock, value;
    } files[] = {
        {at("\\Lib\\zlib1.dll"), 820, 0x00010002, 0x000D0000, "\x09\x04\xE4\x04"s,
         "\\StringFileInfo\\040904E4\\FileVersion", "1.2.13\0"s},
        {at("\\lib32\\ZLIB1.DLL"), 820, 0x00010002, 0x000D0000, "\x09\x04\xE4\x04"s,
         "\\StringFileInfo\\040904E4\\ProductName", "zlib\0"s},
        {at("\\Lib\\libwinpthread-1.dll"), 1016, 0x00010000, 0, "\x09\x04\xB0\x04"s,
         "\\StringFileInfo\\040904B0\\FileVersion", "1, 0, 0, 0\0"s},
    };
    for (const auto& file : files) {
        SCOPED_TRACE(file.path);
        EXPECT_EQ(versionInfo().GetFileVersionInfoSizeA(file.path, nullptr),
                  2 * file.resourceSize + 4);
        auto block = load(file.path);
        ASSERT_TRUE(block);
        const auto fixedInfo = query(*block, "\\");
        ASSERT_TRUE(fixedInfo);
        ASSERT_EQ(fixedInfo->size(), 52u);
        std::uint32_t words[4];  // signature, structure version, file version
        std::memcpy(words, fixedInfo->data(), sizeof words);
        EXPECT_EQ(words[0], 0xFEEF04BDu);
        EXPECT_EQ(words[2], file.fileVersionMS);
        EXPECT_EQ(words[3], file.fileVersionLS);
        EXPECT_EQ(query(*block, "\\VarFileInfo\\Translation"), file.translation);
        EXPECT_EQ(query(*block, file.subBlock), file.value);
    }
}

// Keys match without regard to case. Every answer has a place of its own in the block: a later
// query leaves earlier ones be.
TEST_F(VersionInfoConformance, KeysIgnoreCaseAndEarlierAnswersStayValid) {
    auto block = load(at("\\Lib\\libwinpthread-1.dll"));
    ASSERT_TRUE(block);
    const auto company = query(*block, "\\stringfileinfo\\040904b0\\COMPANYNAME");
    const auto version = query(*block, "\\StringFileInfo\\040904b0\\fileVersion");
    EXPECT_EQ(query(*block, "\\varFileInfo\\translation"), "\x09\x04\xB0\x04"s);
    EXPECT_EQ(company, "MingW-W64 Project. All rights reserved.\0"s);
    EXPECT_EQ(version, "1, 0, 0, 0\0"s);
}

// A key matches whole, at its own level, in the string table of its name.
TEST_F(VersionInfoConformance, MissingValuesAreNotFound) {
    auto zlib = load(at("\\Lib\\zlib1.dll"));
    ASSERT_TRUE(zlib);
    for (const char* subBlock :
         {"\\StringFileInfo\\040904E4\\CompanyName", "\\StringFileInfo\\040904b0\\FileVersion",
          "\\StringFileInfo\\040904E4\\FileVersio", "\\StringFileInfo\\040904E4\\FileVersions",
          "\\VarFileInfo\\Translation\\0", "\\FileVersion"}) {
        EXPECT_FALSE(query(*zlib, subBlock)) << subBlock;
    }
}

// Neither the copy nor a later query writes past the length given, be it the exact size or the
// program's 64,000 bytes.
TEST_F(VersionInfoConformance, LengthBoundsTheCopy) {
    const std::uint32_t size =
        versionInfo().GetFileVersionInfoSizeA(at("\\Lib\\zlib1.dll"), nullptr);
    for (const std::uint32_t length : {size, 64000u}) {
        Block block(length + 16, 0xCC);
        ASSERT_TRUE(
            versionInfo().GetFileVersionInfoA(at("\\Lib\\zlib1.dll"), 0, length, block.data()));
        EXPECT_EQ(query(block, "\\StringFileInfo\\040904E4\\FileVersion"), "1.2.13\0"s);
        EXPECT_TRUE(std::all_of(block.begin() + length, block.end(),
                                [](std::uint8_t byte) { return byte == 0xCC; }));
    }
}

// A file without a version resource, a folder, a missing file and an empty name have size 0
// and no block. A name without a folder is searched for as a program's DLL would be, so the
// one here is found nowhere.
TEST_F(VersionInfoConformance, FilesWithoutABlockHaveSizeZero) {
    machine->placeFile(at("\\Lib\\readme.txt"), "This is not a program.\r\n");
    machine->placeFile(at("\\Lib\\stub.exe"), "MZ");
    std::uint8_t buffer[64] = {};
    for (const std::string& path :
         {at("\\Lib\\readme.txt"), at("\\Lib\\stub.exe"), at("\\Lib\\missing.dll"), at("\\Lib"),
          at("\\Missing\\zlib1.dll"), std::string("Tallowick conformance none.dll"),
          std::string()}) {
        EXPECT_EQ(versionInfo().GetFileVersionInfoSizeA(path, nullptr), 0u) << path;
        EXPECT_FALSE(versionInfo().GetFileVersionInfoA(path, 0, sizeof buffer, buffer)) << path;
    }
}

// As the file stores text.
std::string utf16(std::u16string_view text) {
    std::string bytes;
    for (char16_t unit : text) {
        bytes += {char(unit & 0xFF), char(unit >> 8)};
    }
    return bytes;
}

// String values come out in the machine's ANSI code page, with "?" for what it lacks.
TEST_F(VersionInfoConformanceIn1252, StringsAreConvertedToTheAnsiCodePage) {
    std::string image = conformance::readTestData("zlib1-x64.dll");
    const std::string original = utf16(u"zlib data compression library");
    const std::size_t found = image.find(original);
    ASSERT_NE(found, std::string::npos);
    image.replace(found, original.size(),
                  utf16(u"Caf\u00e9 \u20ac 5 \u65e5\u672c \u00c5ngstr\u00f6m toolkit "));
    machine->placeFile(at("\\Lib\\cafe.dll"), image);
    auto block = load(at("\\Lib\\cafe.dll"));
    ASSERT_TRUE(block);
    EXPECT_EQ(query(*block, "\\StringFileInfo\\040904E4\\FileDescription"),
              "Caf\xE9 \x80 5 ?? \xC5ngstr\xF6m toolkit \0"s);
}

}  // namespace
