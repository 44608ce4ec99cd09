#include "localisation/FormText.h"

#include "core/BasicText.h"

namespace localisation {

QString FormStatementValue(const LanguageText& language, const QString& form,
                           const QString& statement) {
    for (const QString& line : language.GetSection(language.applicationId() + u'_' + form)) {
        const int equals = core::inStr(1, line, QStringLiteral("="));
        if (equals > 1 && core::textCompare(core::trim(core::left(line, equals - 1)), statement)) {
            return language.ProcessLanguageLine(line);
        }
    }
    return QString();
}

}  // namespace localisation
