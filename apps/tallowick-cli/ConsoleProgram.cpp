#include "ConsoleProgram.h"

#include <cstdlib>

#include "service/ServiceControl.h"
#include "state/ProductNames.h"

namespace cli {

void ConsoleServiceGate::ServiceRecovery(bool found) {
    const long status =
        found ? service::startProductService(platform_) : platform::servicestatus::DoesNotExist;
    if (status == platform::status::Success) {
        return;
    }
    Context::err("the service does not run: " + service::controlStatusText(status));
    std::exit(kFailed);
}

void ConsolePages::setScanNowData(int index, const QString& caption) {
    if (index >= 0 && index < 6) {
        captions[index] = caption;
    }
}

ConsoleProgram::ConsoleProgram(platform::portable::Machine& machine)
    : platform(machine.platform()),
      program(platform, state::product::installFolder(), {gate, pages, pages}) {}

int withProgram(Context& context, const ProgramUse& use,
                const std::function<int(ConsoleProgram&)>& work) {
    auto* machine = context.machine();
    if (machine == nullptr) {
        return kFailed;
    }
    ConsoleProgram console(*machine);
    QString message;
    if (use.language && !console.program.start(use.switches, &message)) {
        if (!message.isEmpty()) {
            Context::err(message);
        }
        return kFailed;
    }
    console.program.openDataFolder(use.makeFolders);
    return work(console);
}

}  // namespace cli
