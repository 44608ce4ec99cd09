#include "shell/SettingsPage.h"

#include "core/BasicNumber.h"
#include "state/ProductNames.h"
#include "state/ServiceCommands.h"

namespace shell {

namespace product = state::product;
namespace setting = state::setting;

SettingsPage::SettingsPage(state::modSettings& settings, state::modRegistry& registry,
                           state::ServiceChannel& service, state::ActivityLog& log,
                           const localisation::LanguageText& language,
                           const state::UniMessageBox& box, SettingsView& view, const bool& loading,
                           QString programFolder, QString programName)
    : settings_(settings),
      registry_(registry),
      service_(service),
      log_(log),
      language_(language),
      box_(box),
      view_(view),
      loading_(loading),
      programFolder_(std::move(programFolder)),
      programName_(std::move(programName)) {}

QString SettingsPage::runValueData() const {
    return u'"' + programFolder_ + u'\\' + programName_ + QStringLiteral(".Exe\" /boot");
}

void SettingsPage::sendRunValue(bool on) {
    service_.SendToService(
        on ? state::servicecommand::RegSetString(product::runKey(), product::name(), runValueData())
           : state::servicecommand::RegDeleteVal(product::runKey(), product::name()));
}

void SettingsPage::ApplySettings() {
    // The registry is the truth; the key in the file only follows it.
    const QString run = registry_.GetStringValue(product::runKey(), product::name());
    const bool startsWithWindows = !run.isEmpty() && !state::IsFailureWord(run);
    settings_.WriteSetting(setting::RunOnStartup, startsWithWindows ? "1" : "0");
    view_.setStartWithWindows(startsWithWindows);

    for (const int index : {0, 1, 2, 3, 6, 7, 8}) {
        view_.setProgramSetting(index,
                                settings_.IsSettingOn(setting::ProgramSettings[index],
                                                      setting::ProgramSettingDefaults[index]));
    }
    const bool controlCentre = settings_.IsSettingOn(setting::BrenmoorControlCenter, setting::On);
    view_.setProgramSetting(9, controlCentre);
    settings_.WriteSetting(setting::BrenmoorControlCenter, controlCentre ? "1" : "0");

    view_.setProgramSetting(4, settings_.IsSettingOn(setting::LogAllActivity, setting::On));
    view_.setProgramSetting(5, settings_.IsSettingOn(setting::ClearLargeLogfile, setting::On));
    view_.setLogSize(
        settings_.ReadSetting(setting::MaximumLogSize, setting::MaximumLogSizeDefault));
    view_.setSchedulerAction(settings_.ReadSetting(setting::SchedulerAction, setting::Off));
    view_.setActivateLiveUpdate(settings_.IsSettingOn(setting::UpdatesActivate, setting::On));
}

void SettingsPage::chkProgramSettings_Click(int index, bool on) {
    if (!loading_ && index >= 0 && index < int(std::size(setting::ProgramSettings))) {
        settings_.WriteSetting(setting::ProgramSettings[index], on ? "1" : "0");
    }
}

void SettingsPage::chkStartWithWin_Click(bool on) {
    if (loading_) {
        return;
    }
    settings_.WriteSetting(setting::RunOnStartup, on ? "1" : "0");
    sendRunValue(on);
}

void SettingsPage::txtLogSize_Change(const QString& text) {
    if (loading_) {
        return;
    }
    settings_.WriteSetting(setting::MaximumLogSize, text);
    if (!core::isNumeric(text)) {
        view_.setLogSize(QLatin1String(setting::MaximumLogSizeDefault));
    }
}

void SettingsPage::lblCmdClearLog_Click() {
    if (box_.UniMsgBox(language_.GetStrLocValue(QStringLiteral("strLoc_SH_SureClearLogFile")),
                       platform::mbstyle::YesNo) == platform::mbresult::Yes) {
        log_.clear();
    }
}

void SettingsPage::lblCmdViewLog_Click() {
    view_.showLogFile(log_.path());
}

}  // namespace shell
