#pragma once
#include "platform/Clock.h"

namespace platform::win32 {

class Win32Clock final : public Clock {
public:
    std::chrono::system_clock::time_point now() override;
    int timeZoneBiasMinutes() override;
    void Sleep(std::uint32_t milliseconds) override;
};

}  // namespace platform::win32
