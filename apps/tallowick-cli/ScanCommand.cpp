#include <QEventLoop>
#include <QTimer>

#include <csignal>

#include "Cli.h"
#include "ConsoleProgram.h"
#include "ConsoleScanPage.h"
#include "platform/events/SignalEvents.h"
#include "scan/ScanDriver.h"
#include "state/MainWindowView.h"
#include "state/SettingNames.h"

namespace cli {

namespace {

// Lets the tracking queue send what the scan queued, for at most `seconds`.
void drainTracking(state::lst& holder, web::TrackingQueue& queue, int seconds) {
    queue.tmrURL.start();
    const int rounds = seconds * 1000 / 20;
    for (int round = 0; round < rounds && (!holder.lstURLs.isEmpty() || queue.busy()); ++round) {
        QEventLoop wait;
        QTimer::singleShot(20, &wait, &QEventLoop::quit);
        wait.exec();
    }
    queue.tmrURL.stop();
}

}  // namespace

// scan [--server BASE] [--dumps]: a whole scan of the machine, as a silent scan of the program
// runs it, against the update server of the language data (or BASE, "http://host:port").
// Lines, tab-separated: "phase N NAME", "program I N", "update NAME PUBLISHER INSTALLED
// AVAILABLE ADDRESS", "notice FORM TITLE TEXT", "question TEXT Yes", "empty TEXT", and a closing
// summary: "summary state completed|stopped|failed", "summary programs N", "summary updates
// N", "summary scans N", "summary log PATH". --dumps writes the detection's diagnostic dumps.
int scanCommand(Context& context) {
    QStringList arguments = context.arguments();
    const bool dumps = arguments.removeAll(QStringLiteral("--dumps")) > 0;
    QString server;
    if (const qsizetype option = arguments.indexOf(QLatin1String("--server")); option >= 0) {
        server = arguments.value(option + 1);
        arguments.remove(option, qMin<qsizetype>(2, arguments.size() - option));
        if (server.isEmpty()) {
            return kUsage;
        }
    }
    if (!arguments.isEmpty()) {
        return kUsage;
    }
    return withProgram(context, {}, [&](ConsoleProgram& console) {
        shell::Program& program = console.program;
        if (!server.isEmpty()) {
            program.useServer(server);
        }
        ConsoleScanPage page(program.language);
        state::NoMainWindow window;
        program.control.DebugDumps = dumps;
        program.control.unattendedScan = true;
        scan::ScanDriver driver(program.scanParts(page, window));
        page.stop = [&driver] { driver.cmdStopScan_Click(); };
        {
            // Ctrl-C presses the page's Stop button while the scan runs.
            const platform::events::SignalEvents interrupts(
                {SIGINT}, [&page] { page.interrupt(); }, true);
            driver.InitiateScan(true);
        }
        drainTracking(program.holder, program.trackingQueue, 5);

        const QString state = !page.notice().isEmpty()        ? QStringLiteral("failed")
                              : program.control.ScanCancelled ? QStringLiteral("stopped")
                                                              : QStringLiteral("completed");
        const QString scans =
            program.settings.ReadSetting(state::setting::NumberOfScans, QStringLiteral("0"));
        for (const auto& [name, value] : std::initializer_list<std::pair<const char*, QString>>{
                 {"state", state},
                 {"programs", QString::number(page.programs())},
                 {"updates", QString::number(program.results.Count())},
                 {"scans", scans},
                 {"log", program.log.path()}}) {
            Context::out(QStringLiteral("summary\t") + QLatin1String(name) + u'\t' + value);
        }
        if (dumps) {
            Context::err("dumps written to " + program.dataFolder);
        }
        return kOk;
    });
}

}  // namespace cli
