#include "scan/UninstallKeyReader.h"

#include "core/AnsiText.h"
#include "core/BasicText.h"
#include "core/PathText.h"

namespace scan {

namespace {

QString withoutQuotes(const QString& text) {
    return core::replace(text, "\"", "");
}

}  // namespace

UninstallKeyReader::UninstallKeyReader(platform::Platform& platform, state::modRegistry& registry,
                                       VersionInfoReader& versionReader,
                                       StringLookup getStrLocValue)
    : platform_(platform),
      registry_(registry),
      versionReader_(versionReader),
      getStrLocValue_(std::move(getStrLocValue)) {}

bool UninstallKeyReader::fileExists(const QString& path) {
    return platform_.files.FileExists(core::toAnsi(platform_.codePage, path));
}

bool UninstallKeyReader::folderExists(const QString& path) {
    return platform_.files.FolderExists(core::toAnsi(platform_.codePage, path));
}

std::optional<Candidate> UninstallKeyReader::read(const QString& key) {
    if (core::trim(registry_.GetDwordValue(key, "SystemComponent").toString()) == "1") {
        return std::nullopt;
    }
    Candidate c;
    const QString uninstall = withoutQuotes(registry_.GetStringValue(key, "UninstallString"));

    // The executable of a program is the file its icon names; the icon index goes.
    QString icon = withoutQuotes(registry_.GetStringValue(key, "DisplayIcon"));
    const qsizetype comma = icon.lastIndexOf(',');
    if (comma >= 0) {
        icon = icon.left(comma);
    }
    if (fileExists(icon) && !state::IsFailureWord(icon)) {
        c.exePath = core::replace(icon, "\\\\", "\\");
        c.exeName = core::GetFileName(c.exePath);
        c.fileVersion = versionReader_.GetFixedFileVersion(c.exePath);
    }

    QString location = withoutQuotes(registry_.GetStringValue(key, "InstallLocation"));
    if (location.endsWith('\\')) {
        location.chop(1);
    }
    if (state::IsFailureWord(location)) {
        location = core::GetParentFolderName(c.exePath);
        if (location.isEmpty()) {
            location = core::GetParentFolderName(uninstall);
        }
    }
    // The hidden uninstall folders of system updates are no program folders.
    if (folderExists(location) && core::lcase(core::left(location, 12)) != "c:\\windows\\$") {
        c.folder = location;
    }
    if (c.folder.isEmpty()) {
        c.folder = core::GetParentFolderName(c.exePath);
    }

    const QString name = registry_.GetStringValue(key, "DisplayName");
    if (!state::IsFailureWord(name) && !name.isEmpty()) {
        c.name = name;
    }

    const QString version = registry_.GetStringValue(key, "DisplayVersion");
    if (!state::IsFailureWord(version) && !version.isEmpty() && !version.contains('/')) {
        c.version = version;
    } else if (fileExists(c.exePath)) {
        c.version = versionReader_.GetFixedProductVersion(c.exePath);
    }
    // The text removed is q long, not q - p + 1: what follows the bracket goes too when it
    // fits in that length.
    const int open = core::inStr(1, c.version, "(");
    const int close = core::inStr(1, c.version, ")");
    if (open > 0 && close > 0 && open < close) {
        const int last = core::inStrRev(c.version, ")");
        c.version = core::replace(c.version, core::mid(c.version, open, last), "");
    }

    c.publisher = registry_.GetStringValue(key, "Publisher");
    if (state::IsFailureWord(c.publisher)) {
        c.publisher = GetCompanyName(versionReader_, icon, getStrLocValue_);
        // A search for "" succeeds in any text, so a found company name always gives way to
        // the uninstall command's, which is empty when the command has arguments.
        if (!c.publisher.isEmpty()) {
            c.publisher = GetCompanyName(versionReader_, uninstall, getStrLocValue_);
        }
    }
    return c;
}

}  // namespace scan
