#include "Cli.h"
#include "ConsoleProgram.h"
#include "core/BasicText.h"
#include "scan/ResultsActions.h"
#include "state/ProductNames.h"

namespace cli {

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
    return withProgram(context, {}, [&](ConsoleProgram& console) {
        shell::Program& program = console.program;
        if (action == QLatin1String("add")) {
            scan::IgnoreProgram(program.holder, program.log, arguments[1], arguments[2],
                                arguments[3], arguments.value(4));
            program.files.SaveData();
            return kOk;
        }
        const int count = program.ignore.LoadIgnoredToList();
        if (action == QLatin1String("remove")) {
            for (const QString& number : arguments.mid(1)) {
                bool ok = false;
                const int row = number.toInt(&ok) - 1;
                if (!ok || row < 0 || row >= count) {
                    Context::err("no entry " + number + " in the ignore list");
                    return kFailed;
                }
                console.pages.checked.insert(row);
            }
            program.ignore.cmdDeleteSelected_Click();
            return kOk;
        }
        state::clsList& entries = program.lists.ignoreEntryList;
        for (int row = 0; row < count; ++row) {
            Context::out(QString::number(row + 1) + u'\t' + core::trim(entries.ItemText(row)) +
                         u'\t' + entries.SubItemText(row, 1) + u'\t' + entries.SubItemText(row, 2) +
                         u'\t' + entries.SubItemText(row, 3));
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
    return withProgram(context, {}, [&](ConsoleProgram& console) {
        if (reset) {
            console.program.statistics.ResetStatistics();
        }
        console.program.statistics.StatusInfoDisplay();
        const char* names[] = {"lastScan", "numberOfScans", "updatesAvailable",
                               "ignored",  "version",       "scheduler"};
        for (int i = 0; i < 6; ++i) {
            Context::out(QString::fromLatin1(names[i]) + u'=' +
                         console.pages.captions[i].trimmed());
        }
        return kOk;
    });
}

}  // namespace cli
