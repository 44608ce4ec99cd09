#pragma once
#include <QString>

#include <cstdint>

#include "scan/ScanResult.h"

namespace scan {

// The main window around a scan and its scan page, as the scan driver sees them. The calls
// speak of the page; which label, bar or button each one moves is the page's affair.
class ScanPageView {
public:
    virtual ~ScanPageView() = default;

    // The navigation and the buttons that must not start anything while a scan runs.
    virtual void disableControls() = 0;
    virtual void enableControls() = 0;
    // The timer that starts a silent scan when one is due.
    virtual void stopCoSellTimer() = 0;
    // The reminder to connect to the Internet before looking for updates.
    virtual void showInternetReminder() = 0;
    // Switches to the scan page, or to the start page.
    virtual void showScan() = 0;
    virtual void showStartPage() = 0;

    // 1 preparation, 2 detection, 3 lookups, 4 closing; a page may show it or not.
    virtual void scanPhase(int phase) = 0;
    // Stop shown but disabled, the result lines and the list shown, and the line under the
    // list.
    virtual void showScanLayout(const QString& reportErrorLine) = 0;
    // The list emptied and disabled, the progress bar hidden at 0.
    virtual void clearResults() = 0;
    virtual void setTotalItemsDetected(const QString& caption) = 0;
    // The running animation while the programs are detected.
    virtual void showRunning(bool running) = 0;
    virtual void setProgressMaximum(int maximum) = 0;
    // The bar shown at `value` of `maximum` programs looked up.
    virtual void showProgress(int value, int maximum) = 0;
    virtual void enableStop(bool enabled) = 0;
    virtual void addResult(const ScanResult& result) = 0;
    // One of the two failure notices, by the name of its form in the language data.
    virtual void showNotice(const QString& formName) = 0;
    // The list replaced by the line that says that everything is up to date.
    virtual void showEmptyLayout() = 0;
    // The list enabled, Stop and the progress bar hidden.
    virtual void finishScanLayout() = 0;
    // Plays a sound file of the program folder.
    virtual void playSound(const QString& file) = 0;
    // Brings the main window back from the tray, so that the print reminder can follow.
    virtual void RestoreWindow() = 0;
    // A box with the platform's style number, titled with the product name; 1, 6 or 7.
    virtual int showMessage(const QString& text, std::uint32_t style) = 0;
};

}  // namespace scan
