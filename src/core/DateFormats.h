#pragma once
#include <QDate>
#include <QString>

namespace core {

// The system's date and time formats, read by the caller from the locale. The pictures use the
// Windows notation: d, dd, M, MM, y, yy, yyyy for the date; h, hh (12-hour clock), H, HH (24-hour
// clock), m, mm, s, ss and t, tt (the designators) for the time; text in single quotes, and any
// other character, stands for itself. The defaults are those of an American system.
struct DateFormats {
    QString shortDate = QStringLiteral("M/d/yyyy");
    QString time = QStringLiteral("h:mm:ss tt");
    int firstDayOfWeek = 1;  // 1 = Sunday .. 7 = Saturday, as Basic's vbSunday .. vbSaturday
    QString am = QStringLiteral("AM");
    QString pm = QStringLiteral("PM");
};

// Basic's day 0: a date-time on this day stands for a time of day alone.
inline QDate zeroDate() {
    return QDate(1899, 12, 30);
}

// Basic's dates run from the year 100 to the year 9999.
inline bool inBasicRange(QDate date) {
    return date.isValid() && date.year() >= 100 && date.year() <= 9999;
}

}  // namespace core
