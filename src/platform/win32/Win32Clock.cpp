#include "platform/win32/Win32Clock.h"

#include "platform/win32/WindowsApi.h"

namespace platform::win32 {

std::chrono::system_clock::time_point Win32Clock::now() {
    return std::chrono::system_clock::now();
}

// The bias in effect now: the standard or daylight part is added to the zone's own.
int Win32Clock::timeZoneBiasMinutes() {
    TIME_ZONE_INFORMATION zone{};
    switch (::GetTimeZoneInformation(&zone)) {
        case TIME_ZONE_ID_STANDARD:
            return int(zone.Bias + zone.StandardBias);
        case TIME_ZONE_ID_DAYLIGHT:
            return int(zone.Bias + zone.DaylightBias);
        default:
            return int(zone.Bias);
    }
}

void Win32Clock::Sleep(std::uint32_t milliseconds) {
    ::Sleep(milliseconds);
}

}  // namespace platform::win32
