// The language files the build makes from data/localized, loaded as the installed program
// loads them.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "core/QtPrinters.h"
#include "localisation/FormText.h"
#include "localisation/LanguageLoader.h"
#include "support/TestMachine.h"

namespace {

std::string shippedFile(const QString& id, const QString& name) {
    QFile file(QStringLiteral(TALLOWICK_PROGRAM_DATA_DIR "/localized/") + id + '/' + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
}

class ShippedLanguagesTest : public ::testing::TestWithParam<QString> {
protected:
    // The language's .inx and .inr in the program folder of a fresh machine, loaded.
    void load(bool encryption) {
        for (const char* name : {"Language.inx", "Language.inr"}) {
            machine.placeFile("C:\\Program Files\\Tallowick\\localized\\" +
                                  GetParam().toStdString() + "\\" + name,
                              shippedFile(GetParam(), name));
        }
        options.programFolder = "C:\\Program Files\\Tallowick";
        options.encryption = encryption;
        language.setLanguageId(GetParam());
        language.SetLoadedLanguage("");
        QString errorText;
        ASSERT_TRUE(localisation::LanguageLoader(machine.platform(), language, options)
                        .InitLanguageText(errorText))
            << errorText.toStdString();
    }

    testing_support::TestMachine machine;
    localisation::LanguageOptions options;
    localisation::LanguageText language{"TW"};
};

// Every variable the program reads by name resolves to words: no error text, no placeholder
// left but the parameters the program fills in.
TEST_P(ShippedLanguagesTest, EveryNamedVariableResolves) {
    QStringList names;
    for (const QString& line :
         QString::fromStdString(testing_support::readTestData("NamedVariables.txt")).split('\n')) {
        if (!line.startsWith('#') && !line.trimmed().isEmpty()) {
            names << line.trimmed();
        }
    }
    ASSERT_GT(names.size(), 100);
    for (const bool encryption : {true, false}) {
        load(encryption);
        for (const QString& name : names) {
            // The last line of the file loses its last character; a value there would keep
            // a lone CR.
            const QString value = language.GetStrLocValue(name);
            EXPECT_FALSE(value.trimmed().isEmpty() || value.endsWith('\r') ||
                         value.contains("Error in function") || value.contains("{str") ||
                         value.contains("||"))
                << name.toStdString() << "=" << value.toStdString();
        }
    }
}

// Each form finds its section with statements, and the menus their entries.
TEST_P(ShippedLanguagesTest, FormsAndMenusHaveTheirSections) {
    load(true);
    for (const char* form :
         {"TW_frmMain", "TW_frmBalloon", "TW_dlgLiveUpdateInfo", "TW_dlgLiveUpdateError",
          "TW_dlgLiveUpdateDownloadProgress", "TW_dlgPrintReport", "TW_dlgScheduledScan",
          "TW_dlgUpdatePrompt", "TW_frmSplash", "TW_frmWelcome", "TW_frmAbout", "TW_frmCCUpdate",
          "TW_frmStarterNote", "TW_frmSvcHandler", "TW_frmInitializer", "CS_frmEmail",
          "CS_frmLanguage", "CS_frmSpamInfo", "CS_frmShowLinks"}) {
        const QStringList lines = language.GetSection(QString::fromLatin1(form));
        ASSERT_GT(lines.size(), 1) << form;
        for (const QString& line : lines.mid(1)) {
            EXPECT_TRUE(line.contains('.') && line.contains("="))
                << form << ": " << line.toStdString();
        }
    }
    // The start-up forms ask by the same rule, the application ID first.
    for (const char* form : {"frmInitializer", "frmStarterNote", "frmSvcHandler"}) {
        EXPECT_FALSE(
            localisation::FormStatementValue(language, form, "lblMessage.Caption").isEmpty())
            << form;
    }
    QStringList menus;
    for (const QString& line : language.menuLines().mid(1)) {
        menus << language.ProcessLanguageLine(line).section('|', 0, 0);
    }
    EXPECT_EQ(menus, (QStringList{"mnuPopup", "mnuPopupIgnoreList"}));
}

// The four languages name the same variables in the same order.
TEST_P(ShippedLanguagesTest, NamesTheSameVariablesAsEnglish) {
    load(false);
    const auto names = [](const QStringList& lines) {
        QStringList result;
        for (const QString& line : lines) {
            result << line.section('=', 0, 0).trimmed();
        }
        return result;
    };
    const QStringList own = names(language.codeStrings());
    localisation::LanguageText english("TW");
    english.SetLanguageText(QString::fromUtf8(shippedFile("en", "Language.inr")));
    english.InitCodeStrings();
    EXPECT_EQ(own, names(english.codeStrings()));
}

INSTANTIATE_TEST_SUITE_P(Languages, ShippedLanguagesTest, ::testing::Values("en", "de", "fr", "ja"),
                         [](const auto& info) { return info.param.toStdString(); });

}  // namespace
