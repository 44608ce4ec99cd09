#include "service/CommandService.h"

#include "core/AnsiText.h"
#include "service/CommandFile.h"
#include "service/CommandRunner.h"
#include "service/ServiceLog.h"
#include "state/DataFolders.h"
#include "state/ProductNames.h"
#include "state/modRegistry.h"

namespace service {

CommandService::CommandService(platform::Platform& platform) : platform_(platform) {
    const auto& codePage = platform.codePage;
    scope_.programFolder = core::fromAnsi(codePage, platform.environment.programFolder());
    bool fallback = false;
    scope_.dataFolder =
        state::locateDataFolder(platform, scope_.programFolder, state::product::name(), &fallback);
    for (const char* variable : {"TEMP", "TMP"}) {
        if (const auto folder = platform.environment.GetEnvironmentVariableA(variable)) {
            scope_.tempFolders << core::fromAnsi(codePage, *folder);
        }
    }
    // Before the service counts as running, so that no send finds the folder missing. MkDir
    // needs the parent, so a missing data folder stays missing.
    platform.files.MkDir(serviceFolder());
}

std::string CommandService::serviceFolder() const {
    return core::toAnsi(platform_.codePage, scope_.dataFolder + state::product::serviceFolder());
}

void CommandService::run(const std::atomic<bool>& stopRequested) {
    state::modRegistry registry(platform_);
    const CommandPolicy policy(scope_);
    CommandRunner runner(platform_, registry);
    ServiceLog log(platform_, scope_.dataFolder + state::product::serviceLog());
    CommandFile commandFile(platform_, policy, runner, log,
                            scope_.dataFolder + state::product::commandFile());
    const std::string serviceFolder = this->serviceFolder();

    log.write(QStringLiteral("started"));
    std::unique_ptr<platform::ChangeNotification> watch;
    while (!stopRequested) {
        if (!watch) {
            watch = platform_.files.watchFolder(serviceFolder);
        }
        commandFile.take();
        if (watch) {
            watch->wait(kPollMilliseconds);
        } else {
            platform_.clock.Sleep(kPollMilliseconds);
        }
    }
    log.write(QStringLiteral("stopped"));
}

}  // namespace service
