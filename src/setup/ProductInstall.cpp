#include "setup/ProductInstall.h"

#include <QStringList>

#include "core/AnsiText.h"
#include "service/ServiceControl.h"
#include "setup/ProductRegistration.h"
#include "state/DataFolders.h"
#include "state/ProductNames.h"

namespace setup {

namespace fs = std::filesystem;
namespace product = state::product;

namespace {

// The host programs that stand for the product's executables, by the names they are built
// with.
struct Executable {
    QString file;
    const char* hostProgram;
};

const Executable kExecutables[] = {
    {product::serviceFile(), "Tallo-wickService"},
    {product::starterFile(), "Starter"},
    {product::programFile(), "Tallo-wick"},
};

QString hostText(const fs::path& path) {
    return QString::fromStdString(path.string());
}

bool copyDataFiles(platform::Platform& platform, platform::Installation& installation,
                   const fs::path& dataFolder, const Report& report) {
    std::string problem;
    const long copied = installation.copyFolderIn(
        dataFolder.string(), core::toAnsi(platform.codePage, product::installFolder()), &problem);
    if (copied < 0) {
        report.problem(core::fromAnsi(platform.codePage, problem));
        return false;
    }
    report.done(copied == 0 ? "no data files in " + hostText(dataFolder)
                            : QStringLiteral("copied %1 data files to %2")
                                  .arg(copied)
                                  .arg(product::installFolder()));
    return true;
}

// Each executable of the install folder runs the host program of the same name in
// programsFolder, where there is one.
bool mapPrograms(platform::Platform& platform, platform::Installation& installation,
                 const fs::path& programsFolder, const Report& report) {
    QStringList mapped;
    for (const auto& executable : kExecutables) {
        const QString winPath = product::installFolder() + '\\' + executable.file;
        switch (installation.mapProgram(core::toAnsi(platform.codePage, winPath),
                                        (programsFolder / executable.hostProgram).string())) {
            case platform::Installation::Mapped::Yes:
                mapped << executable.file;
                break;
            case platform::Installation::Mapped::NoHostProgram:
                break;
            case platform::Installation::Mapped::NotWritten:
                report.problem(winPath + ": its program cannot be kept in the machine's facts");
                return false;
        }
    }
    const QString folder = hostText(programsFolder);
    report.done(mapped.isEmpty() ? "mapped no programs: none found in " + folder
                                 : "mapped " + mapped.join(' ') + " to the programs in " + folder);
    return true;
}

bool unmapPrograms(platform::Platform& platform, platform::Installation& installation,
                   const Report& report) {
    const long removed =
        installation.unmapProgramsBelow(core::toAnsi(platform.codePage, product::installFolder()));
    if (removed < 0) {
        report.problem("the program mappings cannot be removed from the machine's facts");
        return false;
    }
    if (removed > 0) {
        report.done(QStringLiteral("removed %1 program mappings").arg(removed));
    }
    return true;
}

// The folder of the service's command file, so that the program's first send finds it.
bool makeServiceFolder(platform::Platform& platform, const Report& report) {
    bool fallback = false;
    const QString dataFolder =
        state::locateDataFolder(platform, product::installFolder(), product::name(), &fallback);
    const QString serviceFolder = dataFolder + product::serviceFolder();
    for (const QString& folder : {dataFolder.chopped(1), serviceFolder}) {
        const std::string ansi = core::toAnsi(platform.codePage, folder);
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

void startService(platform::Platform& platform, const platform::Installation& installation,
                  const Report& report) {
    const QString serviceProgram = product::installFolder() + '\\' + product::serviceFile();
    const QString notStarted = "did not start " + product::serviceName() + ": ";
    if (!installation.runs(core::toAnsi(platform.codePage, serviceProgram))) {
        report.done(notStarted + "no program stands for " + serviceProgram);
        return;
    }
    const long status = service::startProductService(platform);
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
    const std::string ansiFolder = core::toAnsi(platform.codePage, folder);
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

bool install(platform::Platform& platform, platform::Installation& installation,
             const SetupOptions& options, const Report& report) {
    if (!copyDataFiles(platform, installation, options.dataFolder, report) ||
        !mapPrograms(platform, installation, options.programsFolder, report) ||
        !registerService(platform, report) ||
        !writeProductValues(platform, options.values, report) ||
        !writeUninstallEntry(platform, report) || !makeServiceFolder(platform, report)) {
        return false;
    }
    if (options.start) {
        startService(platform, installation, report);
    } else {
        report.done("left " + product::serviceName() + " stopped (--no-start)");
    }
    return true;
}

bool uninstall(platform::Platform& platform, platform::Installation& installation,
               const Report& report) {
    bool removedAny = false;
    const Report counting{[&](const QString& line) {
                              removedAny = true;
                              report.done(line);
                          },
                          report.problem};
    if (!stopRunningService(platform, counting) || !removeRegistration(platform, counting) ||
        !removeInstallFolder(platform, counting) ||
        !unmapPrograms(platform, installation, counting)) {
        return false;
    }
    if (!removedAny) {
        report.done(product::name() + " is not installed");
    }
    return true;
}

}  // namespace setup
