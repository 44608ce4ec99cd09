#include <functional>

#include "Cli.h"
#include "ConsolePages.h"
#include "InstalledLanguage.h"
#include "ProgramSettings.h"
#include "core/BasicText.h"
#include "scan/IgnoreList.h"
#include "scan/ResultsActions.h"
#include "scan/ScanStatistics.h"
#include "state/ActivityLog.h"
#include "state/ProductNames.h"
#include "state/SettingsFiles.h"
#include "state/clsList.h"

namespace cli {

namespace {

// What the ignore and stats commands share: the installed program's language, settings, ignore
// list and statistics, loaded as the program loads them.
struct ProgramLists {
    explicit ProgramLists(platform::Platform& platform)
        : platform(platform), entries(platform.messageBox), settings(platform) {}

    bool open() {
        if (!startInstalledLanguage(platform, QString(), state, language)) {
            return false;
        }
        dataFolder = openProgramSettings(platform, state.programFolder, true, settings);
        files.LoadFiles(dataFolder + state::product::ignoreListFile(), holder.lstIgnoreListFile);
        return true;
    }

    platform::Platform& platform;
    shell::ProcessState state;
    localisation::LanguageText language{state.applicationId};
    state::lst holder;
    state::clsList entries;
    state::modSettings settings;
    QString dataFolder;
    state::SettingsFiles files{platform, dataFolder, holder, state::product::name()};
    ConsolePages pages;
    scan::IgnoreList ignore{holder, entries, files, language, pages};
    scan::ScanStatistics statistics{settings, language, ignore, pages};
};

// Runs `work` on the installed program's lists of the context's machine; 1 when there is
// no machine or no installed program to read.
int withProgramLists(Context& context, const std::function<int(ProgramLists&)>& work) {
    auto* machine = context.machine();
    if (machine == nullptr) {
        return kFailed;
    }
    ProgramLists lists(machine->platform());
    return lists.open() ? work(lists) : kFailed;
}

}  // namespace

// ignore list | ignore add NAME PUBLISHER LOCATION [VERSION] | ignore remove N...: the
// program's ignore list. list prints one entry a line, numbered from 1: number, version,
// name, publisher, location, separated by tabs; add and remove change the list and save it as
// the program does, remove printing the program's message.
int ignoreCommand(Context& context) {
    const QStringList& arguments = context.arguments();
    const QString action = arguments.value(0);
    const bool fits =
        (action == QLatin1String("list") && arguments.size() == 1) ||
        (action == QLatin1String("add") && (arguments.size() == 4 || arguments.size() == 5)) ||
        (action == QLatin1String("remove") && arguments.size() >= 2);
    if (!fits) {
        return kUsage;
    }
    return withProgramLists(context, [&](ProgramLists& lists) {
        if (action == QLatin1String("add")) {
            state::ActivityLog log(lists.platform, lists.settings,
                                   lists.dataFolder + state::product::activityLog());
            scan::IgnoreProgram(lists.holder, log, arguments[1], arguments[2], arguments[3],
                                arguments.value(4));
            lists.files.SaveData();
            return kOk;
        }
        const int count = lists.ignore.LoadIgnoredToList();
        if (action == QLatin1String("remove")) {
            for (const QString& number : arguments.mid(1)) {
                bool ok = false;
                const int row = number.toInt(&ok) - 1;
                if (!ok || row < 0 || row >= count) {
                    Context::err("no entry " + number + " in the ignore list");
                    return kFailed;
                }
                lists.pages.checked.insert(row);
            }
            lists.ignore.cmdDeleteSelected_Click();
            return kOk;
        }
        for (int row = 0; row < count; ++row) {
            Context::out(
                QString::number(row + 1) + u'\t' + basic::trim(lists.entries.ItemText(row)) +
                u'\t' + lists.entries.SubItemText(row, 1) + u'\t' +
                lists.entries.SubItemText(row, 2) + u'\t' + lists.entries.SubItemText(row, 3));
        }
        return kOk;
    });
}

// stats [--reset]: the statistics panel, one name=value line each: lastScan, numberOfScans,
// updatesAvailable, ignored, version, scheduler. --reset first sets the first three back as
// the panel's reset link does.
int statsCommand(Context& context) {
    const QStringList& arguments = context.arguments();
    const bool reset = arguments == QStringList{"--reset"};
    if (!arguments.isEmpty() && !reset) {
        return kUsage;
    }
    return withProgramLists(context, [&](ProgramLists& lists) {
        if (reset) {
            lists.statistics.ResetStatistics();
        }
        lists.statistics.StatusInfoDisplay();
        const char* names[] = {"lastScan", "numberOfScans", "updatesAvailable",
                               "ignored",  "version",       "scheduler"};
        for (int i = 0; i < 6; ++i) {
            Context::out(QString::fromLatin1(names[i]) + u'=' + lists.pages.captions[i].trimmed());
        }
        return kOk;
    });
}

}  // namespace cli
