#include <QFileInfo>

#include <optional>

#include "Cli.h"
#include "demo/DemoMachine.h"

namespace cli {

namespace {

struct InitOptions {
    bool demo = false;
    unsigned seed = 1;
    QString catalog = QStringLiteral(TALLOWICK_DATA_DIR "/catalog/winget-index-2025-08-11.csv");
};

// init [--demo [--seed N] [--catalog FILE]]; nothing when the arguments do not fit.
std::optional<InitOptions> parseInit(const QStringList& arguments) {
    if (arguments.value(0) != "init") {
        return std::nullopt;
    }
    InitOptions options;
    bool demoOption = false;
    for (qsizetype i = 1; i < arguments.size(); ++i) {
        const QString& argument = arguments[i];
        bool ok = true;
        if (argument == "--demo") {
            options.demo = true;
        } else if (argument == "--seed" && i + 1 < arguments.size()) {
            options.seed = arguments[++i].toUInt(&ok);
            demoOption = true;
        } else if (argument == "--catalog" && i + 1 < arguments.size()) {
            options.catalog = arguments[++i];
            demoOption = true;
        } else {
            ok = false;
        }
        if (!ok) {
            return std::nullopt;
        }
    }
    if (demoOption && !options.demo) {
        return std::nullopt;
    }
    return options;
}

}  // namespace

// machine init: lays out a fresh machine in the machine folder and prints its facts; with
// --demo it also installs programs of the package catalog.
int machineCommand(Context& context) {
    const auto options = parseInit(context.arguments());
    if (!options) {
        return kUsage;
    }
    // A catalog that can't be read is told before anything is made.
    if (options->demo && !QFileInfo(options->catalog).isReadable()) {
        Context::err(options->catalog + ": the catalog cannot be read");
        return kFailed;
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
    if (!options->demo) {
        return kOk;
    }
    demo::DemoCounts counts;
    if (!demo::populateDemoMachine(*machine, options->catalog.toStdString(), options->seed,
                                   &problems, &counts)) {
        Context::err(QString::fromStdString(problems).trimmed());
        return kFailed;
    }
    Context::out(QStringLiteral("programs=%1").arg(counts.programs));
    Context::out(QStringLiteral("uninstall keys=%1").arg(counts.keys));
    return kOk;
}

}  // namespace cli
