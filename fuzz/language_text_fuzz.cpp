// Feeds bytes as a language text: sections, every variable of its code strings, the menu
// lines and the resolver over the whole text. Nothing may crash or recurse without end:
// variables that name each other come back as an error text.
#include <QString>

#include <cstddef>
#include <cstdint>

#include "localisation/LanguageText.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Values that double each other grow exponentially by design; small texts keep a run short.
    if (size > 4096) {
        return 0;
    }
    localisation::LanguageText language(QStringLiteral("TW"));
    language.SetLanguageText(
        QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size)));
    language.InitCodeStrings();
    language.InitMenuStrings();
    for (const QString& line : language.codeStrings()) {
        language.GetStrLocValue(line.section(u'=', 0, 0).trimmed());
    }
    for (const QString& line : language.menuLines()) {
        language.ProcessLanguageLine(line);
    }
    language.ResolveVariables(language.GetLanguageText());
    return 0;
}
