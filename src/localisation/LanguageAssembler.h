#pragma once
#include <QString>
#include <QStringList>
#include <QVector>
#include <cstdint>

#include "localisation/LanguageOptions.h"
#include "localisation/LanguageText.h"
#include "localisation/modUTF8_FileIO.h"
#include "platform/Platform.h"

namespace localisation {

// Merges the source files that LanguageLoader.ini lists into one language file, gathers their
// code-strings sections into one [[Code_Strings]] section at its end, and writes it when a
// source is newer than the target. Development layout: the sources lie in
// <parent>localized\, the target in <parent><application ID>\localized\<language ID>\.
class LanguageAssembler {
public:
    LanguageAssembler(platform::Platform& platform, LanguageText& language,
                      const LanguageOptions& options);

    // The whole run. True unless something failed; with nothing to do it is true and
    // errorText says "The target file is up-to-date".
    bool AssembleLanguageFile(QString& errorText);
    // Rewrites the language text with every variable resolved, keeping {CRLF}, parameters and
    // the product-name form open.
    bool ResolveAllVariables(QString& errorText);
    // The lines of text that don't hold marker, joined with CR LF; the first line is left out
    // with skipFirstLine.
    static QString RemoveCommentLines(const QString& text, const QString& marker,
                                      bool skipFirstLine);

    const QString& targetFile() const { return targetFile_; }

private:
    struct CodeString {
        QString head;
        QString body;
        QString source;
    };

    bool PrepareLanguagePaths(QString& errorText);
    bool readSourceList(const QString& listText, QString& errorText);
    bool AppendSourceFile(const QString& path, QString& errorText);
    bool ExtractCodeStrings(QString& text, const QString& source, QString& errorText);
    bool AppendCodeStrings(QString& errorText);
    std::int64_t modificationTime(const QString& path);
    std::string ansi(const QString& path) const;

    platform::Platform& platform_;
    LanguageText& language_;
    const LanguageOptions& options_;
    modUTF8_FileIO fileIO_;

    QString languageRoot_;
    QString listFile_;
    QString targetFile_;
    std::int64_t targetDate_ = 0;
    bool changed_ = false;
    QStringList sources_;
    QString combined_;
    QVector<CodeString> records_;
};

}  // namespace localisation
