// A whole scan of the demo machine (seed 1, about 300 programs on the work list) against the
// real update server with this year's catalog and the real service, as the silent scan runs it.
// Wall and process CPU time per scan, and the share of each phase in counters.
#include <benchmark/benchmark.h>

#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

#include <array>

#include "QtBenchmarkMain.h"
#include "RunningServiceMachine.h"
#include "demo/DemoMachine.h"
#include "platform/portable/Machine.h"
#include "scan/ScanDriver.h"
#include "state/MainWindowView.h"
#include "state/ProductNames.h"

namespace {

using platform::portable::Machine;

// The scan page of nobody: it notes when each phase begins.
class TimingPage final : public scan::QuietScanPage {
public:
    void scanPhase(int phase) override { started[phase - 1] = clock.nsecsElapsed(); }
    void setProgressMaximum(int maximum) override { programs = maximum; }
    void addResult(const scan::ScanResult&) override { ++updates; }
    void showNotice(const QString& formName) override { notice = formName; }

    QElapsedTimer clock;
    std::array<qint64, 4> started{};
    int programs = 0;
    int updates = 0;
    QString notice;
};

// The demo machine with the service running, and the update server on a free port.
struct Rig {
    Rig() {
        const QString database = service.dir.filePath("server.sqlite");
        QProcess::execute(UPDATE_SERVER, {"--database", database, "--import", BENCH_CATALOG});
        server.start(UPDATE_SERVER, {"--database", database, "--port", "0"});
        server.waitForReadyRead(30000);
        base = QString::fromUtf8(server.readLine()).trimmed().section(' ', 2);
    }
    ~Rig() {
        server.terminate();
        server.waitForFinished();
    }

    RunningServiceMachine service{[](Machine& machine) {
        std::string problems;
        demo::populateDemoMachine(machine, BENCH_DEMO_CATALOG, 1, &problems);
    }};
    QProcess server;
    QString base;
};

void BM_Scan(benchmark::State& state) {
    Rig rig;
    shell::Program& program = *rig.service.program;
    program.language.SetLanguageText(
        "[[Code_Strings]]\r\nstrURL_SH_Corporate=" + rig.base +
        "\r\nstrLoc_TW_ReportError=x\r\nstrLoc_TW_SureYouWantToStop=x\r\n"
        "strLoc_TW_UnavailableCapital=Unavailable\r\n; end\r\n");
    program.language.InitCodeStrings();
    program.useServer(rig.base);
    TimingPage page;
    state::NoMainWindow window;
    scan::ScanDriver driver(program.scanParts(page, window));

    std::array<double, 4> phaseMs{};
    for (auto _ : state) {
        page.clock.start();
        driver.InitiateScan(true);
        const qint64 end = page.clock.nsecsElapsed();
        for (int phase = 0; phase < 4; ++phase) {
            const qint64 until = phase < 3 ? page.started[phase + 1] : end;
            phaseMs[phase] += double(until - page.started[phase]) / 1e6;
        }
        program.holder.lstURLs.clear();
    }
    const double runs = double(state.iterations());
    state.counters["preparation_ms"] = phaseMs[0] / runs;
    state.counters["detection_ms"] = phaseMs[1] / runs;
    state.counters["lookups_ms"] = phaseMs[2] / runs;
    state.counters["closing_ms"] = phaseMs[3] / runs;
    state.counters["programs"] = page.programs;
    state.counters["updates"] = double(program.results.Count());
    if (!page.notice.isEmpty()) {
        state.SkipWithError(("the scan ended with " + page.notice).toStdString().c_str());
    }
}
BENCHMARK(BM_Scan)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->MeasureProcessCPUTime()
    ->Iterations(5);

}  // namespace

TALLOWICK_QT_BENCHMARK_MAIN()
