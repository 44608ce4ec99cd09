#pragma once
#include <QString>

#include "localisation/LanguageText.h"
#include "platform/Platform.h"
#include "shell/ProcessState.h"

namespace cli {

// Starts the language of the installed program as its entry would, with the given switches
// ("/language=de" or none): the process values of the install folder, the choice of language
// and its file. False after printing why not.
bool startInstalledLanguage(platform::Platform& platform, const QString& switches,
                            shell::ProcessState& state, localisation::LanguageText& language);

}  // namespace cli
