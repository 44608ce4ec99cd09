#pragma once
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

#include "scan/Candidate.h"
#include "state/clsList.h"

namespace scan {

// Decides for each candidate whether it joins the work list: not ignored, not a duplicate of
// a program already accepted (the first one found always wins), and good enough to ask the
// update server about. Every comparison is made on lower-cased text, without trimming.
class ProgramFilter {
public:
    // detected is DetectedProgramList (item exePath, then folder, exeName, name, publisher,
    // version, fileVersion); ignored is IgnoreEntryList (item, name, publisher, location).
    // writeDump, when set, receives each decision's dump entry; scanLog gets a line for each
    // program accepted.
    ProgramFilter(state::clsList& detected, state::clsList& ignored, QStringList& scanLog,
                  std::function<void(const QString&)> writeDump = {});

    // "accepted", or the rule that dropped the candidate: "Ignore 1", "Dupe 1", "Dupe 2",
    // "Dupe 3", "no name", "name unavailable", "Windows driver package", "no publisher",
    // "publisher unavailable", "no version", "no path".
    QString test(const Candidate& candidate);

    // The dump of the ignore list written at scan start, and of the work list after detection.
    static QString ignoredDump(state::clsList& ignored);
    static QString resultsDump(state::clsList& detected);

private:
    // The compared columns of a work-list row, lower-cased once. The rows are still walked in
    // list order, one by one, as the rules ask.
    struct LowerRow {
        QString exePath, folder, name, publisher, version;
    };
    const std::vector<LowerRow>& lowerDetected();
    bool isIgnored(const Candidate& c, const QString& parentOfExe);
    // "Dupe 1", "Dupe 2", "Dupe 3", or empty.
    QString duplicateCase(const Candidate& c);
    void dump(const QString& entry);

    state::clsList& detected_;
    state::clsList& ignored_;
    QStringList& scanLog_;
    std::function<void(const QString&)> writeDump_;
    std::vector<LowerRow> lowerDetected_;
};

}  // namespace scan
