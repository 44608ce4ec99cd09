// The version blocks of real files of both bitnesses as the version calls give them.
#include <algorithm>

#include "ConformanceTest.h"

namespace {

using namespace conformance;
using namespace std::string_literals;
using Block = std::vector<std::uint8_t>;

const std::string kZlib = at("\\Lib\\zlib1.dll");
const std::string kPthread = at("\\Lib\\libwinpthread-1.dll");

class VersionInfoConformance : public ConformanceTest {
protected:
    explicit VersionInfoConformance(unsigned codePage = 0) : ConformanceTest(codePage) {}

    void SetUp() override {
        ConformanceTest::SetUp();
        if (!IsSkipped() && !HasFatalFailure()) {
            place({{"\\Lib\\zlib1.dll", readTestData("zlib1-x64.dll")},
                   {"\\Lib32\\zlib1.dll", readTestData("zlib1-x86.dll")},
                   {"\\Lib\\libwinpthread-1.dll", readTestData("libwinpthread-1.dll")}});
        }
    }

    platform::VersionInfo& versionInfo() { return os().versionInfo; }

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

// The size is twice the resource and four bytes, room for the ANSI copies of the strings; "\" is
// the 52-byte VS_FIXEDFILEINFO (signature, structure version, file version); the translation
// table is the raw array (language in the low word, code page in the high word); a string's
// length counts the terminator the file stores.
TEST_F(VersionInfoConformance, AnswersOfRealFilesOfBothBitnesses) {
    // The file, its resource's size, its file version's bytes, its translation and a string.
    const std::tuple<std::string, std::uint32_t, std::string, std::string, std::string, std::string>
        cases[] = {{kZlib, 820, "\x02\0\x01\0\0\0\x0D\0"s, "\x09\x04\xE4\x04"s,
                    "\\StringFileInfo\\040904E4\\FileVersion", "1.2.13\0"s},
                   {at("\\lib32\\ZLIB1.DLL"), 820, "\x02\0\x01\0\0\0\x0D\0"s, "\x09\x04\xE4\x04"s,
                    "\\StringFileInfo\\040904E4\\ProductName", "zlib\0"s},
                   {kPthread, 1016, "\0\0\x01\0\0\0\0\0"s, "\x09\x04\xB0\x04"s,
                    "\\StringFileInfo\\040904B0\\FileVersion", "1, 0, 0, 0\0"s}};
    for (const auto& [path, resourceSize, version, translation, subBlock, value] : cases) {
        SCOPED_TRACE(path);
        EXPECT_EQ(versionInfo().GetFileVersionInfoSizeA(path, nullptr), 2 * resourceSize + 4);
        auto block = load(path);
        ASSERT_TRUE(block);
        const std::string fixed(query(*block, "\\").value_or(""));
        ASSERT_EQ(fixed.size(), 52u);
        EXPECT_EQ(fixed.substr(0, 4) + fixed.substr(8, 8), "\xBD\x04\xEF\xFE"s + version);
        EXPECT_EQ(query(*block, "\\VarFileInfo\\Translation"), translation);
        EXPECT_EQ(query(*block, subBlock), value);
    }
}

// Keys match whole, without regard to case, at their own level, in the string table of their
// name. Every answer has a place of its own in the block: a later query leaves earlier ones
// be.
TEST_F(VersionInfoConformance, KeysMatchWholeIgnoringCaseAndEarlierAnswersStayValid) {
    auto block = load(kPthread);
    ASSERT_TRUE(block);
    const auto company = query(*block, "\\stringfileinfo\\040904b0\\COMPANYNAME");
    const auto version = query(*block, "\\StringFileInfo\\040904b0\\fileVersion");
    EXPECT_EQ(query(*block, "\\varFileInfo\\translation"), "\x09\x04\xB0\x04"s);
    EXPECT_EQ(company, "MingW-W64 Project. All rights reserved.\0"s);
    EXPECT_EQ(version, "1, 0, 0, 0\0"s);

    auto zlib = load(kZlib);
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
    const std::uint32_t size = versionInfo().GetFileVersionInfoSizeA(kZlib, nullptr);
    for (const std::uint32_t length : {size, 64000u}) {
        Block block(length + 16, 0xCC);
        ASSERT_TRUE(versionInfo().GetFileVersionInfoA(kZlib, 0, length, block.data()));
        EXPECT_EQ(query(block, "\\StringFileInfo\\040904E4\\FileVersion"), "1.2.13\0"s);
        EXPECT_EQ(Block(block.begin() + length, block.end()), Block(16, 0xCC));
    }
}

// A file without a version resource, a folder, a missing file and an empty name have size 0
// and no block. A name without a folder is searched for as a program's DLL would be, so the
// one here is found nowhere.
TEST_F(VersionInfoConformance, FilesWithoutABlockHaveSizeZero) {
    place({{"\\Lib\\readme.txt", "This is not a program.\r\n"}, {"\\Lib\\stub.exe", "MZ"}});
    std::uint8_t buffer[64] = {};
    for (const std::string& path :
         {at("\\Lib\\readme.txt"), at("\\Lib\\stub.exe"), at("\\Lib\\missing.dll"), at("\\Lib"),
          at("\\Missing\\zlib1.dll"), std::string("Tallowick conformance none.dll"),
          std::string()}) {
        EXPECT_EQ(versionInfo().GetFileVersionInfoSizeA(path, nullptr), 0u) << path;
        EXPECT_FALSE(versionInfo().GetFileVersionInfoA(path, 0, sizeof buffer, buffer)) << path;
    }
}

using VersionInfoConformanceIn1252 = InCodePage<VersionInfoConformance, 1252>;

// String values come out in the machine's ANSI code page, with "?" for what it lacks.
TEST_F(VersionInfoConformanceIn1252, StringsAreConvertedToTheAnsiCodePage) {
    std::string image = readTestData("zlib1-x64.dll");
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
