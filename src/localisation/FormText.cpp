#include "localisation/FormText.h"

#include "core/BasicText.h"

namespace localisation {

QString FormStatementValue(const LanguageText& language, const QString& form,
                           const QString& statement) {
    // A form's section is the application ID, "_" and the form's name, for every form: the
    // language files hold TW_frmInitializer, TW_frmStarterNote and TW_frmSvcHandler. A name put
    // together the other way round, "_frmInitializer" + ID, is in no language file, and the
    // start-up form that asked for it would end the program at every start.
    for (const QString& line : language.GetSection(language.applicationId() + u'_' + form)) {
        const int equals = core::inStr(1, line, QStringLiteral("="));
        if (equals > 1 && core::textCompare(core::trim(core::left(line, equals - 1)), statement)) {
            return language.ProcessLanguageLine(line);
        }
    }
    return QString();
}

}  // namespace localisation
