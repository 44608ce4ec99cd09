#pragma once
#include <chrono>
#include <cstdint>

namespace platform {

// The computer's clock and time zone.
class Clock {
public:
    virtual ~Clock() = default;
    virtual std::chrono::system_clock::time_point now() = 0;
    // Minutes to add to local time to get UTC, as Windows reports the time-zone bias
    // (-60 for Central European winter time).
    virtual int timeZoneBiasMinutes() = 0;
    // Sleep: gives up the processor for that long.
    virtual void Sleep(std::uint32_t milliseconds) = 0;
};

}  // namespace platform
