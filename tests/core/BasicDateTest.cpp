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

struct FormatCase {
    QDateTime value;
    QString american;
    QString german;
};

class FormatDateTimeTest : public testing::TestWithParam<FormatCase> {};

TEST_P(FormatDateTimeTest, WritesAsBasicsCStr) {
    const FormatCase& c = GetParam();
    EXPECT_EQ(core::formatDateTime(c.value, american), c.american);
    EXPECT_EQ(core::formatDateTime(c.value, german), c.german);
}

TEST_P(FormatDateTimeTest, ReadsBackWhatItWrote) {
    const FormatCase& c = GetParam();
    EXPECT_EQ(core::cDate(c.american, american), c.value);
    EXPECT_EQ(core::cDate(c.german, german), c.value);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, FormatDateTimeTest,
    testing::Values(
        FormatCase{at(2015, 1, 2, 13, 4, 5), "1/2/2015 1:04:05 PM", "02.01.2015 13:04:05"},
        FormatCase{at(2015, 12, 31, 0, 30), "12/31/2015 12:30:00 AM", "31.12.2015 00:30:00"},
        FormatCase{at(2016, 2, 29, 12, 0, 1), "2/29/2016 12:00:01 PM", "29.02.2016 12:00:01"},
        FormatCase{at(2015, 1, 1), "1/1/2015", "01.01.2015"},
        FormatCase{timeOnly(11, 0), "11:00:00 AM", "11:00:00"},
        FormatCase{timeOnly(23, 59, 59), "11:59:59 PM", "23:59:59"},
        FormatCase{timeOnly(0, 0), "12:00:00 AM", "00:00:00"}));

TEST(FormatDateTimeTest, DropsMilliseconds) {
    const QDateTime value(QDate(2015, 1, 2), QTime(0, 0, 0, 600));
    EXPECT_EQ(core::formatDateTime(value, american), "1/2/2015");
}

TEST(FormatDateTimeTest, RoundTripsPicturesWithLiteralTextAndDottedTimes) {
    const core::DateFormats japanese{"yyyy'年'M'月'd'日'", "H:mm:ss", 1, "午前", "午後"};
    const core::DateFormats finnish{"d.M.yyyy", "H.mm.ss", 2, "ap.", "ip."};
    const core::DateFormats korean{"yyyy-MM-dd", "tt h:mm:ss", 1, "오전", "오후"};
    for (const core::DateFormats& formats : {japanese, finnish, korean}) {
        for (const QDateTime& value : {at(2015, 3, 9, 21, 5, 7), at(1999, 11, 30)}) {
            const QString text = core::formatDateTime(value, formats);
            EXPECT_EQ(core::cDate(text, formats), value) << text.toStdString();
        }
    }
}

struct ReadCase {
    QString text;
    const core::DateFormats* formats;
    std::optional<QDateTime> expected;
};

class CDateTest : public testing::TestWithParam<ReadCase> {};

TEST_P(CDateTest, ReadsLooseForms) {
    const ReadCase& c = GetParam();
    EXPECT_EQ(core::cDate(c.text, *c.formats), c.expected);
    EXPECT_EQ(core::isDate(c.text, *c.formats), c.expected.has_value());
}

INSTANTIATE_TEST_SUITE_P(
    Dates, CDateTest,
    testing::Values(ReadCase{"1:00:00 AM", &american, timeOnly(1, 0)},
                    ReadCase{"12:30 am", &american, timeOnly(0, 30)},
                    ReadCase{"11 PM", &american, timeOnly(23, 0)},
                    ReadCase{"23:15", &american, timeOnly(23, 15)},
                    ReadCase{"11:00:00 AM", &german, timeOnly(11, 0)},
                    ReadCase{"2015-01-31 10:11:12", &american, at(2015, 1, 31, 10, 11, 12)},
                    ReadCase{"2015-01-31 10:11:12", &german, at(2015, 1, 31, 10, 11, 12)},
                    ReadCase{" 1/1/2015 ", &american, at(2015, 1, 1)},
                    ReadCase{"01/02/2015", &american, at(2015, 1, 2)},
                    ReadCase{"13/1/2015", &american, at(2015, 1, 13)},
                    ReadCase{"1/2/2015", &german, at(2015, 2, 1)},
                    ReadCase{"2/13/2015", &german, at(2015, 2, 13)},
                    ReadCase{"5.1.2015 7:08", &german, at(2015, 1, 5, 7, 8)},
                    ReadCase{"1/2/15", &american, at(2015, 1, 2)},
                    ReadCase{"1/2/29", &american, at(2029, 1, 2)},
                    ReadCase{"1/2/30", &american, at(1930, 1, 2)},
                    ReadCase{"1/1/99", &german, at(1999, 1, 1)},
                    ReadCase{"1-2-2015", &american, at(2015, 1, 2)},
                    ReadCase{"11:00 PM 1/2/2015", &american, at(2015, 1, 2, 23, 0)}));

TEST(CDateTest, RefusesWhatIsNoDate) {
    for (const char* text :
         {"", "   ", "abc", "42000", "2/31/2015", "0/1/2015", "1/1/99999", "1.2.3.4", "25:00",
          "13:00 PM", "10:60", "11:00:00 AMX", "1/2/2015x", "1/2/20151:00", ".:none:."}) {
        EXPECT_EQ(core::cDate(text, american), std::nullopt) << text;
        EXPECT_FALSE(core::isDate(text, american)) << text;
    }
    EXPECT_FALSE(core::isDate("2/29/2015", german));
}

}  // namespace
