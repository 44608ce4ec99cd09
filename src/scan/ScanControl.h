#pragma once
#include <QString>
#include <QtGlobal>

#include <functional>

#include "state/MessageLoop.h"

namespace scan {

// What a scan shares with the rest of the program for the life of the process: the flags that
// hold off re-entry through the message loop, the count that the tray side reads, and the turn
// of the message loop that lets Stop get in.
struct ScanControl {
    // A scan runs; Stop clears it and every scan loop tests it.
    bool bInProcess = false;
    bool ScanCancelled = false;
    // Set around a scan; periodic timers skip their tick.
    bool ScanBusy = false;
    // The detection writes its diagnostic dumps.
    bool DebugDumps = false;
    // Set for the scans that the program starts itself; holds back the Internet reminder.
    bool unattendedScan = false;
    // The first-run marks of the start-up, which a cancelled first scan clears.
    bool installRun = false;
    bool repeatFirstRun = false;
    // Updates of the last scan that ended without a failure notice.
    qint16 itemCount = 0;
    // The process's newsletter address while the user has given none.
    static constexpr const char* kNoNewsletterAddress = "none@none.none";
    // A newsletter address and first name waiting to go out with the next closed scan.
    QString newsletterEmail;
    QString newsletterFirstName;
    std::function<void()> pumpEvents = state::pumpEvents;
};

}  // namespace scan
