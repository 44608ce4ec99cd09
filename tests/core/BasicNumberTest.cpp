#include "core/BasicNumber.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "QtPrinters.h"

namespace {

TEST(IsNumericTest, FollowsBasic) {
    for (const char* number :
         {"1e3", "1.5E-2", "2D3", "12,5", "1,000.5", " 7 ", "\t7\r\n", "+5", "5-", "- 5", ".5",
          "5.", "&H1F", "&hff", "&O17", "&HFFFFFFFF", "000000000012"}) {
        EXPECT_TRUE(core::isNumeric(number)) << number;
    }
    for (const char* text : {"", "   ", "-", ".", ",", "1.2.3", "1.000,5", "-5-", "2 0", "1e",
                             "1e999", "0 beta", "2c", "v1", "&H", "&O8", "&H100000000", "&X1"}) {
        EXPECT_FALSE(core::isNumeric(text)) << text;
    }
}

TEST(CDblTest, ReadsTheValue) {
    EXPECT_EQ(core::cDbl("12,5"), 125.0);
    EXPECT_EQ(core::cDbl("1e3"), 1000.0);
    EXPECT_EQ(core::cDbl("1.5E-2"), 0.015);
    EXPECT_EQ(core::cDbl(" 5- "), -5.0);
    EXPECT_EQ(core::cDbl("&HFFFFFFFF"), -1.0);
    EXPECT_EQ(core::cDbl("&O17"), 15.0);
    EXPECT_EQ(core::cDbl("1e-999"), 0.0);
    EXPECT_EQ(core::cDbl("x"), std::nullopt);
}

struct CLngCase {
    QString text;
    std::optional<qint32> expected;
};

class CLngTest : public testing::TestWithParam<CLngCase> {};

TEST_P(CLngTest, RoundsToEvenAndOverflows) {
    EXPECT_EQ(core::cLng(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, CLngTest,
    testing::Values(CLngCase{"2.5", 2}, CLngCase{"3.5", 4}, CLngCase{"-2.5", -2},
                    CLngCase{"2.51", 3}, CLngCase{" 10 ", 10}, CLngCase{"1e3", 1000},
                    CLngCase{"2147483647", 2147483647},
                    CLngCase{"-2147483648", std::numeric_limits<qint32>::min()},
                    CLngCase{"2147483648", std::nullopt}, CLngCase{"-2147483649", std::nullopt},
                    CLngCase{"2147483647.5", std::nullopt},
                    CLngCase{"99999999999999999999", std::nullopt}, CLngCase{"", std::nullopt},
                    CLngCase{"abc", std::nullopt}));

struct ValCase {
    QString text;
    double expected;
};

class ValTest : public testing::TestWithParam<ValCase> {};

TEST_P(ValTest, ReadsTheLeadingNumber) {
    EXPECT_DOUBLE_EQ(core::val(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ValTest,
    testing::Values(ValCase{"  12 34abc", 1234}, ValCase{"1.5e2x", 150}, ValCase{"1 d 2", 100},
                    ValCase{"1e", 1}, ValCase{"1e+x", 1}, ValCase{"&H10", 16}, ValCase{"&h1g", 1},
                    ValCase{"&O17", 15}, ValCase{"&HFFFF", -1}, ValCase{"&H10000", 65536},
                    ValCase{"&HFFFFFFFF", -1}, ValCase{"&H100000000", 0}, ValCase{"&", 0},
                    ValCase{"", 0}, ValCase{"abc", 0}, ValCase{"-3.7", -3.7}, ValCase{"- 3", -3},
                    ValCase{"5-", 5}, ValCase{"--5", 0}, ValCase{".5", 0.5}, ValCase{"1,234", 1},
                    ValCase{"1.2.3", 1.2}, ValCase{"12\t3\n4", 1234}, ValCase{"1\r2", 1},
                    ValCase{"TWUS_1_2_3.exe,x", 0}, ValCase{"-9997", -9997}));

TEST(ValTest, ANumberBeyondADoubleIsInfinite) {
    EXPECT_TRUE(std::isinf(core::val("1e999")));
}

}  // namespace
