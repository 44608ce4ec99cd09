#pragma once
#include <functional>

#include "localisation/LanguageText.h"
#include "scan/QuietViews.h"

namespace cli {

// The scan page on the console: a line for each phase, each program looked up, each update
// found and each notice, tab-separated for scripts. Ctrl-C is the Stop button: it works once
// Stop is enabled, and one pressed before waits for that moment.
class ConsoleScanPage final : public scan::QuietScanPage {
public:
    explicit ConsoleScanPage(const localisation::LanguageText& language) : language_(language) {}

    // The Stop button's handler.
    std::function<void()> stop;
    void interrupt();

    int programs() const { return programs_; }
    const QString& notice() const { return notice_; }

    void scanPhase(int phase) override;
    void setProgressMaximum(int maximum) override;
    void showProgress(int value, int maximum) override;
    void enableStop(bool enabled) override;
    void addResult(const scan::ScanResult& result) override;
    void showNotice(const QString& formName) override;
    void showEmptyLayout() override;
    // Stop is hidden from here on.
    void finishScanLayout() override { stopEnabled_ = false; }

private:
    const localisation::LanguageText& language_;
    QString notice_;
    int programs_ = 0;
    bool stopEnabled_ = false;
    bool stopPending_ = false;
};

}  // namespace cli
