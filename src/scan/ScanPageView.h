#pragma once
#include <QString>

#include "scan/ScanResult.h"

namespace scan {

// The scan page as the scan driver sees it. The calls speak of the page; which label, bar or
// button each one moves is the page's affair.
class ScanPageView {
public:
    virtual ~ScanPageView() = default;

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
    // The caption as it stands; its number goes out with the usage events.
    virtual QString totalItemsDetected() const = 0;
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
};

}  // namespace scan
