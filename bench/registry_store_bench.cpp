// The portable registry's reads: an unchanged store answers from memory after one stat, and
// the first read after another process changed a large store file reads it again.
#include <benchmark/benchmark.h>

#include <QTemporaryDir>

#include <filesystem>
#include <fstream>
#include <string>

#include "platform/portable/PortableCodePage.h"
#include "platform/portable/PortableRegistry.h"

namespace {

using namespace platform;
using platform::portable::PortableCodePage;
using platform::portable::PortableRegistry;

// Uninstall entries of about 600 bytes of UTF-16 text each.
std::string uninstallEntries(int keys) {
    std::string text = "Windows Registry Editor Version 5.00\r\n";
    for (int i = 0; i < keys; ++i) {
        const std::string n = std::to_string(i);
        text +=
            "\r\n[HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\"
            "Program " +
            n +
            "]\r\n"
            "\"DisplayName\"=\"Program number " +
            n +
            "\"\r\n"
            "\"DisplayVersion\"=\"1.2." +
            n +
            "\"\r\n"
            "\"Publisher\"=\"Publisher of program " +
            n +
            "\"\r\n"
            "\"UninstallString\"=\"C:\\\\Program Files\\\\Program " +
            n +
            "\\\\uninstall.exe\"\r\n"
            "\"NoModify\"=dword:00000001\r\n";
    }
    return text;
}

struct Store {
    explicit Store(int keys) {
        const std::filesystem::path file =
            std::filesystem::path(dir.path().toStdString()) / "in.reg";
        std::ofstream(file, std::ios::binary) << uninstallEntries(keys);
        registry.importFile(file.string());
    }
    std::filesystem::path folder() const {
        return std::filesystem::path(dir.path().toStdString()) / "registry";
    }

    QTemporaryDir dir;
    PortableCodePage codePage{1252};
    PortableRegistry registry{std::filesystem::path(dir.path().toStdString()) / "registry",
                              codePage};
};

long readDisplayName(Registry& registry, const std::string& key) {
    RegHandle handle = 0;
    long result = registry.RegOpenKeyExA(hkey::LocalMachine, key, 0, access::KeyRead, &handle);
    if (result != status::Success) {
        return result;
    }
    char buffer[255];
    std::uint32_t size = sizeof buffer;
    result = registry.RegQueryValueExA(handle, "DisplayName", nullptr,
                                       reinterpret_cast<std::uint8_t*>(buffer), &size);
    registry.RegCloseKey(handle);
    return result;
}

const std::string kKey = "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Program 1000";

void BM_ReadOfAnUnchangedStore(benchmark::State& state) {
    Store store(5000);
    for (auto _ : state) {
        benchmark::DoNotOptimize(readDisplayName(store.registry, kKey));
    }
}
BENCHMARK(BM_ReadOfAnUnchangedStore);

// Another store object stands for the other process; its write is not timed. 1,750 entries
// make a store file of about 1 MB.
void BM_FirstReadAfterAnotherProcessWrote(benchmark::State& state) {
    Store store(1750);
    PortableRegistry other(store.folder(), store.codePage);
    RegHandle key = 0;
    other.RegCreateKeyA(hkey::LocalMachine, kKey, &key);
    state.counters["file bytes"] =
        double(std::filesystem::file_size(store.folder() / "HKEY_LOCAL_MACHINE.reg"));
    std::uint32_t counter = 0;
    for (auto _ : state) {
        state.PauseTiming();
        ++counter;
        other.RegSetValueExA(key, "Counter", regtype::Dword,
                             reinterpret_cast<const std::uint8_t*>(&counter), 4);
        state.ResumeTiming();
        benchmark::DoNotOptimize(readDisplayName(store.registry, kKey));
    }
    other.RegCloseKey(key);
}
BENCHMARK(BM_FirstReadAfterAnotherProcessWrote)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
