#pragma once
#include <QString>

#include "platform/Platform.h"
#include "state/modSettings.h"

namespace cli {

// Points settings at the settings file of the program in programFolder and gives its data
// folder, with its trailing "\". With makeFolders the data folder and its Settings folder are
// made first, as the program's first start makes them: an INI write makes no folder.
QString openProgramSettings(platform::Platform& platform, const QString& programFolder,
                            bool makeFolders, state::modSettings& settings);

}  // namespace cli
