#include "setup/DataFiles.h"

#include <system_error>

#include "platform/portable/WinPath.h"
#include "state/AnsiText.h"
#include "state/ProductNames.h"

namespace setup {

namespace fs = std::filesystem;

namespace {

QString hostText(const fs::path& path) {
    return QString::fromStdString(path.string());
}

// The Windows path in the install folder of a file below the data folder.
std::string installedPath(const platform::portable::WinPath& paths,
                          const std::string& installFolder, const fs::path& relative) {
    std::string winPath = installFolder;
    for (const auto& element : relative) {
        winPath += '\\' + paths.ansiName(element);
    }
    return winPath;
}

// Replaces rather than overwrites, so that a read-only file left there does not stop it.
bool replaceFile(const fs::path& source, const fs::path& target) {
    std::error_code error;
    fs::remove(target, error);
    return fs::copy_file(source, target, error);
}

}  // namespace

bool copyDataFiles(platform::portable::Machine& machine, const fs::path& dataFolder,
                   const Report& report) {
    const auto& paths = machine.paths();
    const auto& codePage = machine.platform().codePage;
    const QString installFolder = state::product::installFolder();
    const std::string ansiFolder = state::toAnsi(codePage, installFolder);
    if (!paths.createFolders(ansiFolder)) {
        report.problem(installFolder + ": cannot be made");
        return false;
    }
    std::error_code error;
    int copied = 0;
    if (fs::is_directory(dataFolder, error)) {
        for (fs::recursive_directory_iterator entry(dataFolder, error), end; !error && entry != end;
             entry.increment(error)) {
            std::error_code typeError;
            if (!entry->is_regular_file(typeError)) {
                continue;
            }
            const std::string winPath =
                installedPath(paths, ansiFolder, entry->path().lexically_relative(dataFolder));
            const bool folderMade =
                paths.createFolders(platform::GetParentFolderName(winPath)).has_value();
            const auto target = folderMade ? paths.target(winPath) : std::nullopt;
            if (!target || !replaceFile(entry->path(), *target)) {
                report.problem(hostText(entry->path()) + ": cannot be copied to " +
                               state::fromAnsi(codePage, winPath));
                return false;
            }
            ++copied;
        }
        if (error) {
            report.problem(hostText(dataFolder) + ": " + QString::fromStdString(error.message()));
            return false;
        }
    }
    report.done(copied == 0
                    ? "no data files in " + hostText(dataFolder)
                    : QStringLiteral("copied %1 data files to %2").arg(copied).arg(installFolder));
    return true;
}

}  // namespace setup
