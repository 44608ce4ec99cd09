#include "platform/portable/HostClock.h"

#include <QDateTime>

#include <thread>

namespace platform::portable {

std::chrono::system_clock::time_point HostClock::now() {
    return std::chrono::system_clock::now();
}

int HostClock::timeZoneBiasMinutes() {
    return -QDateTime::currentDateTime().offsetFromUtc() / 60;
}

void HostClock::Sleep(std::uint32_t milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

}  // namespace platform::portable
