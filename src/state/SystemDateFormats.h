#pragma once
#include "core/DateFormats.h"
#include "platform/Platform.h"

namespace state {

// The machine's short date and time formats, as dates are written and read everywhere.
basic::DateFormats systemDateFormats(platform::Platform& platform);

}  // namespace state
