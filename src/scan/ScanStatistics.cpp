#include "scan/ScanStatistics.h"

#include "platform/MessageBox.h"
#include "state/MessageLoop.h"
#include "state/ProductNames.h"
#include "state/SettingNames.h"

namespace scan {

ScanStatistics::ScanStatistics(state::modSettings& settings,
                               const localisation::LanguageText& language, IgnoreList& ignoreList,
                               StatisticsPanelView& panel, const state::UniMessageBox& box)
    : settings_(settings), language_(language), ignoreList_(ignoreList), panel_(panel), box_(box) {}

void ScanStatistics::StatusInfoDisplay() {
    using namespace state::setting;
    panel_.setScanNowData(0, settings_.ReadSetting(LastScan, QStringLiteral(" ")));
    panel_.setScanNowData(1, settings_.ReadSetting(NumberOfScans, QStringLiteral("0")));
    panel_.setScanNowData(2, settings_.ReadSetting(UpdatesAvailable, QStringLiteral("0")));
    panel_.setScanNowData(3, QString::number(ignoreList_.LoadIgnoredToList()));
    panel_.setScanNowData(4, state::product::ownVersion());
    QString scheduler;
    if (settings_.IsSettingOn(SchedulerActivate, Off)) {
        const QString date = settings_.ReadSetting(LastScanDate, QString());
        scheduler = date.isEmpty()
                        ? language_.GetStrLocValue(QStringLiteral("strLoc_SH_ActiveCapital"))
                        : language_.GetStrLocValue(QStringLiteral("strLoc_SH_ActiveLastScan")) +
                              u' ' + date + QStringLiteral(" - ") +
                              settings_.ReadSetting(LastScanTime, QString());
    } else {
        scheduler = language_.GetStrLocValue(QStringLiteral("strLoc_SH_NotActive"));
    }
    panel_.setScanNowData(5, scheduler);
}

void ScanStatistics::ResetStatistics() {
    settings_.WriteSetting(state::setting::LastScan, QStringLiteral(" "));
    settings_.WriteSetting(state::setting::NumberOfScans, QStringLiteral("0"));
    settings_.WriteSetting(state::setting::UpdatesAvailable, QStringLiteral("0"));
}

void ScanStatistics::lblCmdResetStatistics_Click() {
    if (box_.UniMsgBox(language_.GetStrLocValue(QStringLiteral("strLoc_SH_SureStopStatistics")),
                       platform::mbstyle::YesNo | platform::mbstyle::IconQuestion) !=
        platform::mbresult::Yes) {
        return;
    }
    ResetStatistics();
    StatusInfoDisplay();
    state::pumpEvents();
}

}  // namespace scan
