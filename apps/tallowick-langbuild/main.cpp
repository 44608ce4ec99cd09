#include <QCoreApplication>
#include <QTemporaryDir>

#include <cstdio>
#include <filesystem>
#include <fstream>

#include "localisation/LanguageBuild.h"
#include "platform/portable/Machine.h"
#include "platform/portable/WinPath.h"

namespace fs = std::filesystem;

// tallowick-langbuild SOURCES OUTPUT ID...: assembles the language sources (the folder that
// holds TW\LanguageLoader.ini and SourceCode\) into OUTPUT/<id>/Language.ini, .inr and .inx,
// with the program's own assembler, on a scratch machine.
int main(int argc, char* argv[]) {
    QCoreApplication application(argc, argv);
    if (argc < 4) {
        std::fputs("usage: tallowick-langbuild SOURCES OUTPUT LANGUAGE_ID...\n", stderr);
        return 2;
    }
    const fs::path sources = argv[1];
    const fs::path output = argv[2];
    QTemporaryDir scratch;
    std::string problems;
    auto machine = platform::portable::Machine::create(
        fs::path(scratch.path().toStdString()) / "machine", {}, &problems);
    if (!machine) {
        std::fprintf(stderr, "tallowick-langbuild: no scratch machine: %s\n", problems.c_str());
        return 1;
    }
    const auto drive = machine->paths().existing("C:\\");
    std::error_code error;
    fs::create_directories(*drive / "Build" / "TW" / "localized", error);
    fs::copy(sources, *drive / "Build" / "localized", fs::copy_options::recursive, error);
    if (error) {
        std::fprintf(stderr, "tallowick-langbuild: %s: %s\n", sources.c_str(),
                     error.message().c_str());
        return 1;
    }
    for (int i = 3; i < argc; ++i) {
        const std::string id = argv[i];
        fs::create_directories(*drive / "Build" / "TW" / "localized" / id);
        QString errorText;
        const auto files = localisation::BuildLanguageFiles(
            machine->platform(), QStringLiteral("C:\\Build\\"), QStringLiteral("TW"),
            QString::fromStdString(id), errorText);
        if (files.empty()) {
            std::fprintf(stderr, "tallowick-langbuild: %s: %s\n", id.c_str(),
                         errorText.toUtf8().constData());
            return 1;
        }
        fs::create_directories(output / id);
        for (const auto& [extension, bytes] : files) {
            std::ofstream(output / id / ("Language." + extension), std::ios::binary) << bytes;
        }
    }
    return 0;
}
