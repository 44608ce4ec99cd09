#include "localisation/SystemLanguage.h"

#include <algorithm>

#include "core/BasicText.h"

namespace localisation {

QString GetSystemLanguage(platform::Environment& environment) {
    // The locale's name is plain ASCII ("ENU", "DEU").
    const QString name =
        QString::fromLatin1(environment.GetLocaleInfoA(platform::localeinfo::AbbrevLangName));
    const QString language = core::left(core::lcase(name), 2);
    if (language == u"ge") {
        return QStringLiteral("de");
    }
    if (language == u"jp") {
        return QStringLiteral("ja");
    }
    return language;
}

bool HasJapaneseFonts(platform::Environment& environment, bool failFonts) {
    if (failFonts) {
        return false;
    }
    const auto fonts = environment.screenFonts();
    return std::find(fonts.begin(), fonts.end(), "@MS Mincho") != fonts.end();
}

}  // namespace localisation
