#include "Cli.h"
#include "ConsoleProgram.h"
#include "core/AnsiText.h"
#include "scan/DetectionDumps.h"
#include "scan/DetectionLists.h"
#include "scan/Discovery.h"
#include "state/FileHelpers.h"

namespace cli {

namespace {

// The English words until the language files are loaded here.
QString englishWord(const QString& name) {
    return name == "strLoc_TW_UnavailableCapital" ? QStringLiteral("Unavailable")
                                                  : QStringLiteral("None");
}

}  // namespace

// programs [--why] [--dumps]: the work list of the machine, one program a line with its seven
// fields separated by tabs (exePath, folder, exeName, name, publisher, version, fileVersion);
// --why prints each key with the rule that dropped it or "accepted"; --dumps writes the
// diagnostic dumps into the data folder.
int programsCommand(Context& context) {
    QStringList options = context.arguments();
    const bool why = options.removeAll("--why") > 0;
    const bool dumps = options.removeAll("--dumps") > 0;
    if (!options.isEmpty()) {
        return kUsage;
    }
    auto* machine = context.machine();
    if (machine == nullptr) {
        return kFailed;
    }
    auto& platform = machine->platform();
    state::modRegistry registry(platform);
    scan::DetectionLists lists(platform.messageBox);
    auto& keys = lists.uninstallKeyList;
    auto& detected = lists.detectedProgramList;
    auto& ignored = lists.ignoreEntryList;
    scan::ScanControl control;
    control.bInProcess = true;
    QStringList log;

    state::FileHelpers files(platform);
    std::unique_ptr<ConsoleProgram> console;
    std::unique_ptr<scan::DetectionDumps> dumpFiles;
    if (dumps) {
        console = std::make_unique<ConsoleProgram>(*machine);
        console->program.openDataFolder(true);
        dumpFiles = std::make_unique<scan::DetectionDumps>(console->platform, files,
                                                           console->program.dataFolder);
        dumpFiles->begin(ignored);
    }
    scan::ProgramFilter filter(detected, ignored, log, [&dumpFiles](const QString& entry) {
        if (dumpFiles) {
            dumpFiles->write(entry);
        }
    });
    scan::Discovery discovery(platform, registry, control, englishWord, keys, filter);
    discovery.run([why](const QString& key, const QString& verdict) {
        if (why) {
            Context::out(verdict + "\t" + key);
        }
    });
    if (dumpFiles) {
        dumpFiles->finish(detected);
        Context::err("dumps written to " + console->program.dataFolder);
    }
    if (!why) {
        for (int i = 0; i < detected.Count(); ++i) {
            QStringList fields{detected.ItemText(i)};
            for (int sub = 1; sub <= 6; ++sub) {
                fields << detected.SubItemText(i, sub);
            }
            Context::out(fields.join('\t'));
        }
    }
    return kOk;
}

}  // namespace cli
