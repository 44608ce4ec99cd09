// GetStringValue as the program calls it (open, query, close, trim) on a store of 5,000
// uninstall-like keys that does not change between reads.
#include <benchmark/benchmark.h>

#include <QTemporaryDir>

#include <fstream>

#include "platform/portable/Machine.h"
#include "state/modRegistry.h"

namespace {

constexpr int kKeys = 5000;

struct Store {
    Store() {
        folder = std::filesystem::path(dir.path().toStdString()) / "machine";
        std::string problems;
        machine = platform::portable::Machine::create(folder, {}, &problems);
        const auto file = std::filesystem::path(dir.path().toStdString()) / "keys.reg";
        {
            std::ofstream out(file, std::ios::binary);
            out << "Windows Registry Editor Version 5.00\r\n";
            for (int i = 0; i < kKeys; ++i) {
                out << "\r\n[HKEY_LOCAL_MACHINE\\Software\\Bench\\Program " << i << "]\r\n"
                    << "\"DisplayName\"=\"Program number " << i << "\"\r\n"
                    << "\"DisplayVersion\"=\"1.2." << i << "\"\r\n"
                    << "\"Publisher\"=\"Maker " << i % 97 << "\"\r\n";
            }
        }
        machine->platform().regEdit.importFile(file.string());
    }
    QTemporaryDir dir;
    std::filesystem::path folder;
    std::unique_ptr<platform::portable::Machine> machine;
};

void BM_GetStringValueUnchangedStore(benchmark::State& state) {
    static Store store;
    state::modRegistry registry(store.machine->platform());
    int i = 0;
    for (auto _ : state) {
        const QString key =
            QStringLiteral("HKEY_LOCAL_MACHINE\\Software\\Bench\\Program %1").arg(i++ % kKeys);
        benchmark::DoNotOptimize(registry.GetStringValue(key, QStringLiteral("DisplayVersion")));
    }
    if (registry.GetStringValue("HKEY_LOCAL_MACHINE\\Software\\Bench\\Program 7",
                                "DisplayVersion") != "1.2.7") {
        state.SkipWithError("the store did not read back");
    }
}
BENCHMARK(BM_GetStringValueUnchangedStore)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
