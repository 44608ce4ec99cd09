// ReadSetting of one key in a settings file of 200 keys: the INI call reads the file afresh
// each time, as the program relies on.
#include <benchmark/benchmark.h>

#include <QTemporaryDir>

#include "platform/portable/Machine.h"
#include "state/modSettings.h"

namespace {

void BM_ReadSettingOf200Keys(benchmark::State& state) {
    QTemporaryDir dir;
    std::string problems;
    const auto machine = platform::portable::Machine::create(
        dir.path().toStdString() + "/machine", platform::portable::MachineFacts{}, &problems);
    auto& platform = machine->platform();
    std::string text;
    for (int section = 0; section < 5; ++section) {
        text += "[Section" + std::to_string(section) + "]\r\n";
        for (int key = 0; key < 40; ++key) {
            text += "Key" + std::to_string(key) + "=value number " + std::to_string(key) + "\r\n";
        }
    }
    platform.files.MkDir("C:\\ProgramData\\Tallowick");
    platform.files.writeFile("C:\\ProgramData\\Tallowick\\Tallowick.ini", text);
    state::modSettings settings(platform);
    settings.setSettingsPath("C:\\ProgramData\\Tallowick\\Tallowick.ini");
    for (auto _ : state) {
        benchmark::DoNotOptimize(settings.ReadSetting("Section4", "Key39", "0"));
    }
}
BENCHMARK(BM_ReadSettingOf200Keys)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
