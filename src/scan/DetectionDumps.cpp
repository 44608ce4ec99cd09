#include "scan/DetectionDumps.h"

#include "core/AnsiText.h"
#include "scan/ProgramFilter.h"

namespace scan {

DetectionDumps::DetectionDumps(platform::Platform& platform, state::FileHelpers& files,
                               QString dataFolder)
    : platform_(platform), files_(files), dataFolder_(std::move(dataFolder)) {}

QString DetectionDumps::uniquePath(const QString& fileName) {
    QString path = dataFolder_ + fileName;
    files_.UniqueFileName(path);
    return path;
}

void DetectionDumps::append(const QString& path, const QString& text) {
    platform_.files.appendFile(core::toAnsi(platform_.codePage, path),
                               core::toAnsi(platform_.codePage, text));
}

void DetectionDumps::begin(state::clsList& ignoreEntryList) {
    skippedPath_ = uniquePath(QStringLiteral("skipped dump.txt"));
    append(skippedPath_, {});
    append(uniquePath(QStringLiteral("ignored dump.txt")),
           ProgramFilter::ignoredDump(ignoreEntryList));
}

void DetectionDumps::write(const QString& entry) {
    append(skippedPath_, entry + "\r\n");
}

void DetectionDumps::finish(state::clsList& detectedProgramList) {
    append(uniquePath(QStringLiteral("results dump.txt")),
           ProgramFilter::resultsDump(detectedProgramList));
}

}  // namespace scan
