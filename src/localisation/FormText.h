#pragma once
#include <QString>

#include "localisation/LanguageText.h"

namespace localisation {

// The resolved value of one statement of a form's section in the language data, such as
// "lblMessage.Caption" of "frmUnableToCheck"; empty when the form has no such statement.
QString FormStatementValue(const LanguageText& language, const QString& form,
                           const QString& statement);

}  // namespace localisation
