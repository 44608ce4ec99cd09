#pragma once
#include <QString>
#include <QStringList>

#include "localisation/LanguageText.h"
#include "platform/Platform.h"
#include "shell/ProcessState.h"
#include "state/ServiceChannel.h"
#include "state/modRegistry.h"

namespace shell {

// The words of the main window that don't come from its language sections.
struct MainLanguageTexts {
    QString errorString;
    QString languagePrompt;
    QStringList daysOfWeek;
    QStringList schedulerActions;
    QString columnProgramName;
    QString columnPublisher;
    QString columnLocation;
    QString trayTip;
};

// What the change of language needs of the main window.
class MainLanguageView {
public:
    virtual ~MainLanguageView() = default;
    // SetCaptions with the section TW_frmMain; false with errorText when it failed.
    virtual bool setCaptions(QString& errorText) = 0;
    // Puts the texts into their controls, and refreshes the visible panels of fraMainFrames.
    virtual void showLanguageTexts(const MainLanguageTexts& texts) = 0;
    // Clears the popup menu and makes it anew from the menu lines; the number of menus made.
    virtual int createMenus(QString& errorText) = 0;
    virtual void setTrayTip(const QString& tip) = 0;
    // Ends the process at once: without menus the program can't be used.
    virtual void endProcess() = 0;
};

// The main window's change to another language while it runs: reload, captions, the texts
// outside the sections, menus, tray tip, and the stored ID.
class LanguageChange {
public:
    // The process state gives the folders and switches, and keeps the language ID in step.
    LanguageChange(platform::Platform& platform, localisation::LanguageText& language,
                   ProcessState& state, state::modRegistry& registry,
                   state::ServiceChannel& service, MainLanguageView& view);

    static MainLanguageTexts mainLanguageTexts(const localisation::LanguageText& language);

    // False when a step failed; its message has been shown. A failed reload leaves no text.
    bool changeLanguage(const QString& id);

private:
    void show(const QString& text) const;

    platform::Platform& platform_;
    localisation::LanguageText& language_;
    ProcessState& state_;
    state::modRegistry& registry_;
    state::ServiceChannel& service_;
    MainLanguageView& view_;
};

}  // namespace shell
