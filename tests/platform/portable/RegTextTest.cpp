// The .reg reader and writer of the store, on text alone.
#include <gtest/gtest.h>

#include <QString>

#include <string>
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
    const QByteArray ansi =
        "Windows Registry Editor Version 5.00\r\n[HKEY_CURRENT_USER\\Gr"
        "\xfc\xdf"
        "e]\r\n\"\x80\"=\"\xe4\"\r\n";
    const std::u16string wide = text.toStdU16String();
    const std::vector<std::uint8_t> le = utf16Le(wide);
    const std::string forms[] = {
        "\xff\xfe" + std::string(le.begin(), le.end()),
        "\xef\xbb\xbf" + text.toUtf8().toStdString(),
        text.toUtf8().toStdString(),
        ansi.toStdString(),
    };
    for (const std::string& bytes : forms) {
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
    EXPECT_FALSE(parsed.ok());
    EXPECT_EQ(parsed.errorLine, 6);
    EXPECT_TRUE(parsed.operations.empty());
}

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
    for (int i = 2; i < 5; ++i) {
        EXPECT_FALSE(parsed.operations[size_t(i)].root) << i;
    }
}

// Whatever the store holds, the text it writes reads back as the same bytes.
TEST_F(RegTextTest, WrittenValuesReadBackByteForByte) {
    struct Value {
        std::u16string name;
        std::uint32_t type;
        std::vector<std::uint8_t> data;
    };
    const std::vector<Value> values = {
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
    for (const Value& value : values) {
        writer.value(value.name, value.type, value.data);
    }
    const std::u16string text = writer.text();
    for (size_t start = 0, end; start < text.size(); start = end + 2) {
        end = text.find(u"\r\n", start);
        ASSERT_NE(end, std::u16string::npos);
        EXPECT_LE(end - start, 80u)
            << QString::fromStdU16String(text.substr(start, end - start)).toStdString();
    }
    const RegParseResult parsed = parseRegText(regFileBytes(text), codePage_);
    ASSERT_TRUE(parsed.ok()) << parsed.errorLine << ": " << parsed.error;
    ASSERT_EQ(parsed.operations.size(), values.size() + 1);
    for (size_t i = 0; i < values.size(); ++i) {
        const RegOperation& op = parsed.operations[i + 1];
        EXPECT_EQ(op.name, values[i].name) << i;
        EXPECT_EQ(op.type, values[i].type) << i;
        EXPECT_EQ(op.data, values[i].data) << i;
    }
    EXPECT_NE(text.find(u"\"dword\"=dword:12345678\r\n"), std::u16string::npos);
    EXPECT_NE(text.find(u"\"odd type\"=hex(12345678):ff\r\n"), std::u16string::npos);
    EXPECT_NE(text.find(u"\"no terminator\"=hex(1):61,00,62,00,63,00\r\n"), std::u16string::npos);
}

}  // namespace
