// test_service [service name]
// A service process for tests: runs as the service (default "Test Service") in the machine of
// TALLOWICK_MACHINE until the service manager asks it to stop, then writes
// run/<name>.stopped. Exit status 0, 3 when another process already runs the service, 1 when
// there is no machine.
#include <chrono>
#include <cstdio>
#include <fstream>
#include <string>
#include <thread>

#include "platform/portable/Machine.h"

int main(int argc, char** argv) {
    using platform::portable::Machine;
    const std::string name = argc > 1 ? argv[1] : "Test Service";
    std::string problems;
    const auto machine = Machine::open(Machine::defaultFolder(), &problems);
    if (!machine) {
        std::fprintf(stderr, "test_service: %s", problems.c_str());
        return 1;
    }
    const auto marker = machine->folder() / "run" / (name + ".stopped");
    const long result = machine->platform().serviceHost.runService(
        name, [&marker](const std::atomic<bool>& stopRequested) {
            while (!stopRequested) {
                std::this_thread::sleep_for(std::chrono::milliseconds(10));
            }
            std::ofstream(marker) << "stopped\n";
        });
    if (result == platform::servicestatus::AlreadyRunning) {
        return 3;
    }
    return result == platform::status::Success ? 0 : 1;
}
