#include "platform/portable/HostClock.h"

#include <QDateTime>

namespace platform::portable {

std::chrono::system_clock::time_point HostClock::now() {
    return std::chrono::system_clock::now();
}

int HostClock::timeZoneBiasMinutes() {
    return -QDateTime::currentDateTime().offsetFromUtc() / 60;
}

}  // namespace platform::portable
