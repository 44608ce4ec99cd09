#include "platform/portable/PortableServiceHost.h"

#include <signal.h>

#include <array>

#include "platform/WinTypes.h"
#include "platform/portable/ServiceLock.h"

namespace platform::portable {

namespace {

std::atomic<bool> stopSignalled{false};
static_assert(std::atomic<bool>::is_always_lock_free);

extern "C" void askToStop(int) {
    stopSignalled = true;
}

constexpr std::array kStopSignals{SIGTERM, SIGINT, SIGHUP};

// Installs the stop handlers for its lifetime. Without SA_RESTART a signal also ends a wait
// in progress.
class StopSignals {
public:
    StopSignals() {
        struct sigaction action {};
        action.sa_handler = askToStop;
        sigemptyset(&action.sa_mask);
        for (size_t i = 0; i < kStopSignals.size(); ++i) {
            sigaction(kStopSignals[i], &action, &previous_[i]);
        }
    }
    ~StopSignals() {
        for (size_t i = 0; i < kStopSignals.size(); ++i) {
            sigaction(kStopSignals[i], &previous_[i], nullptr);
        }
    }

private:
    std::array<struct sigaction, kStopSignals.size()> previous_{};
};

}  // namespace

long PortableServiceHost::runService(const std::string& serviceName,
                                     const std::function<void(const std::atomic<bool>&)>& body) {
    stopSignalled = false;
    StopSignals signals;
    ServiceLock lock;
    if (!lock.take(ServiceLock::file(machineFolder_, serviceName))) {
        return servicestatus::AlreadyRunning;
    }
    body(stopSignalled);
    return status::Success;
}

}  // namespace platform::portable
