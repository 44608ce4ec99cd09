// The .reg reader and writer of the store, on text alone.
#include <gtest/gtest.h>

#include <QString>

#include <iterator>
#include <string>
#include <tuple>
#include <vector>

#include "platform/WinTypes.h"
#include "platform/portable/PortableCodePage.h"
#include "platform/portable/RegText.h"

namespace {

using namespace platform;
using namespace platform::portable;

std::vector<std::uint8_t> utf16Le(std::u16string_view text) {
    std::vector<std::uint8_t> bytes;
    for (char16_t unit : text) {
        bytes.push_back(std::uint8_t(unit & 0xff));
        bytes.push_back(std::uint8_t(unit >> 8));
    }
    return bytes;
}

class RegTextTest : public ::testing::Test {
protected:
    PortableCodePage codePage_{1252};
};

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
                      "[HKEY_CURRENT_USER\\Gr\xfc\xdf\x65]\r\n"
                      "\"\x80\"=\"\xe4\"\r\n")}) {
        const RegParseResult parsed = parseRegText(bytes, codePage_);
        ASSERT_TRUE(parsed.ok()) << parsed.error;
        ASSERT_EQ(parsed.operations.size(), 2u);
        EXPECT_EQ(parsed.operations[0].subKey, u"Grüße");
        EXPECT_EQ(parsed.operations[1].name, u"€");
        EXPECT_EQ(parsed.operations[1].data, utf16Le(std::u16string_view(u"ä\0", 2)));
    }
}

// CR, LF and CRLF each end one line.
TEST_F(RegTextTest, CountsLinesAtEveryKindOfLineEnd) {
    const RegParseResult parsed = parseRegText(
        "REGEDIT4\r\n\r[HKEY_USERS\\A]\n\"a\"=\"1\"\r\n\n\"b\"=dword:x\r\n", codePage_);
    EXPECT_EQ(parsed.errorLine, 6);
    EXPECT_TRUE(parsed.operations.empty());
}

// The root is the whole name before the first "\" in any case, not a short name or
// HKEY_PERFORMANCE_DATA; the path runs to the last "]".
TEST_F(RegTextTest, KeyLinesNameTheirRootAndPathAsWritten) {
    const RegParseResult parsed = parseRegText(
        "REGEDIT4\r\n[HKEY_LOCAL_MACHINE]\r\n[-hkey_classes_root\\a]b] ; x\r\n"
        "[HKLM\\Short]\r\n[HKEY_PERFORMANCE_DATA\\x]\r\n[ HKEY_USERS\\x]\r\n",
        codePage_);
    ASSERT_TRUE(parsed.ok()) << parsed.error;
    ASSERT_EQ(parsed.operations.size(), 5u);
    EXPECT_EQ(parsed.operations[0].root, RegRoot::LocalMachine);
    EXPECT_EQ(parsed.operations[0].subKey, u"");
    EXPECT_EQ(parsed.operations[1].kind, RegOperation::Kind::DeleteKey);
    EXPECT_EQ(parsed.operations[1].root, RegRoot::ClassesRoot);
    EXPECT_EQ(parsed.operations[1].subKey, u"a]b");
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
    const RegParseResult parsed = parseRegText(regFileBytes(text), codePage_);
    ASSERT_TRUE(parsed.ok()) << parsed.errorLine << ": " << parsed.error;
    ASSERT_EQ(parsed.operations.size(), std::size(values) + 1);
    for (size_t i = 0; i < std::size(values); ++i) {
        const RegOperation& op = parsed.operations[i + 1];
        EXPECT_EQ(std::tie(op.name, op.type, op.data), values[i]) << i;
    }
}

}  // namespace
