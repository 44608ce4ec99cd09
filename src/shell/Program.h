#pragma once
#include <QString>

#include "localisation/LanguageText.h"
#include "platform/Platform.h"
#include "platform/net/InetControl.h"
#include "scan/DetectionLists.h"
#include "scan/IgnoreList.h"
#include "scan/ScanControl.h"
#include "scan/ScanDriver.h"
#include "scan/ScanStatistics.h"
#include "scan/modUpdateCOmponent.h"
#include "shell/ProcessState.h"
#include "state/ActivityLog.h"
#include "state/DataFolders.h"
#include "state/ServiceGate.h"
#include "state/SettingsFiles.h"
#include "state/UniMessageBox.h"
#include "state/clsList.h"
#include "state/lst.h"
#include "state/modRegistry.h"
#include "state/modServiceCom.h"
#include "state/modSettings.h"
#include "web/Tracking.h"
#include "web/TrackingQueue.h"

namespace shell {

// What the program's lasting parts speak to, given by whoever shows the program: the desktop
// program's forms, the console, a test.
struct ProgramViews {
    state::ServiceGate& gate;
    scan::IgnorePageView& ignorePage;
    scan::StatisticsPanelView& statisticsPanel;
};

// The program, assembled once for the life of the process: the process values, lst, the one
// message box, the registry layer, the data folders and the channel to the service, the
// settings, the language, the lists with the ignore list and the statistics, tracking and its
// queue, the transfer control, the activity log, ResultsList and the scan control. The desktop
// program, the console, the tests and the benches take their parts from here. Making it reads
// and writes nothing; start() and openDataFolder() do what the entry routine does.
class Program {
public:
    // programFolder: the folder the program runs from, without a trailing "\".
    Program(platform::Platform& platform, const QString& programFolder, ProgramViews views);
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    // The entry's first steps: the command-line switches, the folders they imply and the
    // language, whose server becomes the lookup's. False, with the reason in *message where
    // there is one to tell, when the process must end.
    bool start(const QString& switches, QString* message);
    // Points the settings at their file in the data folder. With makeFolders, as every run that
    // writes, the data folder is made first as the program's first start makes it: with its
    // Service and Settings folders, older data folders moved in by the service.
    void openDataFolder(bool makeFolders);
    // The update server of the lookups and of tracking, in place of the language data's.
    void useServer(const QString& base);

    // The parts of a scan, shown on the page and around it the main window.
    scan::ScanParts scanParts(scan::ScanPageView& page, state::MainWindowView& window);

    platform::Platform& platform;
    const QString programFolder;
    ProcessState state;
    state::lst holder;
    const state::UniMessageBox box;
    state::modRegistry registry;
    state::DataFolders folders;
    state::modServiceCom channel;
    state::modSettings settings;
    localisation::LanguageText language;
    // With its trailing "\".
    const QString dataFolder;
    state::SettingsFiles files;
    scan::DetectionLists lists;
    scan::IgnoreList ignore;
    scan::ScanStatistics statistics;
    // A forced first scan is being tried again.
    bool trackingRetry = false;
    web::Tracking tracking;
    web::TrackingQueue trackingQueue;
    platform::net::InetControl inet;
    scan::modUpdateCOmponent component;
    state::ActivityLog log;
    // One row per update of the last scan: the name and six sub-items.
    state::clsList results;
    scan::ScanControl control;

private:
    // The page whose caption of detected items goes out with the usage events.
    const scan::ScanPageView* scanPage_ = nullptr;
};

}  // namespace shell
