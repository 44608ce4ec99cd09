// ReadUTF8File as the program loads a language file: a scrambled file of about 300 KB of
// "name=text" lines, read, unscrambled and decoded on each iteration.
#include <benchmark/benchmark.h>

#include <QTemporaryDir>

#include "localisation/modUTF8_FileIO.h"
#include "platform/portable/Machine.h"

namespace {

constexpr qsizetype kFileSize = 300 * 1024;
const QString kPath = QStringLiteral("C:\\Program Files\\Tallowick\\Language\\German.lng");

struct LanguageFile {
    LanguageFile() {
        std::string problems;
        machine = platform::portable::Machine::create(
            std::filesystem::path(dir.path().toStdString()) / "machine", {}, &problems);
        auto& files = machine->platform().files;
        files.MkDir("C:\\Program Files\\Tallowick");
        files.MkDir("C:\\Program Files\\Tallowick\\Language");
        for (int i = 0; text.size() < kFileSize; ++i) {
            text += QStringLiteral("strLoc_TW_Something%1=Some text with ümlauts, Grüße Nr. %1\r\n")
                        .arg(i);
        }
        localisation::modUTF8_FileIO io(machine->platform());
        QString errorText;
        written = io.WriteUTF8File(kPath, text, errorText, true);
    }
    QTemporaryDir dir;
    std::unique_ptr<platform::portable::Machine> machine;
    QString text;
    bool written = false;
};

void BM_ReadScrambledLanguageFile(benchmark::State& state) {
    static LanguageFile file;
    if (!file.written) {
        state.SkipWithError("the language file was not written");
        return;
    }
    localisation::modUTF8_FileIO io(file.machine->platform());
    QString text;
    QString errorText;
    for (auto _ : state) {
        benchmark::DoNotOptimize(io.ReadUTF8File(kPath, text, errorText, false, false, true));
    }
    if (text != file.text) {
        state.SkipWithError("the file did not read back");
    }
    state.SetBytesProcessed(state.iterations() * file.text.toUtf8().size());
}
BENCHMARK(BM_ReadScrambledLanguageFile)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
