#include <QEventLoop>
#include <QSocketNotifier>
#include <QTimer>

#include <unistd.h>
#include <csignal>

#include "Cli.h"
#include "ConsoleScanPage.h"
#include "ConsoleService.h"
#include "ProgramLists.h"
#include "platform/net/InetControl.h"
#include "scan/ScanDriver.h"
#include "shell/UpdateLookupStart.h"
#include "state/ActivityLog.h"
#include "state/AnsiText.h"
#include "state/clsList.h"
#include "web/Tracking.h"
#include "web/TrackingQueue.h"

namespace cli {

namespace {

// The write end of the pipe that turns Ctrl-C into an event of the message loop.
int interruptPipe[2] = {-1, -1};

void onInterrupt(int) {
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = write(interruptPipe[1], &byte, 1);
    // A second Ctrl-C ends the process as it normally would.
    std::signal(SIGINT, SIG_DFL);
}

// Ctrl-C presses the page's Stop button for as long as the object lives.
class InterruptAsStop {
public:
    explicit InterruptAsStop(ConsoleScanPage& page) {
        if (pipe(interruptPipe) != 0) {
            return;
        }
        notifier_ = std::make_unique<QSocketNotifier>(interruptPipe[0], QSocketNotifier::Read);
        QObject::connect(notifier_.get(), &QSocketNotifier::activated, [&page] {
            char byte = 0;
            [[maybe_unused]] const ssize_t read = ::read(interruptPipe[0], &byte, 1);
            page.interrupt();
        });
        std::signal(SIGINT, onInterrupt);
    }
    ~InterruptAsStop() {
        std::signal(SIGINT, SIG_DFL);
        notifier_.reset();
        for (int& end : interruptPipe) {
            if (end >= 0) {
                close(end);
                end = -1;
            }
        }
    }

private:
    std::unique_ptr<QSocketNotifier> notifier_;
};

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
    return withProgramLists(context, [&](ProgramLists& program) {
        platform::Platform& platform = program.platform;
        if (!server.isEmpty()) {
            program.language.SetCodeString(QStringLiteral("strURL_SH_Corporate"), server);
        }
        ConsoleService service(platform);
        ConsoleScanPage page(program.language);
        bool retry = false;
        web::Tracking tracking(
            service.registry, service.channel, program.holder, program.language,
            web::TrackingFacts{program.state.applicationId, state::product::key(),
                               state::product::ownVersion(), &retry,
                               [&page] { return page.itemsDetected(); }});
        web::TrackingQueue queue(program.holder);
        platform::net::InetControl inet;
        scan::modUpdateCOmponent component(platform, inet);
        shell::PrepareUpdateLookup(component, program.state, platform);
        component.setServerBase(
            program.language.GetStrLocValue(QStringLiteral("strURL_SH_Corporate")));
        const QString logPath = program.dataFolder + state::product::activityLog();
        state::ActivityLog log(platform, program.settings, logPath);
        state::clsList results(platform.messageBox);
        results.InitList(6, scan::DetectionLists::kGrowBy);
        scan::ScanControl control;
        control.DebugDumps = dumps;
        control.unattendedScan = true;

        scan::ScanDriver driver(scan::ScanParts{
            platform, program.settings, service.registry, service.channel, tracking,
            program.language, program.ignore, program.lists, results, component, log, control, page,
            program.state.productName, program.state.programFolder, program.dataFolder});
        page.stop = [&driver] { driver.cmdStopScan_Click(); };
        {
            InterruptAsStop interrupts(page);
            driver.InitiateScan(true);
        }
        drainTracking(program.holder, queue, 5);

        const QString state = !page.notice().isEmpty() ? QStringLiteral("failed")
                              : control.ScanCancelled  ? QStringLiteral("stopped")
                                                       : QStringLiteral("completed");
        const QString scans =
            program.settings.ReadSetting(state::setting::NumberOfScans, QStringLiteral("0"));
        for (const auto& [name, value] : std::initializer_list<std::pair<const char*, QString>>{
                 {"state", state},
                 {"programs", QString::number(page.programs())},
                 {"updates", QString::number(results.Count())},
                 {"scans", scans},
                 {"log", logPath}}) {
            Context::out(QStringLiteral("summary\t") + QLatin1String(name) + u'\t' + value);
        }
        if (dumps) {
            Context::err("dumps written to " + program.dataFolder);
        }
        return kOk;
    });
}

}  // namespace cli
