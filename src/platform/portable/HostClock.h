#pragma once
#include "platform/Clock.h"

namespace platform::portable {

// The host's clock and time zone stand for the machine's.
class HostClock final : public Clock {
public:
    std::chrono::system_clock::time_point now() override;
    int timeZoneBiasMinutes() override;
    void Sleep(std::uint32_t milliseconds) override;
};

}  // namespace platform::portable
