#pragma once
#include <QString>

#include "platform/Platform.h"
#include "state/FileHelpers.h"
#include "state/clsList.h"

namespace scan {

// The diagnostic dumps of one detection, in the data folder, each under a name made unique:
// "ignored dump.txt" (the ignore list at the start), "skipped dump.txt" (why candidates were
// dropped) and "results dump.txt" (the work list at the end).
class DetectionDumps {
public:
    DetectionDumps(platform::Platform& platform, state::FileHelpers& files, QString dataFolder);

    void begin(state::clsList& ignoreEntryList);
    // One decision: a single write of the entry, with the write's own line end behind it.
    void write(const QString& entry);
    void finish(state::clsList& detectedProgramList);

private:
    QString uniquePath(const QString& fileName);
    void append(const QString& path, const QString& text);

    platform::Platform& platform_;
    state::FileHelpers& files_;
    QString dataFolder_;
    QString skippedPath_;
};

}  // namespace scan
