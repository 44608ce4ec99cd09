// Installs the product on a machine, or takes it off again.
#include <QCoreApplication>

#include <cstdio>

#include "platform/portable/Machine.h"
#include "setup/ProductInstall.h"

namespace {

using platform::portable::Machine;

constexpr const char* kUsage =
    "usage: tallowick-setup install [--machine DIR] [--data DIR] [--no-start] "
    "[--value NAME=DATA]... | uninstall [--machine DIR]\n";

void tell(const std::string& problems, const setup::Report& report) {
    for (const QString& line : QString::fromStdString(problems).split('\n', Qt::SkipEmptyParts)) {
        report.problem(line);
    }
}

// The machine of the folder, laid out first for an install when there is none; problems with
// its machine.ini are told and passed over.
std::unique_ptr<Machine> openMachine(const setup::SetupOptions& options,
                                     const setup::Report& report) {
    const QString folder = QString::fromStdString(options.machineFolder.string());
    std::string problems;
    if (auto machine = Machine::open(options.machineFolder, &problems)) {
        tell(problems, report);
        if (options.action == setup::SetupOptions::Action::Install) {
            report.done("opened machine " + folder);
        }
        return machine;
    }
    if (options.action == setup::SetupOptions::Action::Uninstall) {
        tell(problems, report);
        return nullptr;
    }
    problems.clear();
    auto machine = Machine::create(options.machineFolder, {}, &problems);
    tell(problems, report);
    if (machine) {
        report.done("created machine " + folder);
    }
    return machine;
}

}  // namespace

int main(int argc, char* argv[]) {
    QCoreApplication application(argc, argv);
    setup::SetupOptions defaults;
    defaults.machineFolder = Machine::defaultFolder();
    defaults.dataFolder = TALLOWICK_DATA_DIR;
    // The service, the starter and the program are built beside the installer.
    defaults.programsFolder = QCoreApplication::applicationDirPath().toStdString();
    const auto options = setup::parseSetupOptions(application.arguments().mid(1), defaults);
    if (!options) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    const setup::Report report{
        [](const QString& line) { std::fputs((line + '\n').toUtf8().constData(), stdout); },
        [](const QString& line) {
            std::fputs(("tallowick-setup: " + line + '\n').toUtf8().constData(), stderr);
        }};
    const auto machine = openMachine(*options, report);
    if (!machine) {
        return 1;
    }
    const bool done =
        options->action == setup::SetupOptions::Action::Install
            ? setup::install(machine->platform(), machine->installation(), *options, report)
            : setup::uninstall(machine->platform(), machine->installation(), report);
    return done ? 0 : 1;
}
