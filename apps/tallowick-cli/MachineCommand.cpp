#include "Cli.h"

namespace cli {

// machine init: lays out a fresh machine in the machine folder and prints its facts.
int machineCommand(Context& context) {
    if (context.arguments() != QStringList{"init"}) {
        return kUsage;
    }
    const auto folder = platform::portable::Machine::defaultFolder();
    std::string problems;
    const auto machine =
        platform::portable::Machine::create(folder, platform::portable::MachineFacts{}, &problems);
    if (!machine) {
        Context::err(QString::fromStdString(problems).trimmed());
        return kFailed;
    }
    const auto& facts = machine->facts();
    Context::out("machine=" + QString::fromStdString(folder.string()));
    Context::out("user=" + QString::fromStdString(facts.userName));
    Context::out("computer=" + QString::fromStdString(facts.computerName));
    Context::out(QStringLiteral("os=%1 %2.%3.%4")
                     .arg(facts.os.platform)
                     .arg(facts.os.major)
                     .arg(facts.os.minor)
                     .arg(facts.os.build));
    Context::out(QStringLiteral("locale=%1 %2")
                     .arg(QString::fromStdString(facts.localeAbbreviation))
                     .arg(facts.ansiCodePage));
    return kOk;
}

}  // namespace cli
