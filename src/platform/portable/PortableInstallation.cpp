#include "platform/portable/PortableInstallation.h"

#include <QFileInfo>
#include <QString>

#include <system_error>

#include "platform/FileSystem.h"
#include "platform/FolderCopy.h"

namespace platform::portable {

namespace fs = std::filesystem;

namespace {

// Replaces rather than overwrites, so that a read-only file left there does not stop it.
bool replaceFile(const fs::path& source, const fs::path& target) {
    std::error_code error;
    fs::remove(target, error);
    return fs::copy_file(source, target, error);
}

}  // namespace

long PortableInstallation::copyFolderIn(const std::string& hostFolder, const std::string& winFolder,
                                        std::string* problem) {
    if (!paths_.createFolders(winFolder)) {
        if (problem != nullptr) {
            *problem = winFolder + ": cannot be made";
        }
        return -1;
    }
    return copyEachFile(
        hostFolder,
        [&](const fs::path& file, const fs::path& relative) {
            std::string winPath = winFolder;
            for (const auto& element : relative) {
                winPath += '\\' + paths_.ansiName(element);
            }
            const bool folderMade = paths_.createFolders(GetParentFolderName(winPath)).has_value();
            const auto target = folderMade ? paths_.target(winPath) : std::nullopt;
            return target && replaceFile(file, *target);
        },
        problem);
}

Installation::Mapped PortableInstallation::mapProgram(const std::string& winProgram,
                                                      const std::string& hostProgram) {
    const QFileInfo host(QString::fromStdString(hostProgram));
    const auto parsed = WinPath::parse(winProgram);
    if (!host.isFile() || !host.isExecutable() || !parsed) {
        return Mapped::NoHostProgram;
    }
    MachineFacts facts = facts_;
    removeMappings(facts, *parsed, false);
    facts.programs[QString::fromStdU16String(codePage_.toWide(winProgram)).toStdString()] =
        hostProgram;
    return keep(std::move(facts)) ? Mapped::Yes : Mapped::NotWritten;
}

long PortableInstallation::unmapProgramsBelow(const std::string& winFolder) {
    const auto parsed = WinPath::parse(winFolder);
    if (!parsed) {
        return 0;
    }
    MachineFacts facts = facts_;
    const int removed = removeMappings(facts, *parsed, true);
    return removed == 0 || keep(std::move(facts)) ? removed : -1;
}

bool PortableInstallation::runs(const std::string& winProgram) const {
    const QString wanted = QString::fromStdU16String(codePage_.toWide(winProgram));
    for (const auto& entry : facts_.programs) {
        if (QString::fromStdString(entry.first).compare(wanted, Qt::CaseInsensitive) == 0) {
            return true;
        }
    }
    return false;
}

// Paths of [Programs] compare as Windows compares them: element by element, without regard to
// case, whatever the separators and spelling.
int PortableInstallation::removeMappings(MachineFacts& facts, const WinPath::Parsed& path,
                                         bool below) const {
    const auto text = [this](const std::string& ansi) {
        return QString::fromStdU16String(codePage_.toWide(ansi));
    };
    const auto matches = [&](const std::string& mapped) {
        const auto parsed =
            WinPath::parse(codePage_.toAnsi(QString::fromStdString(mapped).toStdU16String()));
        if (!parsed || parsed->drive != path.drive ||
            (below ? parsed->elements.size() <= path.elements.size()
                   : parsed->elements.size() != path.elements.size())) {
            return false;
        }
        for (size_t i = 0; i < path.elements.size(); ++i) {
            if (text(parsed->elements[i]).compare(text(path.elements[i]), Qt::CaseInsensitive)) {
                return false;
            }
        }
        return true;
    };
    int removed = 0;
    for (auto entry = facts.programs.begin(); entry != facts.programs.end();) {
        if (matches(entry->first)) {
            entry = facts.programs.erase(entry);
            ++removed;
        } else {
            ++entry;
        }
    }
    return removed;
}

bool PortableInstallation::keep(MachineFacts facts) {
    if (!facts.write(machineFolder_ / "machine.ini")) {
        return false;
    }
    facts_ = std::move(facts);
    return true;
}

}  // namespace platform::portable
