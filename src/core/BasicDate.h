#pragma once
#include <QDateTime>
#include <QString>
#include <QtGlobal>

#include <optional>

#include "core/DateFormats.h"

// Basic's date functions on QDateTime. Basic's dates are wall-clock values in whole seconds:
// these functions read and build local date-times by their date and time of day, so a change of
// daylight saving time shifts nothing, and milliseconds are not written.
namespace core {

// Basic's text of a date: the date alone at midnight, the time alone on the zero date,
// otherwise the date, a blank and the time. Empty for an invalid date-time.
QString formatDateTime(const QDateTime& value, const DateFormats& formats);
QString formatDate(const QDateTime& value, const DateFormats& formats);
QString formatTime(const QDateTime& value, const DateFormats& formats);

// Basic's CDate of a text: what formatDateTime, formatDate and formatTime write, and the loose
// forms Basic reads besides: a date alone (midnight), a time alone ("11:00:00 AM", on the zero
// date), "yyyy-mm-dd hh:mm:ss", day and month in the other order when the system's order gives
// no valid date. Nothing for a text that is not a date of the years 100 to 9999; month names and
// dates without a year are not read.
std::optional<QDateTime> cDate(const QString& text, const DateFormats& formats);
bool isDate(const QString& text, const DateFormats& formats);

// The intervals below are Basic's, in any case: "yyyy" year, "q" quarter, "m" month, "y" day of
// the year, "d" day, "w" weekday, "ww" week, "h" hour, "n" minute, "s" second. The first day
// of the week is 1 (Sunday) to 7 (Saturday); Basic's default is Sunday.

// Basic's DateDiff: the boundaries of the interval crossed from `from` to `to`, negative when
// `to` is earlier. So "n" from 10:00:59 to 10:01:00 is 1 and "d" counts midnights; "w" counts
// whole weeks of days, "ww" the first days of weeks. 0 for an interval Basic doesn't know.
qint64 dateDiff(const QString& interval, const QDateTime& from, const QDateTime& to,
                int firstDayOfWeek = 1);

// Basic's DateAdd. Months and years keep the day where the month has it and otherwise end on
// its last day (January 31 plus one month is February 28 or 29); "w" adds days, as in Basic.
// An invalid date-time for an interval Basic doesn't know or a result outside the years 100
// to 9999, where Basic raises an error.
QDateTime dateAdd(const QString& interval, qint64 count, const QDateTime& date);

// Basic's Weekday: 1 for the first day of the week to 7.
int weekday(const QDateTime& date, int firstDayOfWeek = 1);

// Basic's DatePart. Week 1 of "ww" is the week of January 1. 0 for an interval Basic doesn't
// know.
int datePart(const QString& interval, const QDateTime& date, int firstDayOfWeek = 1);

}  // namespace core
