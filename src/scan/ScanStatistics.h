#pragma once
#include <QString>
#include <cstdint>

#include "localisation/LanguageText.h"
#include "scan/IgnoreList.h"
#include "state/UniMessageBox.h"
#include "state/modSettings.h"

namespace scan {

// The statistics panel of the start page: the six captions of lblScanNowData and the
// question of its reset link. Where the captions stand is the panel's own affair.
class StatisticsPanelView {
public:
    virtual ~StatisticsPanelView() = default;
    // 0 last scan, 1 number of scans, 2 updates available, 3 programs ignored, 4 the
    // program's version, 5 the scheduler's state.
    virtual void setScanNowData(int index, const QString& caption) = 0;
};

// The lasting part of the scans, section ScanInfo of the settings file.
class ScanStatistics {
public:
    ScanStatistics(state::modSettings& settings, const localisation::LanguageText& language,
                   IgnoreList& ignoreList, StatisticsPanelView& panel,
                   const state::UniMessageBox& box);

    void StatusInfoDisplay();
    // After the user's Yes: the three values back to their defaults. ItemCount stays.
    void lblCmdResetStatistics_Click();
    void ResetStatistics();

private:
    state::modSettings& settings_;
    const localisation::LanguageText& language_;
    IgnoreList& ignoreList_;
    StatisticsPanelView& panel_;
    const state::UniMessageBox& box_;
};

}  // namespace scan
