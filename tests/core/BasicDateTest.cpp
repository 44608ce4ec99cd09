#include "core/BasicDate.h"

#include <gtest/gtest.h>

#include "QtPrinters.h"

namespace {

QDateTime at(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
    return QDateTime(QDate(year, month, day), QTime(hour, minute, second));
}

QDateTime timeOnly(int hour, int minute, int second = 0) {
    return QDateTime(core::zeroDate(), QTime(hour, minute, second));
}

const core::DateFormats american;
const core::DateFormats german{"dd.MM.yyyy", "HH:mm:ss", 2, "", ""};
constexpr int monday = 2;

// Written as Basic's CStr writes, and read back by CDate in the same formats, pictures with
// literal text, dotted times and a leading designator among them.
TEST(BasicDateTest, WritesAsCStrAndReadsBackWhatItWrote) {
    const struct {
        QDateTime value;
        QString american, german;
    } cases[] = {
        {at(2015, 1, 2, 13, 4, 5), "1/2/2015 1:04:05 PM", "02.01.2015 13:04:05"},
        {at(2015, 12, 31, 0, 30), "12/31/2015 12:30:00 AM", "31.12.2015 00:30:00"},
        {at(2016, 2, 29, 12, 0, 1), "2/29/2016 12:00:01 PM", "29.02.2016 12:00:01"},
        {at(2015, 1, 1), "1/1/2015", "01.01.2015"},
        {timeOnly(11, 0), "11:00:00 AM", "11:00:00"},
        {timeOnly(23, 59, 59), "11:59:59 PM", "23:59:59"},
        {timeOnly(0, 0), "12:00:00 AM", "00:00:00"},
    };
    const core::DateFormats others[] = {{"yyyy'年'M'月'd'日'", "H:mm:ss", 1, "午前", "午後"},
                                        {"d.M.yyyy", "H.mm.ss", 2, "ap.", "ip."},
                                        {"yyyy-MM-dd", "tt h:mm:ss", 1, "오전", "오후"}};
    for (const auto& c : cases) {
        EXPECT_EQ(core::formatDateTime(c.value, american), c.american);
        EXPECT_EQ(core::formatDateTime(c.value, german), c.german);
        EXPECT_EQ(core::cDate(c.american, american), c.value);
        EXPECT_EQ(core::cDate(c.german, german), c.value);
        for (const core::DateFormats& formats : others) {
            const QString text = core::formatDateTime(c.value, formats);
            EXPECT_EQ(core::cDate(text, formats), c.value) << text.toStdString();
        }
    }
    EXPECT_EQ(core::formatDateTime(at(2015, 1, 2).addMSecs(600), american), "1/2/2015");
}

TEST(BasicDateTest, CDateReadsLooseFormsAndRefusesWhatIsNoDate) {
    const struct {
        QString text;
        const core::DateFormats& formats;
        QDateTime expected;
    } cases[] = {
        {"1:00:00 AM", american, timeOnly(1, 0)},
        {"12:30 am", american, timeOnly(0, 30)},
        {"11 PM", american, timeOnly(23, 0)},
        {"23:15", american, timeOnly(23, 15)},
        {"11:00:00 AM", german, timeOnly(11, 0)},
        {"2015-01-31 10:11:12", american, at(2015, 1, 31, 10, 11, 12)},
        {"2015-01-31 10:11:12", german, at(2015, 1, 31, 10, 11, 12)},
        {" 1/1/2015 ", american, at(2015, 1, 1)},
        {"01/02/2015", american, at(2015, 1, 2)},
        {"13/1/2015", american, at(2015, 1, 13)},
        {"1/2/2015", german, at(2015, 2, 1)},
        {"2/13/2015", german, at(2015, 2, 13)},
        {"5.1.2015 7:08", german, at(2015, 1, 5, 7, 8)},
        {"1/2/15", american, at(2015, 1, 2)},
        {"1/2/29", american, at(2029, 1, 2)},
        {"1/2/30", american, at(1930, 1, 2)},
        {"1/1/99", german, at(1999, 1, 1)},
        {"1-2-2015", american, at(2015, 1, 2)},
        {"11:00 PM 1/2/2015", american, at(2015, 1, 2, 23, 0)},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(core::cDate(c.text, c.formats), c.expected) << c.text.toStdString();
        EXPECT_TRUE(core::isDate(c.text, c.formats)) << c.text.toStdString();
    }
    for (const char* text :
         {"", "   ", "abc", "42000", "2/31/2015", "0/1/2015", "1/1/99999", "1.2.3.4", "25:00",
          "13:00 PM", "10:60", "11:00:00 AMX", "1/2/2015x", "1/2/20151:00", ".:none:."}) {
        EXPECT_EQ(core::cDate(text, american), std::nullopt) << text;
        EXPECT_FALSE(core::isDate(text, american)) << text;
    }
    EXPECT_FALSE(core::isDate("2/29/2015", german));
}

// The boundaries crossed, the same number negative the other way round.
TEST(BasicDateTest, DateDiffCountsBoundariesCrossed) {
    const struct {
        QString interval;
        QDateTime from, to;
        qint64 expected;
        int firstDayOfWeek = 1;
    } cases[] = {
        {"n", at(2015, 1, 1, 10, 0, 59), at(2015, 1, 1, 10, 1, 0), 1},
        {"n", at(2015, 1, 1, 10, 0, 0), at(2015, 1, 1, 10, 0, 59), 0},
        {"N", at(2015, 1, 1, 23, 59, 59), at(2015, 1, 2, 0, 0, 0), 1},
        {"n", at(2015, 1, 1), at(2017, 1, 20), 750 * 1440},
        {"n", at(1899, 12, 29, 23, 59), at(1899, 12, 30, 0, 1), 2},
        {"h", at(2015, 1, 1, 10, 59, 59), at(2015, 1, 1, 11, 0, 0), 1},
        {"s", at(2015, 1, 1, 23, 59, 59), at(2015, 1, 2, 0, 0, 1), 2},
        {"d", at(2015, 1, 1, 23, 59), at(2015, 1, 2, 0, 1), 1},
        {"d", at(2015, 1, 1, 0, 0), at(2015, 1, 1, 23, 59), 0},
        {"y", at(2015, 12, 31), at(2016, 1, 1), 1},
        {"d", at(2015, 2, 28), at(2015, 3, 1), 1},
        {"d", at(2016, 2, 28), at(2016, 3, 1), 2},
        {"m", at(2015, 1, 31), at(2015, 2, 1), 1},
        {"m", at(2014, 11, 30), at(2015, 2, 28), 3},
        {"q", at(2015, 3, 31), at(2015, 4, 1), 1},
        {"yyyy", at(2014, 12, 31, 23, 59), at(2015, 1, 1), 1},
        {"w", at(2015, 1, 5), at(2015, 1, 11), 0},
        {"w", at(2015, 1, 5), at(2015, 1, 12), 1},
        {"ww", at(2015, 1, 3), at(2015, 1, 4), 1},
        {"ww", at(2015, 1, 4), at(2015, 1, 10), 0},
        {"ww", at(2015, 1, 4), at(2015, 1, 5), 1, monday},
        {"x", at(2015, 1, 1), at(2016, 1, 1), 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.interval.toStdString() + " to " + c.to.toString().toStdString());
        EXPECT_EQ(core::dateDiff(c.interval, c.from, c.to, c.firstDayOfWeek), c.expected);
        EXPECT_EQ(core::dateDiff(c.interval, c.to, c.from, c.firstDayOfWeek), -c.expected);
    }
}

// Months and years end on the month's last day; outside the years 100 to 9999, or for an
// interval Basic doesn't know, the result is invalid.
TEST(BasicDateTest, DateAddFollowsBasic) {
    EXPECT_EQ(core::dateAdd("m", 1, at(2015, 1, 31, 9)), at(2015, 2, 28, 9));
    EXPECT_EQ(core::dateAdd("m", 1, at(2016, 1, 31)), at(2016, 2, 29));
    EXPECT_EQ(core::dateAdd("m", -1, at(2015, 3, 31)), at(2015, 2, 28));
    EXPECT_EQ(core::dateAdd("m", 1, at(2015, 2, 28)), at(2015, 3, 28));
    EXPECT_EQ(core::dateAdd("q", 1, at(2015, 11, 30)), at(2016, 2, 29));
    EXPECT_EQ(core::dateAdd("yyyy", 1, at(2016, 2, 29)), at(2017, 2, 28));
    EXPECT_EQ(core::dateAdd("d", 7, at(2015, 12, 28, 11)), at(2016, 1, 4, 11));
    EXPECT_EQ(core::dateAdd("w", 1, at(2015, 1, 1)), at(2015, 1, 2));
    EXPECT_EQ(core::dateAdd("ww", -1, at(2015, 1, 1)), at(2014, 12, 25));
    EXPECT_EQ(core::dateAdd("n", 5, at(2015, 1, 1, 23, 58)), at(2015, 1, 2, 0, 3));
    EXPECT_EQ(core::dateAdd("h", -1, at(2015, 1, 1, 0, 30)), at(2014, 12, 31, 23, 30));
    EXPECT_EQ(core::dateAdd("h", 168, at(2015, 1, 1, 10)), at(2015, 1, 8, 10));
    EXPECT_EQ(core::dateAdd("s", -86401, at(2015, 1, 2)), at(2014, 12, 31, 23, 59, 59));
    EXPECT_EQ(core::dateAdd("yyyy", 1, at(9999, 6, 1)), QDateTime());
    EXPECT_EQ(core::dateAdd("d", -1, at(100, 1, 1)), QDateTime());
    EXPECT_EQ(core::dateAdd("x", 1, at(2015, 1, 1)), QDateTime());
}

// January 4, 2015 is a Sunday; week 1 of "ww" holds January 1, a Thursday.
TEST(BasicDateTest, WeekdayAndDatePartCountFromTheFirstDayOfTheWeek) {
    const QDateTime sunday = at(2015, 1, 4, 12);
    EXPECT_EQ(core::weekday(sunday), 1);
    EXPECT_EQ(core::weekday(sunday, monday), 7);
    EXPECT_EQ(core::weekday(sunday.addDays(1), monday), 1);
    EXPECT_EQ(core::weekday(sunday.addDays(-1)), 7);
    EXPECT_EQ(core::datePart("w", sunday, monday), 7);
    EXPECT_EQ(core::datePart("ww", at(2015, 1, 3)), 1);
    EXPECT_EQ(core::datePart("ww", sunday), 2);
    EXPECT_EQ(core::datePart("ww", at(2015, 1, 5), monday), 2);
    EXPECT_EQ(core::datePart("ww", at(2015, 12, 31)), 53);
    const std::pair<QString, int> parts[] = {{"yyyy", 2016}, {"q", 4},  {"m", 12},
                                             {"y", 366},     {"d", 31}, {"h", 13},
                                             {"n", 14},      {"s", 15}, {"x", 0}};
    for (const auto& [interval, expected] : parts) {
        EXPECT_EQ(core::datePart(interval, at(2016, 12, 31, 13, 14, 15)), expected)
            << interval.toStdString();
    }
}

}  // namespace
