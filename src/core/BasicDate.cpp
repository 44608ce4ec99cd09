#include "core/BasicDate.h"

#include <QStringView>

#include <array>
#include <utility>

#include "core/DatePicture.h"
#include "core/LooseDate.h"

namespace core {

namespace {

enum class Interval { Year, Quarter, Month, DayOfYear, Day, Weekday, Week, Hour, Minute, Second };

std::optional<Interval> intervalNamed(const QString& name) {
    static constexpr std::array<std::pair<QStringView, Interval>, 10> names = {{
        {u"yyyy", Interval::Year},
        {u"q", Interval::Quarter},
        {u"m", Interval::Month},
        {u"y", Interval::DayOfYear},
        {u"d", Interval::Day},
        {u"w", Interval::Weekday},
        {u"ww", Interval::Week},
        {u"h", Interval::Hour},
        {u"n", Interval::Minute},
        {u"s", Interval::Second},
    }};
    for (const auto& [spelling, interval] : names) {
        if (name.compare(spelling, Qt::CaseInsensitive) == 0) {
            return interval;
        }
    }
    return std::nullopt;
}

constexpr qint64 secondsPerDay = 86400;

// Whole seconds: Basic's dates hold no fractions of a second.
QTime wholeSeconds(QTime time) {
    return QTime(time.hour(), time.minute(), time.second());
}

// An out-of-range first day counts as Sunday, Basic's default.
int weekdayOf(QDate date, int firstDayOfWeek) {
    const int first = firstDayOfWeek >= 1 && firstDayOfWeek <= 7 ? firstDayOfWeek : 1;
    const int fromSunday = date.dayOfWeek() % 7 + 1;  // Qt counts Monday 1 to Sunday 7
    return (fromSunday - first + 7) % 7 + 1;
}

QDate weekStart(QDate date, int firstDayOfWeek) {
    return date.addDays(1 - weekdayOf(date, firstDayOfWeek));
}

qint64 dayNumber(const QDateTime& value) {
    return zeroDate().daysTo(value.date());
}

qint64 hourNumber(const QDateTime& value) {
    return dayNumber(value) * 24 + value.time().hour();
}

qint64 minuteNumber(const QDateTime& value) {
    return hourNumber(value) * 60 + value.time().minute();
}

qint64 secondNumber(const QDateTime& value) {
    return minuteNumber(value) * 60 + value.time().second();
}

int quarterOf(QDate date) {
    return (date.month() - 1) / 3 + 1;
}

QDateTime inRangeOrInvalid(QDate date, QTime time) {
    return inBasicRange(date) ? QDateTime(date, time) : QDateTime();
}

}  // namespace

QString formatDate(const QDateTime& value, const DateFormats& formats) {
    return detail::formatWithPicture(value, formats.shortDate, formats);
}

QString formatTime(const QDateTime& value, const DateFormats& formats) {
    return detail::formatWithPicture(value, formats.time, formats);
}

QString formatDateTime(const QDateTime& value, const DateFormats& formats) {
    if (!value.isValid()) {
        return {};
    }
    if (value.date() == zeroDate()) {
        return formatTime(value, formats);
    }
    if (wholeSeconds(value.time()) == QTime(0, 0)) {
        return formatDate(value, formats);
    }
    return formatDate(value, formats) + u' ' + formatTime(value, formats);
}

std::optional<QDateTime> cDate(const QString& text, const DateFormats& formats) {
    for (const QString& picture :
         {formats.shortDate + u' ' + formats.time, formats.shortDate, formats.time}) {
        if (auto value = detail::parseWithPicture(text, picture, formats)) {
            return value;
        }
    }
    return detail::parseLooseDate(text, formats);
}

bool isDate(const QString& text, const DateFormats& formats) {
    return cDate(text, formats).has_value();
}

qint64 dateDiff(const QString& interval, const QDateTime& from, const QDateTime& to,
                int firstDayOfWeek) {
    const std::optional<Interval> unit = intervalNamed(interval);
    if (!unit) {
        return 0;
    }
    const QDate a = from.date();
    const QDate b = to.date();
    switch (*unit) {
        case Interval::Year:
            return b.year() - a.year();
        case Interval::Quarter:
            return (b.year() - a.year()) * 4 + quarterOf(b) - quarterOf(a);
        case Interval::Month:
            return (b.year() - a.year()) * 12 + b.month() - a.month();
        case Interval::DayOfYear:
        case Interval::Day:
            return a.daysTo(b);
        case Interval::Weekday:
            return a.daysTo(b) / 7;
        case Interval::Week:
            return weekStart(a, firstDayOfWeek).daysTo(weekStart(b, firstDayOfWeek)) / 7;
        case Interval::Hour:
            return hourNumber(to) - hourNumber(from);
        case Interval::Minute:
            return minuteNumber(to) - minuteNumber(from);
        case Interval::Second:
            return secondNumber(to) - secondNumber(from);
    }
    return 0;
}

QDateTime dateAdd(const QString& interval, qint64 count, const QDateTime& date) {
    const std::optional<Interval> unit = intervalNamed(interval);
    // No count of any interval beyond this lands within Basic's years.
    constexpr qint64 span = 10000 * 366 * secondsPerDay;
    if (!unit || !date.isValid() || count > span || count < -span) {
        return {};
    }
    const QDate day = date.date();
    const QTime time = date.time();
    qint64 months = 0;
    qint64 seconds = 0;
    switch (*unit) {
        case Interval::Year:
            months = count * 12;
            break;
        case Interval::Quarter:
            months = count * 3;
            break;
        case Interval::Month:
            months = count;
            break;
        case Interval::DayOfYear:
        case Interval::Day:
        case Interval::Weekday:
            return inRangeOrInvalid(day.addDays(count), time);
        case Interval::Week:
            return inRangeOrInvalid(day.addDays(count * 7), time);
        case Interval::Hour:
            seconds = count * 3600;
            break;
        case Interval::Minute:
            seconds = count * 60;
            break;
        case Interval::Second:
            seconds = count;
            break;
    }
    if (months != 0) {
        if (months > 12 * 10000 || months < -12 * 10000) {
            return {};
        }
        return inRangeOrInvalid(day.addMonths(int(months)), time);  // addMonths clamps the day
    }
    const qint64 total = time.msecsSinceStartOfDay() / 1000 + seconds;
    const qint64 days = total / secondsPerDay - (total % secondsPerDay < 0 ? 1 : 0);
    const int secondOfDay = int(total - days * secondsPerDay);
    return inRangeOrInvalid(day.addDays(days),
                            QTime::fromMSecsSinceStartOfDay(secondOfDay * 1000 + time.msec()));
}

int weekday(const QDateTime& date, int firstDayOfWeek) {
    return weekdayOf(date.date(), firstDayOfWeek);
}

int datePart(const QString& interval, const QDateTime& date, int firstDayOfWeek) {
    const QDate day = date.date();
    const QTime time = date.time();
    const std::optional<Interval> unit = intervalNamed(interval);
    if (!unit) {
        return 0;
    }
    switch (*unit) {
        case Interval::Year:
            return day.year();
        case Interval::Quarter:
            return quarterOf(day);
        case Interval::Month:
            return day.month();
        case Interval::DayOfYear:
            return day.dayOfYear();
        case Interval::Day:
            return day.day();
        case Interval::Weekday:
            return weekdayOf(day, firstDayOfWeek);
        case Interval::Week: {
            const int januaryFirst = weekdayOf(QDate(day.year(), 1, 1), firstDayOfWeek);
            return (day.dayOfYear() - 1 + januaryFirst - 1) / 7 + 1;
        }
        case Interval::Hour:
            return time.hour();
        case Interval::Minute:
            return time.minute();
        case Interval::Second:
            return time.second();
    }
    return 0;
}

}  // namespace core
