#include <gtest/gtest.h>

#include "core/QtPrinters.h"
#include "localisation/LanguageLoader.h"
#include "localisation/Scramble.h"
#include "localisation/SystemLanguage.h"
#include "support/TestMachine.h"

namespace {

using localisation::LanguageLoader;

const std::string kMark = "\xEF\xBB\xBF";
const std::string kFolder = "C:\\App\\localized\\de\\";

// A small but complete language file whose first code string names the file it came from.
std::string languageFile(const std::string& origin, const std::string& menus = "Menu1=m|a\r\n") {
    return "[[Menus]]\r\n" + menus + "[[Code_Strings]]\r\nstrLoc_Origin=" + origin +
           "\r\nstrLoc_A=a\r\nstrLoc_B=b\r\nstrLoc_C=c\r\n";
}

std::string scrambled(std::string text) {
    localisation::ScrambleBytes(text);
    return kMark + text;
}

class LanguageLoaderTest : public ::testing::Test {
protected:
    LanguageLoaderTest() {
        options.programFolder = "C:\\App";
        language.setLanguageId("de");
    }
    bool init() {
        errorText = "stale";
        language.SetLoadedLanguage("");
        return LanguageLoader(machine.platform(), language, options).InitLanguageText(errorText);
    }

    testing_support::TestMachine machine;
    localisation::LanguageOptions options;
    localisation::LanguageText language{"TW"};
    QString errorText;
};

// The flags alone pick the file; the others beside it are never read. With production off
// the loader assembles the plain file first.
TEST_F(LanguageLoaderTest, TheFlagsPickTheFile) {
    machine.placeFile(kFolder + "Language.inx", scrambled(languageFile("inx")));
    machine.placeFile(kFolder + "Language.inr", kMark + languageFile("inr"));
    machine.placeFile(kFolder + "Language.ini", kMark + languageFile("ini"));
    for (const auto& [encryption, resolve, origin] :
         {std::tuple(true, false, "inx"), std::tuple(true, true, "inx"),
          std::tuple(false, false, "inr"), std::tuple(false, true, "inr")}) {
        options.encryption = encryption;
        options.resolve = resolve;
        ASSERT_TRUE(init()) << errorText.toStdString();
        EXPECT_EQ(language.GetStrLocValue("strLoc_Origin"), origin);
    }
    options.resolve = options.production = false;
    EXPECT_EQ(LanguageLoader(machine.platform(), language, options).languageFilePath(),
              "C:\\App\\localized\\de\\Language.ini");
}

// Once a language is loaded, asking for it again doesn't read the file: it may be gone.
TEST_F(LanguageLoaderTest, TheLoadedLanguageIsNotReadAgain) {
    machine.placeFile(kFolder + "Language.inx", scrambled(languageFile("first")));
    ASSERT_TRUE(init());
    EXPECT_EQ(language.loadedLanguage(), "de");
    machine.platform().files.Kill(kFolder + "Language.inx");
    EXPECT_TRUE(LanguageLoader(machine.platform(), language, options).InitLanguageText(errorText));
    EXPECT_EQ(language.GetStrLocValue("strLoc_Origin"), "first");
    EXPECT_FALSE(init());
    EXPECT_EQ(errorText,
              "Error in function LoadUTF8IniFile: File "
              "'C:\\App\\localized\\de\\Language.inx' cannot be found");
}

// A plain file read with the unscrambler, or a scrambled one without it, is noise: its sections
// aren't found. So are files cut short, and four lines of code strings, the head counted. Only
// a file that can't be read leaves no language loaded.
TEST_F(LanguageLoaderTest, BadFilesGiveTheirReasons) {
    const QString unread = "Error in function LoadUTF8IniFile: ";
    const struct {
        bool encryption;
        std::string bytes;
        QString errorText;
    } cases[] = {
        {true, languageFile("no mark"),
         unread + "Error: The file C:\\App\\localized\\de\\Language.inx is not UTF-8 encoded"},
        {true, "", unread + "File not found or empty"},
        {true, kMark + languageFile("plain"), "Error in function InitCodeStrings"},
        {false, scrambled(languageFile("scrambled")), "Error in function InitCodeStrings"},
        {false, kMark + languageFile("short", ""), "Error in function InitMenuStrings"},
        {false, kMark + "[[Menus]]\r\nM=a\r\n[[Code_Strings]]\r\na=1\r\nb=2\r\nc=3\r\n",
         "Error in function InitCodeStrings"},
    };
    for (const auto& c : cases) {
        options.encryption = c.encryption;
        machine.placeFile(kFolder + (c.encryption ? "Language.inx" : "Language.inr"), c.bytes);
        EXPECT_FALSE(init());
        EXPECT_EQ(errorText, c.errorText);
        EXPECT_EQ(language.loadedLanguage(), c.errorText.startsWith(unread) ? "" : "de");
    }
}

TEST(SystemLanguageTest, TheFirstTwoLettersOfTheLocaleAndTheVerticalMinchoFont) {
    platform::portable::MachineFacts facts;
    for (const auto& [locale, language] :
         {std::pair("ENU", "en"), std::pair("DEU", "de"), std::pair("GER", "de"),
          std::pair("JPN", "ja"), std::pair("E", "e"), std::pair("", "")}) {
        facts.localeAbbreviation = locale;
        testing_support::TestMachine machine(facts);
        EXPECT_EQ(localisation::GetSystemLanguage(machine.platform().environment), language)
            << locale;
        EXPECT_FALSE(localisation::HasJapaneseFonts(machine.platform().environment, false));
    }
    facts.fonts = {"Arial", "MS Mincho", "@MS Mincho"};
    testing_support::TestMachine japanese(facts);
    EXPECT_TRUE(localisation::HasJapaneseFonts(japanese.platform().environment, false));
    EXPECT_FALSE(localisation::HasJapaneseFonts(japanese.platform().environment, true));
    facts.fonts = {"@ms mincho"};
    testing_support::TestMachine lowerCase(facts);
    EXPECT_FALSE(localisation::HasJapaneseFonts(lowerCase.platform().environment, false));
}

}  // namespace
