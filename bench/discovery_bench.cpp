// Discovery and filtering of a machine with 1,000 uninstall keys, each run from a cold store
// (the machine opened anew, so the registry files are read again). Three runs split the time
// into its phases: the walk alone, the walk and the reading of each key, and everything with
// the filter.
#include <benchmark/benchmark.h>

#include <QFile>
#include <QTemporaryDir>

#include <fstream>

#include "platform/portable/Machine.h"
#include "platform/portable/WinPath.h"
#include "scan/DetectionLists.h"
#include "scan/Discovery.h"
#include "scan/UninstallKeyReader.h"
#include "scan/modRegScan.h"

namespace {

constexpr int kPrograms = 1000;

struct Fixture {
    Fixture() {
        folder = std::filesystem::path(dir.path().toStdString()) / "machine";
        std::string problems;
        auto machine = platform::portable::Machine::create(folder, {}, &problems);
        const auto file = std::filesystem::path(dir.path().toStdString()) / "keys.reg";
        std::ofstream out(file, std::ios::binary);
        out << "Windows Registry Editor Version 5.00\r\n";
        for (int i = 0; i < kPrograms; ++i) {
            const std::string program = "C:\\\\Program Files\\\\Maker " + std::to_string(i % 50) +
                                        "\\\\Program " + std::to_string(i);
            out << "\r\n[HKEY_LOCAL_"
                   "MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\"
                << "Program " << i << "]\r\n"
                << "\"DisplayName\"=\"Program " << i << "\"\r\n"
                << "\"DisplayVersion\"=\"1." << i << "\"\r\n"
                << "\"Publisher\"=\"Maker " << i % 50 << "\"\r\n"
                << "\"DisplayIcon\"=\"" << program << "\\\\program.exe,0\"\r\n"
                << "\"InstallLocation\"=\"" << program << "\\\\\"\r\n"
                << "\"UninstallString\"=\"\\\"" << program << "\\\\unins000.exe\\\" /S\"\r\n";
            const std::string winPath = "C:\\Program Files\\Maker " + std::to_string(i % 50) +
                                        "\\Program " + std::to_string(i) + "\\program.exe";
            machine->paths().createFolders(platform::GetParentFolderName(winPath));
            // One program in ten has its executable, with a real version block.
            if (i % 10 == 0) {
                QFile::copy(BENCH_PE_FILE,
                            QString::fromStdString(machine->paths().target(winPath)->string()));
            }
        }
        out.close();
        machine->platform().regEdit.importFile(file.string());
    }
    QTemporaryDir dir;
    std::filesystem::path folder;
};

Fixture& fixture() {
    static Fixture instance;
    return instance;
}

enum class Phases { Walk, WalkAndRead, All };

void run(benchmark::State& state, Phases phases) {
    int accepted = 0;
    for (auto _ : state) {
        std::string problems;
        auto machine = platform::portable::Machine::open(fixture().folder, &problems);
        auto& platform = machine->platform();
        state::modRegistry registry(platform);
        scan::DetectionLists lists(platform.messageBox);
        auto& keys = lists.uninstallKeyList;
        auto& detected = lists.detectedProgramList;
        auto& ignored = lists.ignoreEntryList;
        scan::ScanControl control;
        control.bInProcess = true;
        QStringList log;
        const scan::StringLookup words = [](const QString&) { return QString(); };
        scan::ProgramFilter filter(detected, ignored, log);
        if (phases == Phases::All) {
            scan::Discovery(platform, registry, control, words, keys, filter).run();
            accepted = detected.Count();
            continue;
        }
        scan::modRegScan(platform, control, keys)
            .DoEnumSubKeys(platform::hkey::LocalMachine,
                           "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall",
                           "HKEY_LOCAL_MACHINE", false);
        if (phases == Phases::WalkAndRead) {
            scan::VersionInfoReader versions(platform.versionInfo, platform.codePage);
            scan::UninstallKeyReader reader(platform, registry, versions, words);
            for (int row = 0; row < keys.Count(); ++row) {
                benchmark::DoNotOptimize(reader.read(keys.ItemText(row)));
            }
        }
    }
    state.counters["accepted"] = accepted;
}

void BM_Walk(benchmark::State& state) {
    run(state, Phases::Walk);
}
void BM_WalkAndRead(benchmark::State& state) {
    run(state, Phases::WalkAndRead);
}
void BM_DiscoveryAndFiltering(benchmark::State& state) {
    run(state, Phases::All);
}
BENCHMARK(BM_Walk)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WalkAndRead)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DiscoveryAndFiltering)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
