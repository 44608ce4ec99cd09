// conformance_service
// The conformance suite's service program: runs as the suite's service until the service
// manager asks it to stop. Exit status 0, 3 when another process already runs the service, 1
// when it could not run as the service.
#include <chrono>
#include <thread>

#include "ConformanceServices.h"

#ifdef _WIN32
#include "platform/win32/Win32Computer.h"
#else
#include "platform/portable/Machine.h"
#endif

int main() {
#ifdef _WIN32
    platform::win32::Win32Computer computer;
    platform::ServiceHost& host = computer.platform().serviceHost;
#else
    const auto machine = platform::portable::Machine::openForProgram("conformance_service");
    if (!machine) {
        return 1;
    }
    platform::ServiceHost& host = machine->platform().serviceHost;
#endif
    const long result =
        host.runService(conformance::kServiceName, [](const std::atomic<bool>& stopRequested) {
            while (!stopRequested) {
                std::this_thread::sleep_for(std::chrono::milliseconds(10));
            }
        });
    if (result == platform::servicestatus::AlreadyRunning) {
        return 3;
    }
    return result == platform::status::Success ? 0 : 1;
}
