#include "core/BasicText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "QtPrinters.h"
#include "core/BasicNumber.h"

namespace {

TEST(BasicNumberTest, IsNumericAndCDblFollowBasic) {
    for (const char* number :
         {"1e3", "1.5E-2", "2D3", "12,5", "1,000.5", " 7 ", "\t7\r\n", "+5", "5-", "- 5", ".5",
          "5.", "&H1F", "&hff", "&O17", "&HFFFFFFFF", "000000000012"}) {
        EXPECT_TRUE(core::isNumeric(number)) << number;
    }
    for (const char* text : {"", "   ", "-", ".", ",", "1.2.3", "1.000,5", "-5-", "2 0", "1e",
                             "1e999", "0 beta", "2c", "v1", "&H", "&O8", "&H100000000", "&X1"}) {
        EXPECT_FALSE(core::isNumeric(text)) << text;
    }
    const std::pair<QString, std::optional<double>> values[] = {
        {"12,5", 125.0}, {"1e3", 1000.0},      {"1.5E-2", 0.015}, {" 5- ", -5.0},
        {"&O17", 15.0},  {"&HFFFFFFFF", -1.0}, {"1e-999", 0.0},   {"x", std::nullopt}};
    for (const auto& [text, expected] : values) {
        EXPECT_EQ(core::cDbl(text), expected) << text.toStdString();
    }
}

// CLng rounds halves to even and has no value beyond 32 bits; Val reads the number at the
// start, blanks and tabs inside it ignored, and 0 without one.
TEST(BasicNumberTest, CLngAndValFollowBasic) {
    const std::pair<QString, qint32> rounded[] = {{"2.5", 2},  {"3.5", 4},   {"-2.5", -2},
                                                  {"2.51", 3}, {" 10 ", 10}, {"1e3", 1000}};
    for (const auto& [text, expected] : rounded) {
        EXPECT_EQ(core::cLng(text), expected) << text.toStdString();
    }
    EXPECT_EQ(core::cLng("2147483647"), std::numeric_limits<qint32>::max());
    EXPECT_EQ(core::cLng("-2147483648"), std::numeric_limits<qint32>::min());
    for (const char* text :
         {"2147483648", "-2147483649", "2147483647.5", "99999999999999999999", "", "abc"}) {
        EXPECT_EQ(core::cLng(text), std::nullopt) << text;
    }
    const std::pair<QString, double> values[] = {
        {"  12 34abc", 1234}, {"1.5e2x", 150},    {"1 d 2", 100},     {"1e", 1},
        {"1e+x", 1},          {"&H10", 16},       {"&h1g", 1},        {"&O17", 15},
        {"&HFFFF", -1},       {"&H10000", 65536}, {"&HFFFFFFFF", -1}, {"&H100000000", 0},
        {"-3.7", -3.7},       {"- 3", -3},        {"5-", 5},          {".5", 0.5},
        {"1,234", 1},         {"1.2.3", 1.2},     {"12\t3\n4", 1234}, {"1\r2", 1},
        {"-9997", -9997}};
    for (const auto& [text, expected] : values) {
        EXPECT_DOUBLE_EQ(core::val(text), expected) << text.toStdString();
    }
    for (const char* text : {"&", "", "abc", "--5", "TWUS_1_2_3.exe,x"}) {
        EXPECT_EQ(core::val(text), 0) << text;
    }
    EXPECT_TRUE(std::isinf(core::val("1e999")));
}

TEST(BasicTextTest, SplitFollowsBasic) {
    EXPECT_EQ(core::split("", ","), QStringList{});
    EXPECT_EQ(core::split("", ""), QStringList{});
    EXPECT_EQ(core::split("a", ","), QStringList{"a"});
    EXPECT_EQ(core::split("a,b,", ","), (QStringList{"a", "b", ""}));
    EXPECT_EQ(core::split(",", ","), (QStringList{"", ""}));
    EXPECT_EQ(core::split("a,,b", ","), (QStringList{"a", "", "b"}));
    EXPECT_EQ(core::split("a,b", ""), QStringList{"a,b"});
    EXPECT_EQ(core::split("x.:M|B:.y.:M|B:.", ".:M|B:."), (QStringList{"x", "y", ""}));
    EXPECT_EQ(core::split("A=b=c", "="), (QStringList{"A", "b", "c"}));
    EXPECT_EQ(core::split("a,b,c", ",", 2), (QStringList{"a", "b,c"}));
    EXPECT_EQ(core::split("a,b", ",", 1), QStringList{"a,b"});
    EXPECT_EQ(core::split("a,b", ",", 5), (QStringList{"a", "b"}));
    EXPECT_EQ(core::split("a,b", ",", 0), QStringList{});
    EXPECT_EQ(core::splitOne("", "|"), QStringList{""});
    EXPECT_EQ(core::splitOne("a|", "|"), (QStringList{"a", ""}));
}

// InStr and InStrRev count from 1 and answer 0 for nothing found.
TEST(BasicTextTest, InStrAndInStrRevFollowBasic) {
    EXPECT_EQ(core::inStr(1, "abcb", "b"), 2);
    EXPECT_EQ(core::inStr(3, "abcb", "b"), 4);
    EXPECT_EQ(core::inStr(1, "/REBOOT", "boot"), 0);
    EXPECT_EQ(core::inStr(1, "/REBOOT", "boot", true), 4);
    EXPECT_EQ(core::inStr(4, "abc", "c"), 0);
    EXPECT_EQ(core::inStr(2, "abc", ""), 2);
    EXPECT_EQ(core::inStr(4, "abc", ""), 4);
    EXPECT_EQ(core::inStr(5, "abc", ""), 0);
    EXPECT_EQ(core::inStr(1, "", ""), 0);
    EXPECT_EQ(core::inStr(0, "abc", "a"), 1);
    EXPECT_EQ(core::inStrRev(R"(C:\A\b.exe)", R"(\)"), 5);
    EXPECT_EQ(core::inStrRev(R"(C:\A\b.exe)", R"(\)", 4), 3);
    EXPECT_EQ(core::inStrRev("abc", "bc", 2), 0);
    EXPECT_EQ(core::inStrRev("abc", "bc", 3), 2);
    EXPECT_EQ(core::inStrRev("abc", ""), 3);
    EXPECT_EQ(core::inStrRev("abc", "a", 4), 0);
    EXPECT_EQ(core::inStrRev("abc", "a", 0), 0);
    EXPECT_EQ(core::inStrRev("", "a"), 0);
    EXPECT_EQ(core::inStrRev("Log.TXT", ".txt", -1, true), 4);
    EXPECT_EQ(core::inStrRev("Log.TXT", ".txt"), 0);
}

TEST(BasicTextTest, TheOtherTextFunctionsFollowBasic) {
    EXPECT_EQ(core::trim("  \ta b\r\n  "), "\ta b\r\n");  // blanks only
    EXPECT_EQ(core::ltrim("  a  "), "a  ");
    EXPECT_EQ(core::rtrim("  a  "), "  a");
    EXPECT_EQ(core::trim("   "), "");
    // Counts beyond the text are tolerated.
    EXPECT_EQ(core::left("abc", 5), "abc");
    EXPECT_EQ(core::left("abc", -1), "");
    EXPECT_EQ(core::right("abc", 2), "bc");
    EXPECT_EQ(core::right("abc", -2), "");
    EXPECT_EQ(core::mid("abc", 2), "bc");
    EXPECT_EQ(core::mid("abc", 2, 1), "b");
    EXPECT_EQ(core::mid("abc", 3, 10), "c");
    EXPECT_EQ(core::mid("abc", 4), "");
    EXPECT_EQ(core::mid("abc", 0, 2), "ab");
    EXPECT_EQ(core::replace("%WinDir%\\x %windir%", "%windir%", "C:\\W", true), "C:\\W\\x C:\\W");
    EXPECT_EQ(core::replace("%WinDir% %windir%", "%windir%", "W"), "%WinDir% W");
    EXPECT_EQ(core::replace("aaa", "aa", "b"), "ba");
    EXPECT_EQ(core::replace("abc", "", "x"), "abc");
    // Case maps each character and keeps the length, a pair of surrogates too.
    EXPECT_EQ(core::ucase("straße"), "STRAßE");
    EXPECT_EQ(core::lcase("ÄB"), "äb");
    EXPECT_EQ(core::ucase("x\U00010428"), "X\U00010400");
    EXPECT_TRUE(core::textCompare("Error", "ERROR"));
    EXPECT_FALSE(core::textCompare("Error", "Error "));
    EXPECT_FALSE(core::textCompare("a", "b"));
}

}  // namespace
