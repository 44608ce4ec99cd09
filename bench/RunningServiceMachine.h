#pragma once
#include <QTemporaryDir>

#include <functional>
#include <memory>

#include "platform/portable/Machine.h"
#include "service/ServiceControl.h"
#include "state/DataFolders.h"
#include "state/ProductNames.h"
#include "state/modRegistry.h"
#include "state/modServiceCom.h"

// A machine with the service installed and running, and a client of it. `prepare` sees the
// machine before the service starts. Needs SERVICE_PROGRAM.
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
        registry = std::make_unique<state::modRegistry>(platform);
        registry->CreateKey(state::product::servicesKey());
        registry->SetStringValue(state::product::servicesKey(), "DisplayName",
                                 state::product::serviceName());
        registry->SetStringValue(state::product::servicesKey(), "ImagePath",
                                 "C:\\Program Files\\Tallowick\\Tallo-wickService.exe");
        registry->CreateKey(state::product::key());
        folders = std::make_unique<state::DataFolders>(platform, "C:\\Program Files\\Tallowick",
                                                       "Tallowick");
        client = std::make_unique<state::modServiceCom>(platform, *registry, *folders, gate);
        folders->UpdateFileLocations(*client);
        service::startProductService(platform);
    }
    ~RunningServiceMachine() { service::stopProductService(machine->platform()); }

    QTemporaryDir dir;
    std::unique_ptr<platform::portable::Machine> machine;
    std::unique_ptr<state::modRegistry> registry;
    std::unique_ptr<state::DataFolders> folders;
    NoRecovery gate;
    std::unique_ptr<state::modServiceCom> client;
};
