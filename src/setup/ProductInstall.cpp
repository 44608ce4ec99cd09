#include "setup/ProductInstall.h"

#include <QStringList>

#include <memory>

#include "platform/portable/Machine.h"
#include "platform/portable/ProgramLauncher.h"
#include "service/ServiceControl.h"
#include "setup/DataFiles.h"
#include "setup/ProductRegistration.h"
#include "setup/ProgramMap.h"
#include "state/AnsiText.h"
#include "state/DataFolders.h"
#include "state/ProductNames.h"

namespace setup {

namespace fs = std::filesystem;
using platform::portable::Machine;
namespace product = state::product;

namespace {

QString hostText(const fs::path& path) {
    return QString::fromStdString(path.string());
}

void reportLines(const std::string& text, const std::function<void(const QString&)>& to) {
    for (const QString& line : QString::fromStdString(text).split('\n', Qt::SkipEmptyParts)) {
        to(line);
    }
}

// The machine of the folder; problems with its machine.ini are told and passed over.
std::unique_ptr<Machine> openMachine(const fs::path& folder, const Report& report) {
    std::string problems;
    auto machine = Machine::open(folder, &problems);
    reportLines(problems, report.problem);
    return machine;
}

std::unique_ptr<Machine> openOrCreateMachine(const fs::path& folder, const Report& report) {
    std::string problems;
    if (auto machine = Machine::open(folder, &problems)) {
        reportLines(problems, report.problem);
        report.done("opened machine " + hostText(folder));
        return machine;
    }
    problems.clear();
    auto machine = Machine::create(folder, platform::portable::MachineFacts{}, &problems);
    if (!machine) {
        reportLines(problems, report.problem);
        return nullptr;
    }
    report.done("created machine " + hostText(folder));
    return machine;
}

// The folder of the service's command file, so that the program's first send finds it.
bool makeServiceFolder(platform::Platform& platform, const Report& report) {
    bool fallback = false;
    const QString dataFolder =
        state::locateDataFolder(platform, product::installFolder(), product::name(), &fallback);
    const QString serviceFolder = dataFolder + product::serviceFolder();
    for (const QString& folder : {dataFolder.chopped(1), serviceFolder}) {
        const std::string ansi = state::toAnsi(platform.codePage, folder);
        if (platform.files.FolderExists(ansi)) {
            continue;
        }
        if (!platform.files.MkDir(ansi)) {
            report.problem(folder + ": cannot be made");
            return false;
        }
        report.done("made folder " + folder);
    }
    return true;
}

void startService(Machine& machine, const Report& report) {
    const QString serviceProgram = product::installFolder() + '\\' + product::serviceFile();
    const QString notStarted = "did not start " + product::serviceName() + ": ";
    if (!machine.launcher().hostProgram(serviceProgram.toStdString())) {
        report.done(notStarted + "no program stands for " + serviceProgram);
        return;
    }
    const long status = service::startProductService(machine.platform());
    if (status == platform::status::Success) {
        report.done("started " + product::serviceName());
        return;
    }
    report.done(
        notStarted +
        QStringLiteral("%1 (status %2)").arg(service::controlStatusText(status)).arg(status));
}

bool stopRunningService(platform::Platform& platform, const Report& report) {
    if (service::productServiceState(platform) != service::ServiceState::Running) {
        return true;
    }
    const long status = service::stopProductService(platform);
    if (status != platform::status::Success) {
        report.problem("cannot stop " + product::serviceName() + ": " +
                       service::controlStatusText(status));
        return false;
    }
    report.done("stopped " + product::serviceName());
    return true;
}

bool removeInstallFolder(platform::Platform& platform, const Report& report) {
    const QString folder = product::installFolder();
    const std::string ansiFolder = state::toAnsi(platform.codePage, folder);
    if (!platform.files.FolderExists(ansiFolder)) {
        return true;
    }
    if (!platform.files.DeleteFolder(ansiFolder, true)) {
        report.problem(folder + ": cannot be deleted completely");
        return false;
    }
    report.done("removed folder " + folder);
    return true;
}

}  // namespace

bool install(const SetupOptions& options, const Report& report) {
    auto machine = openOrCreateMachine(options.machineFolder, report);
    if (!machine || !copyDataFiles(*machine, options.dataFolder, report) ||
        !mapPrograms(*machine, options.programsFolder, report)) {
        return false;
    }
    // The mappings are seen only by a machine opened after machine.ini was written; its
    // problems were told at the first opening.
    std::string problems;
    machine = Machine::open(options.machineFolder, &problems);
    if (!machine) {
        reportLines(problems, report.problem);
        return false;
    }
    auto& platform = machine->platform();
    if (!registerService(platform, report) ||
        !writeProductValues(platform, options.values, report) ||
        !writeUninstallEntry(platform, report) || !makeServiceFolder(platform, report)) {
        return false;
    }
    if (options.start) {
        startService(*machine, report);
    } else {
        report.done("left " + product::serviceName() + " stopped (--no-start)");
    }
    return true;
}

bool uninstall(const SetupOptions& options, const Report& report) {
    const auto machine = openMachine(options.machineFolder, report);
    if (!machine) {
        return false;
    }
    bool removedAny = false;
    const Report counting{[&](const QString& line) {
                              removedAny = true;
                              report.done(line);
                          },
                          report.problem};
    auto& platform = machine->platform();
    if (!stopRunningService(platform, counting) || !removeRegistration(platform, counting) ||
        !removeInstallFolder(platform, counting) || !unmapPrograms(*machine, counting)) {
        return false;
    }
    if (!removedAny) {
        report.done(product::name() + " is not installed");
    }
    return true;
}

}  // namespace setup
