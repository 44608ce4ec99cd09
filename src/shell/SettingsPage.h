#pragma once
#include <QString>

#include "localisation/LanguageText.h"
#include "state/ActivityLog.h"
#include "state/ServiceChannel.h"
#include "state/UniMessageBox.h"
#include "state/modRegistry.h"
#include "state/modSettings.h"

namespace shell {

// The controls of the settings pages as the settings logic sets them.
class SettingsView {
public:
    virtual ~SettingsView() = default;
    virtual void setStartWithWindows(bool on) = 0;               // chkStartWithWin
    virtual void setProgramSetting(int index, bool on) = 0;      // chkProgramSettings(index)
    virtual void setLogSize(const QString& text) = 0;            // txtLogSize
    virtual void setSchedulerAction(const QString& action) = 0;  // cmbSchedulerAction
    virtual void setActivateLiveUpdate(bool on) = 0;             // chkActivateLiveUpdate
    // Opens the log file in the user's viewer.
    virtual void showLogFile(const QString& path) = 0;
};

// Puts the stored settings into the settings pages and stores each change at once. While the
// main form loads (`loading`), the change handlers do nothing.
class SettingsPage {
public:
    SettingsPage(state::modSettings& settings, state::modRegistry& registry,
                 state::ServiceChannel& service, state::ActivityLog& log,
                 const localisation::LanguageText& language, const state::UniMessageBox& box,
                 SettingsView& view, const bool& loading, QString programFolder,
                 QString programName);

    void ApplySettings();

    void chkProgramSettings_Click(int index, bool on);
    // Stores RunOnStartup and has the service write or delete the Run value.
    void chkStartWithWin_Click(bool on);
    // The box of the log's limit stores the text as typed; text that is not a number puts the
    // default back into the box.
    void txtLogSize_Change(const QString& text);
    // The log's two links: emptied after the user's Yes, and shown.
    void lblCmdClearLog_Click();
    void lblCmdViewLog_Click();

    // The data of the Run value: the program with the /boot switch, ".Exe" spelled so.
    QString runValueData() const;
    // Writes the Run value through the service, or deletes it.
    void sendRunValue(bool on);

private:
    state::modSettings& settings_;
    state::modRegistry& registry_;
    state::ServiceChannel& service_;
    state::ActivityLog& log_;
    const localisation::LanguageText& language_;
    const state::UniMessageBox& box_;
    SettingsView& view_;
    const bool& loading_;
    const QString programFolder_;
    const QString programName_;
};

}  // namespace shell
