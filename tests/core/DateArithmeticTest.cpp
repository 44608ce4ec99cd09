#include <gtest/gtest.h>

#include "QtPrinters.h"
#include "core/BasicDate.h"

namespace {

QDateTime at(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    return QDateTime(QDate(year, month, day), QTime(hour, minute, second));
}

constexpr int sunday = 1;
constexpr int monday = 2;

struct DiffCase {
    QString interval;
    QDateTime from;
    QDateTime to;
    qint64 expected;
    int firstDayOfWeek = sunday;
};

class DateDiffTest : public testing::TestWithParam<DiffCase> {};

TEST_P(DateDiffTest, CountsBoundariesCrossed) {
    const DiffCase& c = GetParam();
    EXPECT_EQ(core::dateDiff(c.interval, c.from, c.to, c.firstDayOfWeek), c.expected);
    EXPECT_EQ(core::dateDiff(c.interval, c.to, c.from, c.firstDayOfWeek), -c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, DateDiffTest,
    testing::Values(DiffCase{"n", at(2015, 1, 1, 10, 0, 59), at(2015, 1, 1, 10, 1, 0), 1},
                    DiffCase{"n", at(2015, 1, 1, 10, 0, 0), at(2015, 1, 1, 10, 0, 59), 0},
                    DiffCase{"N", at(2015, 1, 1, 23, 59, 59), at(2015, 1, 2, 0, 0, 0), 1},
                    DiffCase{"n", at(2015, 1, 1), at(2017, 1, 20), 750 * 1440},
                    DiffCase{"n", at(1899, 12, 29, 23, 59), at(1899, 12, 30, 0, 1), 2},
                    DiffCase{"h", at(2015, 1, 1, 10, 59, 59), at(2015, 1, 1, 11, 0, 0), 1},
                    DiffCase{"s", at(2015, 1, 1, 23, 59, 59), at(2015, 1, 2, 0, 0, 1), 2},
                    DiffCase{"d", at(2015, 1, 1, 23, 59), at(2015, 1, 2, 0, 1), 1},
                    DiffCase{"d", at(2015, 1, 1, 0, 0), at(2015, 1, 1, 23, 59), 0},
                    DiffCase{"y", at(2015, 12, 31), at(2016, 1, 1), 1},
                    DiffCase{"d", at(2015, 2, 28), at(2015, 3, 1), 1},
                    DiffCase{"d", at(2016, 2, 28), at(2016, 3, 1), 2},
                    DiffCase{"m", at(2015, 1, 31), at(2015, 2, 1), 1},
                    DiffCase{"m", at(2014, 11, 30), at(2015, 2, 28), 3},
                    DiffCase{"q", at(2015, 3, 31), at(2015, 4, 1), 1},
                    DiffCase{"yyyy", at(2014, 12, 31, 23, 59), at(2015, 1, 1), 1},
                    DiffCase{"w", at(2015, 1, 5), at(2015, 1, 11), 0},
                    DiffCase{"w", at(2015, 1, 5), at(2015, 1, 12), 1},
                    DiffCase{"ww", at(2015, 1, 3), at(2015, 1, 4), 1},
                    DiffCase{"ww", at(2015, 1, 4), at(2015, 1, 10), 0},
                    DiffCase{"ww", at(2015, 1, 4), at(2015, 1, 5), 1, monday},
                    DiffCase{"x", at(2015, 1, 1), at(2016, 1, 1), 0}));

struct AddCase {
    QString interval;
    qint64 count;
    QDateTime date;
    QDateTime expected;
};

class DateAddTest : public testing::TestWithParam<AddCase> {};

TEST_P(DateAddTest, FollowsBasic) {
    const AddCase& c = GetParam();
    EXPECT_EQ(core::dateAdd(c.interval, c.count, c.date), c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, DateAddTest,
    testing::Values(AddCase{"m", 1, at(2015, 1, 31, 9), at(2015, 2, 28, 9)},
                    AddCase{"m", 1, at(2016, 1, 31), at(2016, 2, 29)},
                    AddCase{"m", -1, at(2015, 3, 31), at(2015, 2, 28)},
                    AddCase{"m", 1, at(2015, 2, 28), at(2015, 3, 28)},
                    AddCase{"q", 1, at(2015, 11, 30), at(2016, 2, 29)},
                    AddCase{"yyyy", 1, at(2016, 2, 29), at(2017, 2, 28)},
                    AddCase{"d", 7, at(2015, 12, 28, 11), at(2016, 1, 4, 11)},
                    AddCase{"w", 1, at(2015, 1, 1), at(2015, 1, 2)},
                    AddCase{"ww", -1, at(2015, 1, 1), at(2014, 12, 25)},
                    AddCase{"n", 5, at(2015, 1, 1, 23, 58), at(2015, 1, 2, 0, 3)},
                    AddCase{"h", -1, at(2015, 1, 1, 0, 30), at(2014, 12, 31, 23, 30)},
                    AddCase{"h", 168, at(2015, 1, 1, 10), at(2015, 1, 8, 10)},
                    AddCase{"s", -86401, at(2015, 1, 2), at(2014, 12, 31, 23, 59, 59)},
                    AddCase{"yyyy", 1, at(9999, 6, 1), QDateTime()},
                    AddCase{"d", -1, at(100, 1, 1), QDateTime()},
                    AddCase{"x", 1, at(2015, 1, 1), QDateTime()}));

TEST(WeekdayTest, CountsFromTheFirstDayOfTheWeek) {
    const QDateTime sundayJan4 = at(2015, 1, 4, 12);
    EXPECT_EQ(core::weekday(sundayJan4), 1);
    EXPECT_EQ(core::weekday(sundayJan4, monday), 7);
    EXPECT_EQ(core::weekday(sundayJan4.addDays(1), monday), 1);
    EXPECT_EQ(core::weekday(sundayJan4.addDays(-1)), 7);
    EXPECT_EQ(core::datePart("w", sundayJan4, monday), 7);
}

TEST(DatePartTest, GivesEachPart) {
    const QDateTime value = at(2016, 12, 31, 13, 14, 15);
    EXPECT_EQ(core::datePart("yyyy", value), 2016);
    EXPECT_EQ(core::datePart("q", value), 4);
    EXPECT_EQ(core::datePart("m", value), 12);
    EXPECT_EQ(core::datePart("y", value), 366);
    EXPECT_EQ(core::datePart("d", value), 31);
    EXPECT_EQ(core::datePart("h", value), 13);
    EXPECT_EQ(core::datePart("n", value), 14);
    EXPECT_EQ(core::datePart("s", value), 15);
    EXPECT_EQ(core::datePart("x", value), 0);
}

TEST(DatePartTest, WeekOneHoldsJanuaryFirst) {
    // January 1, 2015 is a Thursday.
    EXPECT_EQ(core::datePart("ww", at(2015, 1, 1)), 1);
    EXPECT_EQ(core::datePart("ww", at(2015, 1, 3)), 1);
    EXPECT_EQ(core::datePart("ww", at(2015, 1, 4)), 2);
    EXPECT_EQ(core::datePart("ww", at(2015, 1, 5), monday), 2);
    EXPECT_EQ(core::datePart("ww", at(2015, 12, 31)), 53);
}

}  // namespace
