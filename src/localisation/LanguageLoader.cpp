#include "localisation/LanguageLoader.h"

#include "core/AnsiText.h"
#include "localisation/LanguageAssembler.h"
#include "platform/FileSystem.h"

namespace localisation {

LanguageLoader::LanguageLoader(platform::Platform& platform, LanguageText& language,
                               const LanguageOptions& options)
    : platform_(platform), language_(language), options_(options), fileIO_(platform) {}

QString LanguageLoader::languageFilePath() const {
    const QString folder =
        options_.programFolder + QStringLiteral("\\localized\\") + language_.languageId();
    if (options_.encryption) {
        return folder + QStringLiteral("\\Language.inx");
    }
    if (options_.resolve || options_.production) {
        return folder + QStringLiteral("\\Language.inr");
    }
    return folder + QStringLiteral("\\Language.ini");
}

bool LanguageLoader::InitLanguageText(QString& errorText) {
    errorText.clear();
    if (!options_.production) {
        LanguageAssembler assembler(platform_, language_, options_);
        if (!assembler.AssembleLanguageFile(errorText)) {
            return false;
        }
    }
    QString loadError;
    if (!LoadUTF8IniFile(languageFilePath(), loadError)) {
        errorText = QStringLiteral("Error in function LoadUTF8IniFile: ") + loadError;
        return false;
    }
    if (!language_.InitCodeStrings()) {
        errorText = QStringLiteral("Error in function InitCodeStrings");
        return false;
    }
    if (!language_.InitMenuStrings()) {
        errorText = QStringLiteral("Error in function InitMenuStrings");
        return false;
    }
    return true;
}

bool LanguageLoader::LoadUTF8IniFile(const QString& path, QString& errorText) {
    if (language_.languageId() == language_.loadedLanguage()) {
        return true;
    }
    errorText.clear();
    language_.SetLoadedLanguage(QString());
    const std::string file = core::toAnsi(platform_.codePage, path);
    if (platform_.files.Dir(file, platform::fileattr::Normal).empty()) {
        errorText = QStringLiteral("File '") + path + QStringLiteral("' cannot be found");
        return false;
    }
    if (!fileIO_.ReadUTF8File(path, language_.languageTextBuffer(), errorText, false, false,
                              options_.encryption)) {
        return false;
    }
    language_.SetLoadedLanguage(language_.languageId());
    return true;
}

}  // namespace localisation
