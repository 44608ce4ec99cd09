#pragma once
#include <gtest/gtest.h>

#include "scan/QuietViews.h"
#include "service/ServiceControl.h"
#include "shell/Program.h"
#include "support/ProgramRun.h"
#include "support/RecordingMessageBox.h"
#include "support/ServiceMachine.h"

namespace testing_support {

// The program on a machine whose service runs from the start to the end of a test, with its
// data folder made: shell::Program as the desktop program has it, its boxes answered by `box`,
// its ignore page and statistics panel `pages`. Starter has started the service. Needs
// SERVICE_PROGRAM and STARTER_PROGRAM, and the shell library.
struct RunningService {
    // The service runs throughout, so the start-up forms are never asked to recover it.
    class UnusedGate final : public state::ServiceGate {
    public:
        void ServiceRecovery(bool) override { ADD_FAILURE() << "the service was not running"; }
    };

    explicit RunningService(scan::IgnorePageView* ignorePage = nullptr,
                            scan::StatisticsPanelView* statisticsPanel = nullptr)
        : program(platform, "C:\\Program Files\\Tallowick",
                  {gate, ignorePage != nullptr ? *ignorePage : quietPages,
                   statisticsPanel != nullptr ? *statisticsPanel : quietPages}) {
        program.openDataFolder(true);
        EXPECT_EQ(runProgram(STARTER_PROGRAM, {}, QString::fromStdString(machine.folder().string()))
                      .status,
                  0);
    }
    ~RunningService() { service::stopProductService(platform); }

    RecordingMessageBox box;
    ServiceMachine machine{&box};
    platform::Platform& platform = machine.platform();
    UnusedGate gate;
    scan::QuietListPages quietPages;
    shell::Program program;
    state::modRegistry& registry = program.registry;
    state::modServiceCom& channel = program.channel;
};

}  // namespace testing_support
