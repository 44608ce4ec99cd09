#include "ProgramSettings.h"

#include "core/AnsiText.h"
#include "state/DataFolders.h"
#include "state/ProductNames.h"

namespace cli {

QString openProgramSettings(platform::Platform& platform, const QString& programFolder,
                            bool makeFolders, state::modSettings& settings) {
    bool fallback = false;
    const QString dataFolder =
        state::locateDataFolder(platform, programFolder, state::product::name(), &fallback);
    if (makeFolders) {
        platform.files.MkDir(core::toAnsi(platform.codePage, dataFolder));
        platform.files.MkDir(core::toAnsi(platform.codePage, dataFolder + "Settings"));
    }
    settings.setSettingsPath(dataFolder + state::product::settingsFile());
    return dataFolder;
}

}  // namespace cli
