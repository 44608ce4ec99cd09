// The language engine at the sizes it meets: a lookup among 2,000 code strings, loading the
// largest shipped language file, and assembling one language from its sources.
#include <benchmark/benchmark.h>

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <filesystem>

#include "localisation/LanguageAssembler.h"
#include "localisation/LanguageLoader.h"
#include "platform/portable/Machine.h"
#include "platform/portable/WinPath.h"

namespace {

namespace fs = std::filesystem;

struct ScratchMachine {
    ScratchMachine() {
        std::string problems;
        machine = platform::portable::Machine::create(fs::path(dir.path().toStdString()) / "m", {},
                                                      &problems);
    }
    fs::path drive() const { return *machine->paths().existing("C:\\"); }
    QTemporaryDir dir;
    std::unique_ptr<platform::portable::Machine> machine;
};

// 2,000 code strings; every fifth value names the product through the nested form, as real
// files do, and so costs a second lookup.
void BM_GetStrLocValue(benchmark::State& state) {
    constexpr int kCount = 2000;
    QString text = QStringLiteral("[[Code_Strings]]\r\nstrLoc_CS_ProductName_TW=Tallowick\r\n");
    QStringList names;
    for (int i = 0; i < kCount - 1; ++i) {
        const QString name = QStringLiteral("strLoc_TW_Text%1").arg(i);
        names << name;
        text += name +
                (i % 5 == 0 ? QStringLiteral("=Open {strLoc_CS_ProductName_{#AppID}} now")
                            : QStringLiteral("=Some words for the screen, number %1").arg(i)) +
                QStringLiteral("\r\n");
    }
    localisation::LanguageText language(QStringLiteral("TW"));
    language.SetLanguageText(text + QStringLiteral("; end\r\n"));
    language.InitCodeStrings();
    qsizetype next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(language.GetStrLocValue(names[next]));
        next = (next + 7) % names.size();
    }
    if (language.GetStrLocValue(names[0]) != QStringLiteral("Open Tallowick now")) {
        state.SkipWithError("the nested name did not resolve");
    }
}
BENCHMARK(BM_GetStrLocValue);

// InitLanguageText of the largest shipped Language.inx: read, unscramble, decode, and take
// the code strings and menus apart.
void BM_InitLanguageText(benchmark::State& state) {
    QFileInfo largest;
    for (const QFileInfo& folder : QDir(QStringLiteral(BENCH_PROGRAM_DATA_DIR "/localized"))
                                       .entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QFileInfo file(folder.filePath() + QStringLiteral("/Language.inx"));
        if (file.size() > largest.size()) {
            largest = file;
        }
    }
    ScratchMachine scratch;
    const fs::path folder = scratch.drive() / "App" / "localized" / "xx";
    fs::create_directories(folder);
    fs::copy_file(largest.filePath().toStdString(), folder / "Language.inx");
    localisation::LanguageOptions options;
    options.programFolder = QStringLiteral("C:\\App");
    localisation::LanguageText language(QStringLiteral("TW"));
    language.setLanguageId(QStringLiteral("xx"));
    localisation::LanguageLoader loader(scratch.machine->platform(), language, options);
    QString errorText;
    for (auto _ : state) {
        language.SetLoadedLanguage(QString());
        if (!loader.InitLanguageText(errorText)) {
            state.SkipWithError(errorText.toStdString().c_str());
            break;
        }
    }
    state.SetLabel(largest.dir().dirName().toStdString() + ", " +
                   std::to_string(largest.size() / 1024) + " KiB");
}
BENCHMARK(BM_InitLanguageText)->Unit(benchmark::kMillisecond);

// A full assembly of English into the resolved, scrambled file: the scrambled target always
// counts as old, so every run rebuilds.
void BM_AssembleLanguageFile(benchmark::State& state) {
    ScratchMachine scratch;
    fs::create_directories(scratch.drive() / "Dev" / "TW" / "localized" / "en");
    fs::copy(BENCH_LANGUAGE_SOURCES, scratch.drive() / "Dev" / "localized",
             fs::copy_options::recursive);
    localisation::LanguageOptions options;
    options.parentFolder = QStringLiteral("C:\\Dev\\");
    options.production = false;
    options.resolve = true;
    localisation::LanguageText language(QStringLiteral("TW"));
    language.setLanguageId(QStringLiteral("en"));
    QString errorText;
    for (auto _ : state) {
        localisation::LanguageAssembler assembler(scratch.machine->platform(), language, options);
        if (!assembler.AssembleLanguageFile(errorText) || !errorText.isEmpty()) {
            state.SkipWithError(errorText.toStdString().c_str());
            break;
        }
    }
}
BENCHMARK(BM_AssembleLanguageFile)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
