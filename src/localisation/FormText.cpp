#include "localisation/FormText.h"

#include "core/BasicText.h"

namespace localisation {

QString FormStatementValue(const LanguageText& language, const QString& form,
                           const QString& statement) {
    for (const QString& line : language.GetSection(language.applicationId() + u'_' + form)) {
        const int equals = basic::inStr(1, line, QStringLiteral("="));
        if (equals > 1 &&
            basic::textCompare(basic::trim(basic::left(line, equals - 1)), statement)) {
            return language.ProcessLanguageLine(line);
        }
    }
    return QString();
}

}  // namespace localisation
