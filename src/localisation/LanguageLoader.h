#pragma once
#include <QString>

#include "localisation/LanguageOptions.h"
#include "localisation/LanguageText.h"
#include "localisation/modUTF8_FileIO.h"
#include "platform/Platform.h"

namespace localisation {

// Brings the current language's file into memory. The flags alone decide which of
// Language.inx, Language.inr and Language.ini is read; none stands in for another.
class LanguageLoader {
public:
    LanguageLoader(platform::Platform& platform, LanguageText& language,
                   const LanguageOptions& options);

    // <program folder>\localized\<id>\Language.in?, by the flags.
    QString languageFilePath() const;
    // Assembles first when production is off, then loads the file and its code strings and
    // menu lines. False with errorText when any step failed.
    bool InitLanguageText(QString& errorText);
    // Reads the file unless its language is the one loaded.
    bool LoadUTF8IniFile(const QString& path, QString& errorText);

private:
    platform::Platform& platform_;
    LanguageText& language_;
    const LanguageOptions& options_;
    modUTF8_FileIO fileIO_;
};

}  // namespace localisation
