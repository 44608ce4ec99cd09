#pragma once
#include <QDateTime>
#include <QString>

#include <optional>

#include "core/DateFormats.h"

namespace core::detail {

// Reads a date-time the way Basic's CDate reads text that follows no picture exactly: a date of
// three numbers separated by "/", "-", ".", "," or blanks, a time of numbers separated by ":"
// with an optional designator (the locale's or "AM"/"PM"), or both in either order. A date whose
// first number has three or more digits is year first ("2015-01-31"); otherwise its order is the
// short date's, and when that gives no valid date, day and month change places as Basic's
// reading does ("13/1/2015" is January 13 on a month-first system).
std::optional<QDateTime> parseLooseDate(const QString& text, const DateFormats& formats);

}  // namespace core::detail
