// The privileged service: carries out the commands that the program drops into its command
// file, until the service manager stops it.
#include <QCoreApplication>

#include <cstdio>

#include "core/AnsiText.h"
#include "platform/portable/Machine.h"
#include "service/CommandService.h"
#include "state/ProductNames.h"

int main(int argc, char* argv[]) {
    QCoreApplication application(argc, argv);
    const auto machine = platform::portable::Machine::openForProgram("Tallo-wickService");
    if (!machine) {
        return 1;
    }
    auto& platform = machine->platform();
    service::CommandService service(platform);
    const long status = platform.serviceHost.runService(
        core::toAnsi(platform.codePage, state::product::serviceName()),
        [&service](const std::atomic<bool>& stopRequested) { service.run(stopRequested); });
    if (status != platform::status::Success) {
        std::fprintf(stderr, "Tallo-wickService: not started, status %ld\n", status);
        return 1;
    }
    return 0;
}
