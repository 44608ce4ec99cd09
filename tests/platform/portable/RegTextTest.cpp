// The .reg reader and writer of the store, and the portable regedit's import built on them.
#include <gtest/gtest.h>

#include <QString>

#include <iterator>
#include <string>
#include <tuple>
#include <vector>

#include "platform/WinTypes.h"
#include "platform/portable/PortableCodePage.h"
#include "platform/portable/RegText.h"
#include "support/TestMachine.h"

namespace {

using namespace platform;
using namespace platform::portable;

std::vector<std::uint8_t> utf16Le(std::u16string_view text) {
    std::vector<std::uint8_t> bytes;
    for (char16_t unit : text) {
        bytes.insert(bytes.end(), {std::uint8_t(unit & 0xff), std::uint8_t(unit >> 8)});
    }
    return bytes;
}

class RegTextTest : public ::testing::Test {
protected:
    PortableCodePage codePage{1252};
};

// The portable regedit's own policy, stricter than regedit, which imports the lines it can
// read: a file with a malformed line is refused whole, and the message says where, so that a
// slip in a hand-written machine file is found instead of half imported. CR, LF and CRLF each
// end one line.
TEST_F(RegTextTest, AMalformedLineRefusesTheWholeFileWithItsLine) {
    const std::string good =
        "Windows Registry Editor Version 5.00\r\n\r\n"
        "[HKEY_CURRENT_USER\\Software\\Malformed]\r\n\"ok\"=\"1\"\r\n";
    const std::pair<std::string, int> cases[] = {
        {"REGEDIT5\r\n\r\n[HKEY_CURRENT_USER\\Software]\r\n", 1},
        {"", 1},
        {good + "\"no equals\" \"x\"\r\n", 5},
        {good + "\"unterminated name=1\r\n", 5},
        {good + "\"open\"=\"string\r\n", 5},
        {good + "\"after\"=\"string\" junk\r\n", 5},
        {good + "\"bad\"=hex:01,zz\r\n", 5},
        {good + "\"three digits\"=hex:012\r\n", 5},
        {good + "\"bad\"=hex:01,\\\r\n  02,0g\r\n", 6},
        {good + "\"open end\"=hex:01,\\\r\n", 5},
        {good + "\"bad\"=dword:123456789\r\n", 5},
        {good + "\"bad\"=dword:\r\n", 5},
        {good + "\"bad\"=text\r\n", 5},
        {good + "\r\n[HKEY_CURRENT_USER\\Software\\Other\r\n", 6},
        {"REGEDIT4\r\n\r[HKEY_USERS\\A]\n\"a\"=\"1\"\r\n\n\"b\"=dword:x\r\n", 6},
    };
    testing_support::TestMachine machine;
    std::string exported;
    for (const auto& [text, line] : cases) {
        const std::string message = machine.importReg(text);
        EXPECT_NE(message.find("import.reg:" + std::to_string(line) + ": "), std::string::npos)
            << message;
        EXPECT_FALSE(machine.platform()
                         .regEdit.exportKey("HKEY_CURRENT_USER\\Software\\Malformed", &exported)
                         .ok)
            << message;
    }
    ASSERT_EQ(machine.importReg(good), "");
    ASSERT_TRUE(machine.platform()
                    .regEdit.exportKey("HKEY_CURRENT_USER\\Software\\Malformed", &exported)
                    .ok);
    EXPECT_NE(exported.find("\"ok\"=\"1\""), std::string::npos) << exported;
}

// UTF-16LE with BOM, UTF-8 with and without BOM, and otherwise the ANSI code page.
TEST_F(RegTextTest, ReadsEveryEncodingOfTheSameText) {
    const QString text = QStringLiteral(
        "Windows Registry Editor Version 5.00\r\n[HKEY_CURRENT_USER\\Gr\u00fc\u00dfe]\r\n"
        "\"\u20ac\"=\"\u00e4\"\r\n");
    const std::vector<std::uint8_t> wide = utf16Le(text.toStdU16String());
    const std::string utf8 = text.toUtf8().toStdString();
    for (const std::string& bytes :
         {"\xff\xfe" + std::string(wide.begin(), wide.end()), "\xef\xbb\xbf" + utf8, utf8,
          std::string("Windows Registry Editor Version 5.00\r\n"
                      "[HKEY_CURRENT_USER\\Gr\xfc\xdf\x65]\r\n\"\x80\"=\"\xe4\"\r\n")}) {
        const RegParseResult parsed = parseRegText(bytes, codePage);
        ASSERT_TRUE(parsed.ok()) << parsed.error;
        ASSERT_EQ(parsed.operations.size(), 2u);
        EXPECT_EQ(parsed.operations[0].subKey, u"Grüße");
        EXPECT_EQ(parsed.operations[1].name, u"€");
        EXPECT_EQ(parsed.operations[1].data, utf16Le(std::u16string_view(u"ä\0", 2)));
    }
}

// The root is the whole name before the first "\" in any case, not a short name or
// HKEY_PERFORMANCE_DATA; the path runs to the last "]".
TEST_F(RegTextTest, KeyLinesNameTheirRootAndPathAsWritten) {
    const RegParseResult parsed = parseRegText(
        "REGEDIT4\r\n[HKEY_LOCAL_MACHINE]\r\n[-hkey_classes_root\\a]b] ; x\r\n"
        "[HKLM\\Short]\r\n[HKEY_PERFORMANCE_DATA\\x]\r\n[ HKEY_USERS\\x]\r\n",
        codePage);
    ASSERT_TRUE(parsed.ok()) << parsed.error;
    ASSERT_EQ(parsed.operations.size(), 5u);
    EXPECT_EQ(std::tie(parsed.operations[0].root, parsed.operations[0].subKey),
              std::tuple(RegRoot::LocalMachine, u""));
    EXPECT_EQ(
        std::tie(parsed.operations[1].kind, parsed.operations[1].root, parsed.operations[1].subKey),
        std::tuple(RegOperation::Kind::DeleteKey, RegRoot::ClassesRoot, u"a]b"));
    for (size_t i = 2; i < 5; ++i) {
        EXPECT_FALSE(parsed.operations[i].root) << i;
    }
}

// Whatever the store holds, the text it writes reads back as the same bytes, in lines of at
// most 80 characters.
TEST_F(RegTextTest, WrittenValuesReadBackByteForByte) {
    const std::tuple<std::u16string, std::uint32_t, std::vector<std::uint8_t>> values[] = {
        {u"", regtype::Sz, utf16Le(std::u16string_view(u"plain\0", 6))},
        {u"no terminator", regtype::Sz, utf16Le(u"abc")},
        {u"inner nul", regtype::Sz, utf16Le(std::u16string_view(u"a\0b\0", 4))},
        {u"lone surrogate", regtype::Sz, utf16Le(std::u16string_view(u"\xd800x\0", 3))},
        {u"odd bytes", regtype::Sz, {0x41}},
        {u"empty sz", regtype::Sz, {}},
        {u"lines \"\\\r\n", regtype::Sz, utf16Le(std::u16string_view(u"a\r\nb\"\\\0", 7))},
        {u"short dword", regtype::Dword, {1, 2}},
        {u"dword", regtype::Dword, {0x78, 0x56, 0x34, 0x12}},
        {u"none", regtype::None, {}},
        {u"odd type", 0x12345678, {0xff}},
        {u"long binary", regtype::Binary, std::vector<std::uint8_t>(300, 0xab)},
    };
    RegTextWriter writer;
    writer.key(u"HKEY_CURRENT_USER\\Software");
    for (const auto& [name, type, data] : values) {
        writer.value(name, type, data);
    }
    const std::u16string text = writer.text();
    for (size_t start = 0, end; (end = text.find(u"\r\n", start)) != text.npos; start = end + 2) {
        EXPECT_LE(end - start, 80u)
            << QString::fromStdU16String(text.substr(start, end - start)).toStdString();
    }
    const RegParseResult parsed = parseRegText(regFileBytes(text), codePage);
    ASSERT_TRUE(parsed.ok()) << parsed.errorLine << ": " << parsed.error;
    ASSERT_EQ(parsed.operations.size(), std::size(values) + 1);
    for (size_t i = 0; i < std::size(values); ++i) {
        const RegOperation& op = parsed.operations[i + 1];
        EXPECT_EQ(std::tie(op.name, op.type, op.data), values[i]) << i;
    }
}

}  // namespace
