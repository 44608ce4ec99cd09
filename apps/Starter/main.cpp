// Starts the product's service when it is installed and not running, and exits.
#include <QCoreApplication>

#include <cstdio>

#include "platform/portable/Machine.h"
#include "service/ServiceControl.h"

int main(int argc, char* argv[]) {
    QCoreApplication application(argc, argv);
    const auto machine = platform::portable::Machine::openForProgram("Starter");
    if (!machine) {
        return 1;
    }
    const long status = service::startProductService(machine->platform());
    if (status != platform::status::Success) {
        std::fprintf(stderr, "Starter: %s\n",
                     service::controlStatusText(status).toUtf8().constData());
        return 1;
    }
    return 0;
}
