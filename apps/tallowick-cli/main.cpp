#include <QCoreApplication>

#include "Cli.h"

namespace {

constexpr const char* kUsage =
    "usage: tallowick-cli machine init [--demo [--seed N] [--catalog FILE]] | "
    "reg get KEY VALUE | reg dword KEY VALUE | "
    "reg set KEY VALUE DATA | reg import FILE.reg | reg export KEY | verinfo FILE... | "
    "programs [--why] [--dumps] | args \"COMMAND LINE\" | "
    "service status|start|stop | service send COMMAND... | "
    "settings get SECTION KEY [DEFAULT] | settings set SECTION KEY VALUE | "
    "settings delete SECTION KEY | lang get NAME [--language ID] | "
    "compare [INSTALLED AVAILABLE] | lookup NAME PUBLISHER VERSION [FILEVERSION] [--server BASE] | "
    "ignore list | ignore add NAME PUBLISHER LOCATION [VERSION] | ignore remove N... | "
    "stats [--reset] | scan [--server BASE] [--dumps]";

}  // namespace

int main(int argc, char* argv[]) {
    QCoreApplication application(argc, argv);
    QStringList arguments = application.arguments().mid(1);
    const QString command = arguments.value(0);
    cli::Context context(arguments.mid(1));

    int status = cli::kUsage;
    if (command == "machine") {
        status = cli::machineCommand(context);
    } else if (command == "reg") {
        status = cli::regCommand(context);
    } else if (command == "verinfo") {
        status = cli::verinfoCommand(context);
    } else if (command == "programs") {
        status = cli::programsCommand(context);
    } else if (command == "service") {
        status = cli::serviceCommand(context);
    } else if (command == "settings") {
        status = cli::settingsCommand(context);
    } else if (command == "lang") {
        status = cli::langCommand(context);
    } else if (command == "ignore") {
        status = cli::ignoreCommand(context);
    } else if (command == "stats") {
        status = cli::statsCommand(context);
    } else if (command == "scan") {
        status = cli::scanCommand(context);
    } else if (command == "lookup") {
        status = cli::lookupCommand(context);
    } else if (command == "compare") {
        status = cli::compareCommand(context);
    } else if (command == "args") {
        status = cli::argsCommand(context);
    }
    if (status == cli::kUsage) {
        std::fputs(kUsage, stderr);
        std::fputs("\n", stderr);
    }
    return status;
}
