#include "core/BasicText.h"

#include <gtest/gtest.h>

#include "QtPrinters.h"

namespace {

struct SplitCase {
    QString text;
    QString delimiter;
    int limit;
    QStringList expected;
};

class SplitTest : public testing::TestWithParam<SplitCase> {};

TEST_P(SplitTest, FollowsBasic) {
    const SplitCase& c = GetParam();
    EXPECT_EQ(core::split(c.text, c.delimiter, c.limit), c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, SplitTest,
    testing::Values(SplitCase{"", ",", -1, {}}, SplitCase{"", "", -1, {}},
                    SplitCase{"a", ",", -1, {"a"}}, SplitCase{"a,b,", ",", -1, {"a", "b", ""}},
                    SplitCase{",", ",", -1, {"", ""}}, SplitCase{"a,,b", ",", -1, {"a", "", "b"}},
                    SplitCase{"a,b", "", -1, {"a,b"}},
                    SplitCase{"x.:M|B:.y.:M|B:.", ".:M|B:.", -1, {"x", "y", ""}},
                    SplitCase{"A=b=c", "=", -1, {"A", "b", "c"}},
                    SplitCase{"a,b,c", ",", 2, {"a", "b,c"}}, SplitCase{"a,b", ",", 1, {"a,b"}},
                    SplitCase{"a,b", ",", 5, {"a", "b"}}, SplitCase{"a,b", ",", 0, {}}));

TEST(SplitOneTest, GivesOneEmptyElementForAnEmptyText) {
    EXPECT_EQ(core::splitOne("", "|"), QStringList{""});
    EXPECT_EQ(core::splitOne("a|", "|"), (QStringList{"a", ""}));
}

TEST(TrimTest, RemovesBlanksOnly) {
    EXPECT_EQ(core::trim("  \ta b\r\n  "), "\ta b\r\n");
    EXPECT_EQ(core::ltrim("  a  "), "a  ");
    EXPECT_EQ(core::rtrim("  a  "), "  a");
    EXPECT_EQ(core::trim("   "), "");
}

struct InStrCase {
    int start;
    QString text;
    QString search;
    bool caseInsensitive;
    int expected;
};

class InStrTest : public testing::TestWithParam<InStrCase> {};

TEST_P(InStrTest, FollowsBasic) {
    const InStrCase& c = GetParam();
    EXPECT_EQ(core::inStr(c.start, c.text, c.search, c.caseInsensitive), c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, InStrTest,
    testing::Values(InStrCase{1, "abcb", "b", false, 2}, InStrCase{3, "abcb", "b", false, 4},
                    InStrCase{1, "/REBOOT", "boot", false, 0},
                    InStrCase{1, "/REBOOT", "boot", true, 4}, InStrCase{4, "abc", "c", false, 0},
                    InStrCase{2, "abc", "", false, 2}, InStrCase{4, "abc", "", false, 4},
                    InStrCase{5, "abc", "", false, 0}, InStrCase{1, "", "", false, 0},
                    InStrCase{0, "abc", "a", false, 1}));

struct InStrRevCase {
    QString text;
    QString search;
    int start;
    int expected;
};

class InStrRevTest : public testing::TestWithParam<InStrRevCase> {};

TEST_P(InStrRevTest, FollowsBasic) {
    const InStrRevCase& c = GetParam();
    EXPECT_EQ(core::inStrRev(c.text, c.search, c.start), c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, InStrRevTest,
    testing::Values(InStrRevCase{R"(C:\A\b.exe)", R"(\)", -1, 5},
                    InStrRevCase{R"(C:\A\b.exe)", R"(\)", 4, 3}, InStrRevCase{"abc", "bc", 2, 0},
                    InStrRevCase{"abc", "bc", 3, 2}, InStrRevCase{"abc", "", -1, 3},
                    InStrRevCase{"abc", "a", 4, 0}, InStrRevCase{"abc", "a", 0, 0},
                    InStrRevCase{"", "a", -1, 0}));

TEST(InStrRevTest, IgnoresCaseOnRequest) {
    EXPECT_EQ(core::inStrRev("Log.TXT", ".txt", -1, true), 4);
    EXPECT_EQ(core::inStrRev("Log.TXT", ".txt"), 0);
}

TEST(SubstringTest, ToleratesCountsBeyondTheText) {
    EXPECT_EQ(core::left("abc", 5), "abc");
    EXPECT_EQ(core::left("abc", -1), "");
    EXPECT_EQ(core::right("abc", 2), "bc");
    EXPECT_EQ(core::right("abc", -2), "");
    EXPECT_EQ(core::mid("abc", 2), "bc");
    EXPECT_EQ(core::mid("abc", 2, 1), "b");
    EXPECT_EQ(core::mid("abc", 3, 10), "c");
    EXPECT_EQ(core::mid("abc", 4), "");
    EXPECT_EQ(core::mid("abc", 0, 2), "ab");
}

TEST(ReplaceTest, FollowsBasic) {
    EXPECT_EQ(core::replace("%WinDir%\\x %windir%", "%windir%", "C:\\W", true), "C:\\W\\x C:\\W");
    EXPECT_EQ(core::replace("%WinDir% %windir%", "%windir%", "W"), "%WinDir% W");
    EXPECT_EQ(core::replace("aaa", "aa", "b"), "ba");
    EXPECT_EQ(core::replace("abc", "", "x"), "abc");
}

TEST(CaseTest, MapsEachCharacterAndKeepsTheLength) {
    EXPECT_EQ(core::ucase("straße"), "STRAßE");
    EXPECT_EQ(core::lcase("ÄB"), "äb");
    EXPECT_EQ(core::ucase("x\U00010428"), "X\U00010400");  // a pair of surrogates
}

TEST(TextCompareTest, IgnoresCaseOnly) {
    EXPECT_TRUE(core::textCompare("Error", "ERROR"));
    EXPECT_FALSE(core::textCompare("Error", "Error "));
    EXPECT_FALSE(core::textCompare("a", "b"));
}

}  // namespace
