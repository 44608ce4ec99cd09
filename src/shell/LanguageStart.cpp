#include "shell/LanguageStart.h"

#include "localisation/LanguageLoader.h"
#include "localisation/SystemLanguage.h"
#include "state/LanguageSetting.h"
#include "state/ProductNames.h"
#include "state/UniMessageBox.h"

namespace shell {

localisation::LanguageOptions languageOptions(const ProcessState& state) {
    localisation::LanguageOptions options;
    options.applicationId = state.applicationId;
    options.production = state.production;
    options.encryption = state.encryption;
    options.resolve = state.resolve;
    options.loaderFileName = state.loaderFileName;
    options.programFolder = state.programFolder;
    options.parentFolder = state.parentFolder;
    return options;
}

QString ChooseLanguage(ProcessState& state, state::modRegistry& registry,
                       platform::Environment& environment) {
    if (state.languageId == u"xx") {
        state.languageAutoSelected = true;
        state.languageId.clear();
    }
    if (state.languageId.isEmpty()) {
        const QString stored = state::GetStoredLanguage(registry, state::product::key());
        if (stored.size() == 2) {
            state.languageId = stored;
        } else {
            state.languageId = localisation::GetSystemLanguage(environment);
            state.languageAutoSelected = true;
        }
    }
    return state.languageId;
}

bool StartLanguage(ProcessState& state, state::modRegistry& registry, platform::Platform& platform,
                   localisation::LanguageText& language) {
    language.setLanguageId(ChooseLanguage(state, registry, platform.environment));
    const localisation::LanguageOptions options = languageOptions(state);
    localisation::LanguageLoader loader(platform, language, options);
    QString errorText;
    if (loader.InitLanguageText(errorText)) {
        return true;
    }
    state::UniMessageBox(platform.messageBox, state.productName)
        .UniMsgBox(errorText, platform::mbstyle::IconStop);
    return false;
}

}  // namespace shell
