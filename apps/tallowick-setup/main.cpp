// Installs the product on a machine, or takes it off again.
#include <QCoreApplication>

#include <cstdio>

#include "platform/portable/Machine.h"
#include "setup/ProductInstall.h"

namespace {

constexpr const char* kUsage =
    "usage: tallowick-setup install [--machine DIR] [--data DIR] [--no-start] "
    "[--value NAME=DATA]... | uninstall [--machine DIR]\n";

}  // namespace

int main(int argc, char* argv[]) {
    QCoreApplication application(argc, argv);
    setup::SetupOptions defaults;
    defaults.machineFolder = platform::portable::Machine::defaultFolder();
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
    const bool done = options->action == setup::SetupOptions::Action::Install
                          ? setup::install(*options, report)
                          : setup::uninstall(*options, report);
    return done ? 0 : 1;
}
