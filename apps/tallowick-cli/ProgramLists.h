#pragma once
#include <functional>

#include "Cli.h"
#include "ConsolePages.h"
#include "localisation/LanguageText.h"
#include "scan/DetectionLists.h"
#include "scan/IgnoreList.h"
#include "scan/ScanStatistics.h"
#include "shell/ProcessState.h"
#include "state/ProductNames.h"
#include "state/SettingsFiles.h"
#include "state/lst.h"
#include "state/modSettings.h"

namespace cli {

// What the scan, ignore and stats commands share: the installed program's language,
// settings, ignore list and statistics, loaded as the program loads them.
struct ProgramLists {
    explicit ProgramLists(platform::Platform& platform)
        : platform(platform), lists(platform.messageBox), settings(platform) {}

    // False after printing why the installed program can't be read.
    bool open();

    platform::Platform& platform;
    shell::ProcessState state;
    localisation::LanguageText language{state.applicationId};
    state::lst holder;
    scan::DetectionLists lists;
    state::modSettings settings;
    // With its trailing "\".
    QString dataFolder;
    state::SettingsFiles files{platform, dataFolder, holder, state::product::name()};
    ConsolePages pages;
    scan::IgnoreList ignore{holder, lists.ignoreEntryList, files, language, pages};
    scan::ScanStatistics statistics{settings, language, ignore, pages};
};

// Runs `work` on the installed program's lists of the context's machine; 1 when there is
// no machine or no installed program to read.
int withProgramLists(Context& context, const std::function<int(ProgramLists&)>& work);

}  // namespace cli
