#pragma once
#include <gtest/gtest.h>

#include "service/ServiceControl.h"
#include "state/DataFolders.h"
#include "state/modRegistry.h"
#include "state/modServiceCom.h"
#include "support/ProgramRun.h"
#include "support/ServiceMachine.h"

namespace testing_support {

// The program's side of a machine whose service runs from the start to the end of a test:
// the registry layer, the data folders and the channel to the service, which Starter has
// started. Needs SERVICE_PROGRAM and STARTER_PROGRAM, and the service and state libraries.
struct RunningService {
    // The service runs throughout, so the start-up forms are never asked to recover it.
    class UnusedGate final : public state::ServiceGate {
    public:
        void ServiceRecovery(bool) override { ADD_FAILURE() << "the service was not running"; }
    };

    explicit RunningService(platform::MessageBox* box = nullptr) : machine(box) {
        folders.UpdateFileLocations(channel);
        EXPECT_EQ(runProgram(STARTER_PROGRAM, {}, QString::fromStdString(machine.folder().string()))
                      .status,
                  0);
    }
    ~RunningService() { service::stopProductService(platform); }

    ServiceMachine machine;
    platform::Platform& platform = machine.platform();
    state::modRegistry registry{platform};
    state::DataFolders folders{platform, "C:\\Program Files\\Tallowick", "Tallowick"};
    UnusedGate gate;
    state::modServiceCom channel{platform, registry, folders, gate};
};

}  // namespace testing_support
