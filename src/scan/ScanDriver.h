#pragma once
#include <QString>

#include "localisation/LanguageText.h"
#include "platform/Platform.h"
#include "scan/DetectionLists.h"
#include "scan/IgnoreList.h"
#include "scan/ScanControl.h"
#include "scan/ScanPageView.h"
#include "scan/UpdateRecord.h"
#include "scan/modUpdateCOmponent.h"
#include "state/ActivityLog.h"
#include "state/MainWindowView.h"
#include "state/ServiceChannel.h"
#include "state/UniMessageBox.h"
#include "state/modRegistry.h"
#include "state/modSettings.h"
#include "web/Tracking.h"

namespace scan {

// What a scan works with; everything lives longer than the scan.
struct ScanParts {
    platform::Platform& platform;
    state::modSettings& settings;
    state::modRegistry& registry;
    state::ServiceChannel& service;
    web::Tracking& tracking;
    const localisation::LanguageText& language;
    // Its ignore entries are lists.ignoreEntryList.
    IgnoreList& ignoreList;
    DetectionLists& lists;
    // ResultsList: one row per update, the name and six sub-items.
    state::clsList& ResultsList;
    modUpdateCOmponent& component;
    state::ActivityLog& log;
    ScanControl& control;
    ScanPageView& view;
    state::MainWindowView& window;
    const state::UniMessageBox& box;
    QString productName;
    // Without a trailing "\"; the sound of a scan with updates lies there.
    QString programFolder;
    // With a trailing "\"; the detection's dumps go there.
    QString dataFolder;
};

// A whole scan on the interface thread: detection of the installed programs, one lookup each
// at the update server, the results, and the closing statistics, log, sound and tracking. The
// scan yields to the message loop at every step, which is how Stop gets in.
class ScanDriver {
public:
    explicit ScanDriver(ScanParts parts);

    // The Scan Now button: a scan the user asked for.
    void cmdScanNow_Click();
    // Guards a scan: refuses while one runs, offers the Internet reminder unless silent,
    // deletes the silent-scan mark and shows the scan page.
    void InitiateScan(bool silent);
    void StartScan(bool silent);
    // The Stop button: after the user's Yes the loops end at their next pass and the scan
    // closes with what it found.
    void cmdStopScan_Click();

private:
    // A row of the work list, trimmed.
    struct WorkRow {
        QString name, publisher, fileVersion, version, exeName, exePath, folder;
    };

    void prepare(QStringList& scanLog);
    void detect(QStringList& scanLog);
    // Looks every program of the work list up; true when a failure notice ended the loop.
    bool lookUp(const QString& osWord, QStringList& scanLog);
    // Adds the program to the results when the server knows a newer version of it.
    void classify(const WorkRow& row, const UpdateRecord& record, QStringList& scanLog);
    void close(bool silent, bool lookupFailed, QStringList& scanLog);
    // "RegSetString|<product key>|value|data" to the service.
    void setProductValue(const char* value, const QString& data);
    QString text(const char* name) const;
    QString productKey() const;
    void pump() { parts_.control.pumpEvents(); }

    ScanParts parts_;
};

}  // namespace scan
