// Version resources: the images the PE writer makes, read back through the version calls; the
// resource found, or not, in damaged images; and blocks cut short or malformed.
#include <gtest/gtest.h>

#include <QProcess>
#include <QTemporaryDir>

#include <fstream>

#include "VersionQuery.h"
#include "demo/PeWriter.h"
#include "platform/portable/PeResource.h"
#include "platform/portable/VersionBlock.h"
#include "support/TestMachine.h"

namespace {

using namespace platform::portable;
using namespace demo;

void put(std::string& bytes, std::size_t offset, std::uint32_t value, unsigned size = 4) {
    for (unsigned i = 0; i < size; ++i) {
        bytes[offset + i] = char(value >> (8 * i));
    }
}

std::span<const std::uint8_t> bytesOf(std::string_view text) {
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

// A string node whose length counts the terminator, as rc and windres store it.
VersionNode text(const std::u16string& key, const std::u16string& value) {
    return {key, utf16Bytes(value + u'\0'), true, {}};
}

VersionNode parent(const std::u16string& key, std::vector<VersionNode> children) {
    return {key, {}, true, std::move(children)};
}

// A block whose fixed info is zeros but for its signature, over the children.
std::string block(std::vector<VersionNode> children) {
    std::string fixedInfo(kFixedFileInfoSize, '\0');
    put(fixedInfo, 0, 0xFEEF04BD);
    return encodeVersionNode({u"VS_VERSION_INFO", fixedInfo, false, std::move(children)});
}

// The resource's bytes, which must end within the image.
std::optional<std::string> versionResource(std::string_view image) {
    const auto resource = findVersionResource(bytesOf(image));
    if (!resource) {
        return std::nullopt;
    }
    EXPECT_LE(resource->data() + resource->size(), bytesOf(image).data() + image.size());
    return std::string(reinterpret_cast<const char*>(resource->data()), resource->size());
}

PeVersionInfo sample(bool pe32Plus) {
    return {.fileVersion = "3.14.159.2653",
            .productVersion = "3.14",
            .companyName = "Northwind Traders Ltd.",
            .fileDescription = "Northwind Café — Ёлка",
            .fixedFileVersion = {3, 14, 159, 2653},
            .fixedProductVersion = {3, 14, 65535, 0},
            .pe32Plus = pe32Plus};
}

// Strings come out in the machine's ANSI code page, "?" for what it lacks.
TEST(PeWriter, BothImageKindsReadBackStringsTranslationAndFixedVersions) {
    platform::portable::MachineFacts utf8;
    utf8.ansiCodePage = 65001;
    testing_support::TestMachine machine, unicodeMachine(utf8);
    for (bool pe32Plus : {true, false}) {
        machine.placeFile("C:\\App\\app.exe", writeVersionedPe(sample(pe32Plus)));
        auto& versionInfo = machine.platform().versionInfo;
        const auto string = [&](const char* table, const char* name) {
            return versionText(versionInfo, "C:\\App\\app.exe", table, name);
        };
        EXPECT_EQ(string("040904b0", "FileVersion"), "3.14.159.2653");
        EXPECT_EQ(string("040904B0", "ProductVersion"), "3.14");
        EXPECT_EQ(string("040904b0", "CompanyName"), "Northwind Traders Ltd.");
        EXPECT_EQ(string("040904b0", "FileDescription"), "Northwind Caf\xE9 \x97 ????");
        EXPECT_EQ(versionValue(versionInfo, "C:\\App\\app.exe", "\\VarFileInfo\\Translation"),
                  std::string("\x09\x04\xB0\x04", 4));
        EXPECT_EQ(fixedVersions(versionInfo, "C:\\App\\app.exe"),
                  (std::vector<std::uint32_t>{0x0003000E, 0x009F0A5D, 0x0003000E, 0xFFFF0000}));
    }
    unicodeMachine.placeFile("C:\\b.exe", writeVersionedPe(sample(true)));
    EXPECT_EQ(versionText(unicodeMachine.platform().versionInfo, "C:\\b.exe", "040904b0",
                          "FileDescription"),
              "Northwind Café — Ёлка");
}

TEST(PeWriter, MissingStringsAreAbsentAndTheTableFollowsTheTranslation) {
    testing_support::TestMachine machine;
    machine.placeFile("C:\\a.dll", writeVersionedPe({.fileVersion = {},
                                                     .productVersion = {},
                                                     .companyName = "",
                                                     .fileDescription = {},
                                                     .language = 0x0804,
                                                     .codePage = 0x03A8}));
    auto& versionInfo = machine.platform().versionInfo;
    EXPECT_EQ(versionValue(versionInfo, "C:\\a.dll", "\\VarFileInfo\\Translation"),
              std::string("\x04\x08\xA8\x03", 4));
    EXPECT_EQ(versionText(versionInfo, "C:\\a.dll", "080403a8", "CompanyName"), "");
    for (const char* name : {"FileVersion", "ProductVersion", "FileDescription"}) {
        EXPECT_EQ(versionText(versionInfo, "C:\\a.dll", "080403a8", name), std::nullopt) << name;
    }
    EXPECT_EQ(versionText(versionInfo, "C:\\a.dll", "040904b0", "CompanyName"), std::nullopt);
    EXPECT_EQ(fixedVersions(versionInfo, "C:\\a.dll"), std::vector<std::uint32_t>(4, 0));
}

// binutils is the independent judge of the headers, where it is installed.
TEST(PeWriter, ObjdumpRecognisesTheImages) {
    QTemporaryDir dir;
    for (bool pe32Plus : {true, false}) {
        std::ofstream(dir.filePath("app.exe").toStdString(), std::ios::binary)
            << writeVersionedPe(sample(pe32Plus));
        QProcess objdump;
        objdump.start("objdump", {"-h", dir.filePath("app.exe")});
        if (!objdump.waitForFinished(30000) && objdump.error() == QProcess::FailedToStart) {
            GTEST_SKIP() << "no objdump";
        }
        const QString out = objdump.readAllStandardOutput();
        EXPECT_TRUE(out.contains(pe32Plus ? "file format pei-x86-64" : "file format pei-i386") &&
                    out.contains(".rsrc"))
            << out.toStdString() << objdump.readAllStandardError().toStdString();
    }
}

// A file cut short has the resource only when it holds all of it: cuts within the DOS header,
// the optional header, the section table, the tree and the resource.
TEST(PeResource, ATruncatedImageHasNoResource) {
    const std::string image = testing_support::readTestData("zlib1-x64.dll");
    const auto whole = versionResource(image);
    ASSERT_TRUE(whole);
    const std::size_t end = image.find(*whole) + whole->size();
    for (std::size_t length : {std::size_t(0x3E), std::size_t(0x100), std::size_t(0x200),
                               std::size_t(0x20A20), end - 1}) {
        EXPECT_FALSE(versionResource(std::string_view(image).substr(0, length))) << length;
    }
    EXPECT_EQ(versionResource(std::string_view(image).substr(0, end)), whole);
}

// Offsets where the PE writer puts things: headers, then the tree at 0x200 of a root and one
// directory per level, each with one ID entry.
TEST(PeResource, DamagedHeadersAndOffsetsMeanNoResource) {
    constexpr std::size_t kPeOffsetField = 0x3C, kOptionalHeader = 0x58,
                          kDirectories = kOptionalHeader + 112,
                          kSectionHeader = kOptionalHeader + 240, tree = 0x200, kName = 0x18,
                          kLanguage = 0x30, kDataEntry = 0x48, kData = 0x58;
    const std::string good = peImageWithVersionResource("any bytes", true, 0x0409);
    ASSERT_EQ(versionResource(good), "any bytes");
    const struct {
        const char* what;
        std::size_t offset;
        std::uint32_t value;
        unsigned size = 4;
    } damages[] = {
        {"no MZ", 0, 0x5A4E, 2},
        {"PE header past the end", kPeOffsetField, 0xFFFFFFF0u},
        {"PE header in the last bytes", kPeOffsetField, std::uint32_t(good.size() - 2)},
        {"no PE signature", 0x40, 0x00004551},
        {"unknown optional-header magic", kOptionalHeader, 0x0107, 2},
        {"too few data directories", kDirectories - 4, 2},
        {"optional header too short for the resource directory", 0x54, 100, 2},
        {"no resource directory", kDirectories + 16, 0},
        {"resource RVA in no section", kDirectories + 16, 0x9000},
        {"section data past the end", kSectionHeader + 20, 0xFFFFFF00u},
        {"section data cut before the resource", kSectionHeader + 16, kData + 4},
        {"resource size past its section", tree + kDataEntry + 4, 0x10000},
        {"resource RVA that wraps round", tree + kDataEntry, 0xFFFFFFF0u},
        {"no RT_VERSION type", tree + 16, 14},
        {"no RT_VERSION among 0xFFFF entries, more than the tree holds", tree + 14, 0x000EFFFF},
        {"type entry that is not a directory", tree + 20, kName},
        {"directory offset past the tree", tree + kName + 20, 0x8FFFFFF0u},
        // Directories that point back up: the walk has three levels, it cannot go round.
        {"type entry pointing at the root", tree + 20, 0x80000000u},
        {"name entry pointing at its own directory", tree + kName + 20, 0x80000000u | kName},
        {"language entry pointing at its own directory", tree + kLanguage + 20,
         0x80000000u | kLanguage},
    };
    for (const auto& damage : damages) {
        std::string image = good;
        put(image, damage.offset, damage.value, damage.size);
        EXPECT_FALSE(versionResource(image)) << damage.what;
    }
    // Without a name 1 (VS_VERSION_INFO) the first name serves.
    std::string otherName = good;
    put(otherName, tree + kName + 16, 7);
    EXPECT_EQ(versionResource(otherName), "any bytes");
}

// A block cut short, with its wLength saying so, answers what lies wholly within the cut.
TEST(VersionBlock, ACutBlockAnswersWhatLiesWhollyWithinIt) {
    const std::string whole =
        *versionResource(testing_support::readTestData("libwinpthread-1.dll"));
    for (std::size_t length = 2; length <= whole.size(); ++length) {
        std::string cut = whole.substr(0, length);
        put(cut, 0, std::uint32_t(length), 2);
        for (const std::u16string_view path :
             {u"\\", u"\\StringFileInfo\\040904b0\\FileVersion",
              u"\\StringFileInfo\\040904b0\\Comment", u"\\VarFileInfo\\Translation"}) {
            const auto full = queryVersionValue(bytesOf(whole), path);
            ASSERT_TRUE(full);
            ASSERT_EQ(queryVersionValue(bytesOf(cut), path).has_value(),
                      full->offset + full->byteSize() <= length)
                << length;
        }
    }
}

TEST(VersionBlock, MalformedNodesAreNotFound) {
    const std::string good =
        block({parent(u"StringFileInfo", {parent(u"t", {text(u"A", u"x"), text(u"B", u"y")})})});
    const std::size_t nodeA = 0x28 + 52 + 0x24 + 0x0C;  // after the headers, keys and fixed info
    ASSERT_EQ(good[nodeA + 6], 'A');
    const std::u16string a = u"\\StringFileInfo\\t\\A", b = u"\\StringFileInfo\\t\\B";
    const struct {
        const char* what;
        std::size_t offset;  // of the 16-bit field set to value
        std::uint16_t value;
        std::u16string_view path;
        bool found;
    } cases[] = {
        {"the block as it is", 0, std::uint16_t(good.size()), b, true},
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
        std::string damaged = good;
        put(damaged, c.offset, c.value, 2);
        EXPECT_EQ(queryVersionValue(bytesOf(damaged), c.path).has_value(), c.found) << c.what;
    }
}

// What Windows leaves to the caller the portable machine answers safely: a length too short
// for the block and the eight bytes after it keeps what lies wholly within it, and a string's
// ANSI copy that does not fit the length fails instead of writing past it.
TEST(PortableVersionInfo, ShortLengthsCutTheBlockAndConversionsStayWithinIt) {
    testing_support::TestMachine machine;
    auto& versionInfo = machine.platform().versionInfo;
    const std::string path = "C:\\Program Files\\Big\\big.exe";
    const VersionNode table = parent(u"040904b0", {text(u"FileVersion", u"2.0.1.0"),
                                                   text(u"Comments", std::u16string(25000, u'x'))});
    const VersionNode translation{u"Translation", std::string("\x09\x04\xB0\x04", 4), false};
    machine.placeFile(path,
                      peImageWithVersionResource(block({parent(u"StringFileInfo", {table}),
                                                        parent(u"VarFileInfo", {translation})}),
                                                 true));
    const std::uint32_t size = versionInfo.GetFileVersionInfoSizeA(path, nullptr);
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
        std::vector<std::uint8_t> block(c.length);
        ASSERT_TRUE(versionInfo.GetFileVersionInfoA(path, 0, c.length, block.data()));
        const auto found = [&](const std::string& subBlock) {
            void* buffer = nullptr;
            std::uint32_t length = 0;
            return versionInfo.VerQueryValueA(block.data(), subBlock, &buffer, &length);
        };
        EXPECT_EQ(found("\\"), c.fixedInfo) << c.length;
        EXPECT_EQ(found("\\StringFileInfo\\040904b0\\FileVersion"), c.fileVersion) << c.length;
        EXPECT_EQ(found("\\VarFileInfo\\Translation"), c.translation) << c.length;
        EXPECT_EQ(found("\\StringFileInfo\\040904b0\\Comments"), c.comments) << c.length;
    }
    std::vector<std::uint8_t> tiny(13);
    EXPECT_FALSE(versionInfo.GetFileVersionInfoA(path, 0, 13, tiny.data()));
}

}  // namespace
