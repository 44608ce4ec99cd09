#pragma once
#include <QDateTime>

#include "core/DateFormats.h"
#include "platform/Platform.h"

namespace state {

// The machine's short date and time formats, as dates are written and read everywhere.
core::DateFormats systemDateFormats(platform::Platform& platform);

// The clock's present moment in local time.
QDateTime LocalNow(platform::Platform& platform);

// Basic's Now as text: the clock's date and time in those formats.
QString NowText(platform::Platform& platform);

}  // namespace state
