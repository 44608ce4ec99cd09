#include "setup/ProgramMap.h"

#include <QFileInfo>
#include <QStringList>

#include <iterator>
#include <optional>

#include "platform/portable/WinPath.h"
#include "state/ProductNames.h"

namespace setup {

namespace fs = std::filesystem;
using platform::portable::MachineFacts;
using platform::portable::WinPath;

namespace {

struct Executable {
    QString file;
    const char* hostProgram;
};

const Executable kExecutables[] = {
    {state::product::serviceFile(), "Tallo-wickService"},
    {state::product::starterFile(), "Starter"},
    {state::product::programFile(), "Tallo-wick"},
};

// Paths of [Programs] compared as Windows compares them: element by element, without regard
// to case, whatever the separators and spelling.
class PathMatcher {
public:
    explicit PathMatcher(const platform::CodePage& codePage) : codePage_(codePage) {}

    std::optional<WinPath::Parsed> parse(const QString& winPath) const {
        return WinPath::parse(codePage_.toAnsi(winPath.toStdU16String()));
    }
    // True when path is folder itself (or, with below, an entry somewhere under it).
    bool matches(const QString& path, const WinPath::Parsed& folder, bool below) const {
        const auto parsed = parse(path);
        if (!parsed || parsed->drive != folder.drive ||
            (below ? parsed->elements.size() <= folder.elements.size()
                   : parsed->elements.size() != folder.elements.size())) {
            return false;
        }
        for (size_t i = 0; i < folder.elements.size(); ++i) {
            if (text(parsed->elements[i]).compare(text(folder.elements[i]), Qt::CaseInsensitive) !=
                0) {
                return false;
            }
        }
        return true;
    }

private:
    QString text(const std::string& ansi) const {
        return QString::fromStdU16String(codePage_.toWide(ansi));
    }
    const platform::CodePage& codePage_;
};

// Drops every mapping that matches; how many there were.
int removeMappings(MachineFacts& facts, const PathMatcher& matcher, const WinPath::Parsed& path,
                   bool below) {
    int removed = 0;
    for (auto entry = facts.programs.begin(); entry != facts.programs.end();) {
        if (matcher.matches(QString::fromStdString(entry->first), path, below)) {
            entry = facts.programs.erase(entry);
            ++removed;
        } else {
            ++entry;
        }
    }
    return removed;
}

bool writeFacts(const platform::portable::Machine& machine, const MachineFacts& facts,
                const Report& report) {
    const fs::path file = machine.folder() / "machine.ini";
    if (!facts.write(file)) {
        report.problem(QString::fromStdString(file.string()) + ": cannot be written");
        return false;
    }
    return true;
}

}  // namespace

bool mapPrograms(platform::portable::Machine& machine, const fs::path& programsFolder,
                 const Report& report) {
    const PathMatcher matcher(machine.platform().codePage);
    MachineFacts facts = machine.facts();
    QStringList mapped;
    for (const auto& executable : kExecutables) {
        const fs::path host = programsFolder / executable.hostProgram;
        const QFileInfo info(QString::fromStdString(host.string()));
        if (!info.isFile() || !info.isExecutable()) {
            continue;
        }
        const QString winPath = state::product::installFolder() + '\\' + executable.file;
        removeMappings(facts, matcher, *matcher.parse(winPath), false);
        facts.programs[winPath.toStdString()] = host.string();
        mapped << executable.file;
    }
    const QString folder = QString::fromStdString(programsFolder.string());
    if (mapped.isEmpty()) {
        report.done("mapped no programs: none found in " + folder);
        return true;
    }
    if (!writeFacts(machine, facts, report)) {
        return false;
    }
    report.done("mapped " + mapped.join(' ') + " to the programs in " + folder);
    return true;
}

bool unmapPrograms(platform::portable::Machine& machine, const Report& report) {
    const PathMatcher matcher(machine.platform().codePage);
    MachineFacts facts = machine.facts();
    const int removed =
        removeMappings(facts, matcher, *matcher.parse(state::product::installFolder()), true);
    if (removed == 0) {
        return true;
    }
    if (!writeFacts(machine, facts, report)) {
        return false;
    }
    report.done(QStringLiteral("removed %1 program mappings").arg(removed));
    return true;
}

}  // namespace setup
