#include "scan/ProgramFilter.h"

#include "core/BasicText.h"
#include "core/PathText.h"

namespace scan {

namespace {

const QString kCrLf = QStringLiteral("\r\n");

QString lc(const QString& text) {
    return core::lcase(text);
}

bool sameNotEmpty(const QString& a, const QString& b) {
    return !a.isEmpty() && !b.isEmpty() && lc(a) == lc(b);
}

QString entryHead(const char* rule, const Candidate& c) {
    return kCrLf + kCrLf + rule + kCrLf + c.name + kCrLf + c.publisher;
}

QString pair(const QString& a, const QString& b) {
    return kCrLf + lc(a) + " = " + lc(b);
}

}  // namespace

ProgramFilter::ProgramFilter(state::clsList& detected, state::clsList& ignored,
                             QStringList& scanLog, std::function<void(const QString&)> writeDump)
    : detected_(detected), ignored_(ignored), scanLog_(scanLog), writeDump_(std::move(writeDump)) {}

void ProgramFilter::dump(const QString& entry) {
    if (writeDump_) {
        writeDump_(entry);
    }
}

bool ProgramFilter::isIgnored(const Candidate& c, const QString& parentOfExe) {
    for (int i = 0; i < ignored_.Count(); ++i) {
        const QString location = ignored_.SubItemText(i, 3);
        const QString rowName = ignored_.SubItemText(i, 1);
        const QString rowPublisher = ignored_.SubItemText(i, 2);
        const QString parentOfLocation = core::GetParentFolderName(location);
        const bool hit = sameNotEmpty(c.exePath, location) || sameNotEmpty(c.folder, location) ||
                         (lc(c.name) == lc(rowName) && lc(c.publisher) == lc(rowPublisher) &&
                          sameNotEmpty(parentOfExe, parentOfLocation));
        if (hit) {
            dump(entryHead("Ignore 1", c) + pair(c.exePath, location) + pair(c.name, rowName) +
                 pair(c.publisher, rowPublisher) + pair(parentOfExe, parentOfLocation));
            return true;
        }
    }
    return false;
}

const std::vector<ProgramFilter::LowerRow>& ProgramFilter::lowerDetected() {
    if (lowerDetected_.size() > size_t(detected_.Count())) {
        lowerDetected_.clear();  // the list was cleared for a new detection
    }
    for (int i = int(lowerDetected_.size()); i < detected_.Count(); ++i) {
        lowerDetected_.push_back({lc(detected_.ItemText(i)), lc(detected_.SubItemText(i, 1)),
                                  lc(detected_.SubItemText(i, 3)), lc(detected_.SubItemText(i, 4)),
                                  lc(detected_.SubItemText(i, 5))});
    }
    return lowerDetected_;
}

QString ProgramFilter::duplicateCase(const Candidate& c) {
    const LowerRow mine{lc(c.exePath), lc(c.folder), lc(c.name), lc(c.publisher), lc(c.version)};
    const auto same = [](const QString& a, const QString& b) {
        return !a.isEmpty() && !b.isEmpty() && a == b;
    };
    const auto& rows = lowerDetected();
    for (const LowerRow& row : rows) {
        if (same(mine.exePath, row.exePath)) {
            dump(entryHead("Dupe 1", c) + pair(c.exePath, row.exePath));
            return QStringLiteral("Dupe 1");
        }
        const bool samePublisher = mine.publisher == row.publisher;
        // Two programs in one folder by one publisher are one when names or versions agree.
        if (same(mine.folder, row.folder) && ((mine.name == row.name && samePublisher) ||
                                              (mine.version == row.version && samePublisher))) {
            dump(entryHead("Dupe 2", c) + pair(c.name, row.name) +
                 pair(c.publisher, row.publisher) + pair(c.version, row.version) +
                 pair(c.publisher, row.publisher));
            return QStringLiteral("Dupe 2");
        }
    }
    // The same product in another folder.
    for (const LowerRow& row : rows) {
        if (same(mine.exePath, row.exePath) ||
            (mine.name == row.name && mine.publisher == row.publisher)) {
            dump(entryHead("Dupe 3", c) + pair(c.exePath, row.exePath) + pair(c.name, row.name) +
                 pair(c.publisher, row.publisher));
            return QStringLiteral("Dupe 3");
        }
    }
    return {};
}

QString ProgramFilter::test(const Candidate& c) {
    // Both tests run, so an ignored duplicate writes both dump entries.
    const bool ignored = isIgnored(c, core::GetParentFolderName(c.exePath));
    const QString duplicate = duplicateCase(c);

    // The English words are compared whatever the language in use.
    QString verdict;
    if (core::trim(c.name).isEmpty()) {
        verdict = "no name";
    } else if (lc(c.name) == "unavailable") {
        verdict = "name unavailable";
    } else if (core::left(lc(c.name), 22) == "windows driver package") {
        verdict = "Windows driver package";
    } else if (core::trim(c.publisher).isEmpty()) {
        verdict = "no publisher";
    } else if (lc(c.publisher) == "unavailable") {
        verdict = "publisher unavailable";
    } else if (core::trim(c.version).isEmpty()) {
        verdict = "no version";
    } else if (ignored) {
        verdict = "Ignore 1";
    } else if (!duplicate.isEmpty()) {
        verdict = duplicate;
    } else if (core::trim(c.exePath).isEmpty() && core::trim(c.folder).isEmpty() &&
               core::trim(c.exeName).isEmpty()) {
        verdict = "no path";
    }
    if (!verdict.isEmpty()) {
        return verdict;
    }

    const int row = detected_.ItemAdd(core::trim(c.exePath)) - 1;
    const QString columns[] = {c.folder, c.exeName, c.name, c.publisher, c.version, c.fileVersion};
    for (int sub = 1; sub <= 6; ++sub) {
        detected_.SubItemSet(row, sub, core::trim(columns[sub - 1]));
    }
    scanLog_.append("   Program detected: " + core::trim(c.name) + " (" + core::trim(c.publisher) +
                    ") " + core::trim(c.version) + " (" + core::trim(c.fileVersion) + "), " +
                    core::trim(c.folder));
    return QStringLiteral("accepted");
}

QString ProgramFilter::ignoredDump(state::clsList& ignored) {
    QString text;
    for (int i = 0; i < ignored.Count(); ++i) {
        text += kCrLf + "\"\" = " + ignored.ItemText(i) + kCrLf +
                "Program name = " + ignored.SubItemText(i, 1) + kCrLf +
                "Publisher = " + ignored.SubItemText(i, 2) + kCrLf +
                "Location = " + ignored.SubItemText(i, 3) + kCrLf;
    }
    return text;
}

QString ProgramFilter::resultsDump(state::clsList& detected) {
    static const char* labels[] = {
        "Folder = ", "Exe = ", "Name = ", "Publisher = ", "Product Version = ", "File Version = "};
    QString text;
    for (int i = 0; i < detected.Count(); ++i) {
        text += kCrLf + "Path = " + detected.ItemText(i) + kCrLf;
        for (int sub = 1; sub <= 6; ++sub) {
            text += labels[sub - 1] + detected.SubItemText(i, sub) + kCrLf;
        }
    }
    return text;
}

}  // namespace scan
