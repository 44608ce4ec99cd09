#pragma once
#include <QTemporaryDir>

#include <functional>
#include <memory>

#include "platform/portable/Machine.h"
#include "scan/QuietViews.h"
#include "service/ServiceControl.h"
#include "shell/Program.h"
#include "state/ProductNames.h"
#include "state/modRegistry.h"

// A machine with the service installed and running, and the program on it with its data folder
// made. `prepare` sees the machine before the service starts. Needs SERVICE_PROGRAM.
struct RunningServiceMachine {
    class NoRecovery final : public state::ServiceGate {
    public:
        void ServiceRecovery(bool) override {}
    };

    explicit RunningServiceMachine(
        const std::function<void(platform::portable::Machine&)>& prepare = {}) {
        platform::portable::MachineFacts facts;
        facts.programs["C:\\Program Files\\Tallowick\\Tallo-wickService.exe"] = SERVICE_PROGRAM;
        std::string problems;
        machine = platform::portable::Machine::create(dir.path().toStdString() + "/machine", facts,
                                                      &problems);
        if (prepare) {
            prepare(*machine);
        }
        auto& platform = machine->platform();
        state::modRegistry registry(platform);
        registry.CreateKey(state::product::servicesKey());
        registry.SetStringValue(state::product::servicesKey(), "DisplayName",
                                state::product::serviceName());
        registry.SetStringValue(state::product::servicesKey(), "ImagePath",
                                "C:\\Program Files\\Tallowick\\Tallo-wickService.exe");
        registry.CreateKey(state::product::key());
        program = std::make_unique<shell::Program>(platform, state::product::installFolder(),
                                                   shell::ProgramViews{gate, pages, pages});
        program->openDataFolder(true);
        service::startProductService(platform);
    }
    ~RunningServiceMachine() { service::stopProductService(machine->platform()); }

    QTemporaryDir dir;
    std::unique_ptr<platform::portable::Machine> machine;
    NoRecovery gate;
    scan::QuietListPages pages;
    std::unique_ptr<shell::Program> program;
};
