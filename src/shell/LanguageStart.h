#pragma once
#include <QString>

#include "localisation/LanguageOptions.h"
#include "localisation/LanguageText.h"
#include "platform/Platform.h"
#include "shell/ProcessState.h"
#include "state/modRegistry.h"

namespace shell {

// The language options that the switches and folders of the process state give.
localisation::LanguageOptions languageOptions(const ProcessState& state);

// The language the program starts in, after the command line has set state.languageId:
// "xx" asks for the language screen; with no ID the stored one is taken, or the system's
// when none of two letters is stored, and then the screen is due as well.
QString ChooseLanguage(ProcessState& state, state::modRegistry& registry,
                       platform::Environment& environment);

// Chooses the language and loads its text. False after a critical message box with the
// reason, where the process must end: without its text no localised word is available.
bool StartLanguage(ProcessState& state, state::modRegistry& registry, platform::Platform& platform,
                   localisation::LanguageText& language);

}  // namespace shell
