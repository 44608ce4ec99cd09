#pragma once
#include <QString>

#include "platform/Environment.h"

namespace localisation {

// The two-letter language of the user's locale: the first two letters of its abbreviated
// language name, lowered, with "ge" read as "de" and "jp" as "ja".
QString GetSystemLanguage(platform::Environment& environment);

// Whether the screen has the font that stands for East Asian text, "@MS Mincho". With
// failFonts (the switch FAILJAPANESEFONTS) the answer is false without looking.
bool HasJapaneseFonts(platform::Environment& environment, bool failFonts);

}  // namespace localisation
