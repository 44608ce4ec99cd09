#include "shell/LanguageChange.h"

#include "localisation/LanguageLoader.h"
#include "shell/LanguageStart.h"
#include "state/LanguageSetting.h"
#include "state/ProductNames.h"
#include "state/UniMessageBox.h"

namespace shell {

LanguageChange::LanguageChange(platform::Platform& platform, localisation::LanguageText& language,
                               ProcessState& state, state::modRegistry& registry,
                               state::ServiceChannel& service, MainLanguageView& view)
    : platform_(platform),
      language_(language),
      state_(state),
      registry_(registry),
      service_(service),
      view_(view) {}

MainLanguageTexts LanguageChange::mainLanguageTexts(const localisation::LanguageText& language) {
    const auto value = [&language](const char* name) {
        return language.GetStrLocValue(QString::fromLatin1(name));
    };
    MainLanguageTexts texts;
    texts.errorString = value("strLoc_ErrorString");
    texts.languagePrompt = value("strLoc_SH_LanguagePrompt");
    texts.daysOfWeek = language.FillComboFromLanguage(QStringLiteral("strLoc_SH_DaysOfWeek"));
    texts.schedulerActions =
        language.FillComboFromLanguage(QStringLiteral("strLoc_SH_SchedulerActions"));
    texts.columnProgramName = value("strLoc_TW_LstColHdr_ProgramName");
    texts.columnPublisher = value("strLoc_TW_LstColHdr_Publisher");
    texts.columnLocation = value("strLoc_TW_LstColHdr_Location");
    texts.trayTip = value("strLoc_SH_ClickHereToOpen");
    return texts;
}

void LanguageChange::show(const QString& text) const {
    state::UniMessageBox(platform_.messageBox, state_.productName)
        .UniMsgBox(text, platform::mbstyle::Ok, state_.productName);
}

bool LanguageChange::changeLanguage(const QString& id) {
    state_.languageId = id;
    language_.setLanguageId(id);
    language_.SetLoadedLanguage(QString());
    const localisation::LanguageOptions options = languageOptions(state_);
    QString errorText;
    if (!localisation::LanguageLoader(platform_, language_, options).InitLanguageText(errorText)) {
        show(QStringLiteral("Error loading the language filee: ") + errorText);
        return false;
    }
    if (!view_.setCaptions(errorText)) {
        show(QStringLiteral("InitForm Error: ") + errorText);
        return false;
    }
    const MainLanguageTexts texts = mainLanguageTexts(language_);
    view_.showLanguageTexts(texts);
    if (view_.createMenus(errorText) < 1) {
        show(QStringLiteral("CreateMenus Error: ") + errorText);
        view_.endProcess();
        return false;
    }
    view_.setTrayTip(texts.trayTip);
    if (!state::SaveLanguage(registry_, service_, state::product::key(), id)) {
        show(QStringLiteral("Error saving the language ID '") + id + u'\'');
        return false;
    }
    return true;
}

}  // namespace shell
