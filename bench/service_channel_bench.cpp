// The command channel with the real service: the round trip of one send, and what the client's
// wait costs the processor while the service is busy elsewhere.
#include <benchmark/benchmark.h>

#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <thread>

#include "QtBenchmarkMain.h"
#include "RunningServiceMachine.h"
#include "core/AnsiText.h"
#include "platform/portable/Machine.h"
#include "service/ServiceControl.h"
#include "state/ProductNames.h"
#include "state/ServiceCommands.h"
#include "state/modServiceCom.h"

namespace {

using platform::portable::Machine;
using state::product::key;

const QString kCommandFile = "C:\\ProgramData\\Tallowick\\Service\\SentData.dat";

double threadCpuSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) + double(now.tv_nsec) / 1e9;
}

// One set of one value, from the write of the file to the read back.
void BM_SendRoundTrip(benchmark::State& state) {
    RunningServiceMachine channel;
    std::vector<double> milliseconds;
    int i = 0;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        channel.program->channel.SendToService(
            state::servicecommand::RegSetString(key(), "Bench", QString::number(++i)));
        benchmark::DoNotOptimize(channel.program->registry.GetStringValue(key(), "Bench"));
        milliseconds.push_back(
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
                .count());
    }
    std::sort(milliseconds.begin(), milliseconds.end());
    state.counters["median_ms"] = milliseconds[milliseconds.size() / 2];
    state.counters["p95_ms"] = milliseconds[milliseconds.size() * 95 / 100];
}
BENCHMARK(BM_SendRoundTrip)->Iterations(300)->Unit(benchmark::kMillisecond);

// A command file that nobody takes for one second: the client waits for it, then sends. The
// service is stopped and an installer is at work, so the send skips the check and waits; a
// second process's view of the machine starts the service after the second.
void BM_WaitCpu(benchmark::State& state) {
    RunningServiceMachine channel;
    auto& platform = channel.machine->platform();
    channel.program->registry.SetStringValue(key(), "Install", "1");
    for (auto _ : state) {
        service::stopProductService(platform);
        channel.program->channel.WriteServiceFile(
            kCommandFile, state::servicecommand::RegSetString(key(), "Held", "1"));
        std::thread starter([&channel] {
            std::this_thread::sleep_for(std::chrono::seconds(1));
            std::string problems;
            const auto other = Machine::open(channel.machine->folder(), &problems);
            service::startProductService(other->platform());
        });
        const auto wallStart = std::chrono::steady_clock::now();
        const double cpuStart = threadCpuSeconds();
        channel.program->channel.SendToService(
            state::servicecommand::RegSetString(key(), "After", "1"));
        const double cpu = threadCpuSeconds() - cpuStart;
        const double wall =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - wallStart).count();
        starter.join();
        state.counters["wait_s"] = wall;
        state.counters["client_cpu_percent"] = 100.0 * cpu / wall;
    }
}
BENCHMARK(BM_WaitCpu)->Iterations(3)->Unit(benchmark::kMillisecond);

}  // namespace

TALLOWICK_QT_BENCHMARK_MAIN()
