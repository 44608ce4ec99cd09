#include "platform/portable/PortableServiceHost.h"

#include <signal.h>

#include <array>
#include <chrono>
#include <thread>

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
    const auto lockFile = ServiceLock::file(machineFolder_, serviceName);
    ServiceLock lock;
    if (!lock.take(lockFile)) {
        return servicestatus::AlreadyRunning;
    }
    // A machine folder that is deleted under a running service (a test's temporary machine)
    // takes the service with it rather than leaving it behind.
    std::atomic<bool> done{false};
    std::thread machineWatch([&] {
        while (!done) {
            std::error_code error;
            if (!std::filesystem::exists(lockFile, error) && !error) {
                stopSignalled = true;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
    });
    body(stopSignalled);
    done = true;
    machineWatch.join();
    return status::Success;
}

}  // namespace platform::portable
