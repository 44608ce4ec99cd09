#include "core/DateFields.h"

#include "core/DateFormats.h"

namespace core::detail {

namespace {

// Two-digit years follow the Windows default window: 00 to 29 are 2000 to 2029, 30 to 99 are
// 1930 to 1999.
int fullYear(int year, int digits) {
    if (digits > 2) {
        return year;
    }
    return year < 30 ? 2000 + year : 1900 + year;
}

std::optional<int> twentyFourHour(int hour, DateFields::Half half) {
    if (half == DateFields::Half::None) {
        return hour;
    }
    if (hour > 12) {
        return std::nullopt;
    }
    return hour % 12 + (half == DateFields::Half::Pm ? 12 : 0);
}

}  // namespace

std::optional<DateFields::Half> readDesignator(const QString& text, qsizetype& at,
                                               const QString& am, const QString& pm) {
    const QStringView rest = QStringView(text).mid(at);
    const auto take = [&at, rest](const QString& designator) {
        if (designator.isEmpty() || !rest.startsWith(designator, Qt::CaseInsensitive)) {
            return false;
        }
        at += designator.size();
        return true;
    };
    const bool amLonger = am.size() >= pm.size();
    if (amLonger && take(am)) {
        return DateFields::Half::Am;
    }
    if (take(pm)) {
        return DateFields::Half::Pm;
    }
    if (take(am)) {
        return DateFields::Half::Am;
    }
    return std::nullopt;
}

std::optional<QDateTime> toDateTime(const DateFields& fields) {
    const bool hasDate = fields.year || fields.month || fields.day;
    if (!hasDate && !fields.hour) {
        return std::nullopt;
    }
    QDate date = zeroDate();
    if (hasDate) {
        if (!fields.year || !fields.month || !fields.day) {
            return std::nullopt;
        }
        date = QDate(fullYear(*fields.year, fields.yearDigits), *fields.month, *fields.day);
        if (!inBasicRange(date)) {
            return std::nullopt;
        }
    }
    QTime time(0, 0);
    if (fields.hour) {
        const std::optional<int> hour = twentyFourHour(*fields.hour, fields.half);
        if (!hour) {
            return std::nullopt;
        }
        time = QTime(*hour, fields.minute, fields.second);
        if (!time.isValid()) {
            return std::nullopt;
        }
    }
    return QDateTime(date, time);
}

}  // namespace core::detail
