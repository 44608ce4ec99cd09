#include <gtest/gtest.h>

#include "core/QtPrinters.h"
#include "localisation/LanguageLoader.h"
#include "localisation/Scramble.h"
#include "localisation/Utf8Text.h"
#include "support/TestMachine.h"

namespace {

using localisation::LanguageLoader;
using localisation::LanguageOptions;
using localisation::LanguageText;

const std::string kMark = "\xEF\xBB\xBF";
const std::string kFolder = "C:\\App\\localized\\de\\";

// A small but complete language file whose first code string names the file it came from.
std::string languageFile(const std::string& origin, int menuCount = 2) {
    std::string text = "[[Menus]]\r\n";
    for (int i = 1; i <= menuCount; ++i) {
        text += "Menu" + std::to_string(i) + "=mnuPopup|Open\r\n";
    }
    return text + "[[Code_Strings]]\r\nstrLoc_Origin=" + origin +
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
        return LanguageLoader(machine.platform(), language, options).InitLanguageText(errorText);
    }

    testing_support::TestMachine machine;
    LanguageOptions options;
    LanguageText language{"TW"};
    QString errorText;
};

// The flags alone pick the file; the others beside it are never read.
TEST_F(LanguageLoaderTest, TheFlagsPickTheFile) {
    machine.placeFile(kFolder + "Language.inx", scrambled(languageFile("inx")));
    machine.placeFile(kFolder + "Language.inr", kMark + languageFile("inr"));
    machine.placeFile(kFolder + "Language.ini", kMark + languageFile("ini"));
    // Production stays on here: with it off the loader assembles first.
    struct Case {
        bool encryption, resolve;
        const char* origin;
    };
    for (const Case c : {Case{true, false, "inx"}, Case{true, true, "inx"},
                         Case{false, false, "inr"}, Case{false, true, "inr"}}) {
        options.encryption = c.encryption;
        options.resolve = c.resolve;
        language.SetLoadedLanguage("");
        ASSERT_TRUE(init()) << errorText.toStdString();
        EXPECT_EQ(language.GetStrLocValue("strLoc_Origin"), c.origin);
    }
    EXPECT_EQ(LanguageLoader(machine.platform(), language, options).languageFilePath(),
              "C:\\App\\localized\\de\\Language.inr");
    options.resolve = false;
    options.production = false;
    EXPECT_EQ(LanguageLoader(machine.platform(), language, options).languageFilePath(),
              "C:\\App\\localized\\de\\Language.ini");
}

// Once a language is loaded, asking for it again doesn't read the file: it may be gone.
TEST_F(LanguageLoaderTest, TheLoadedLanguageIsNotReadAgain) {
    machine.placeFile(kFolder + "Language.inx", scrambled(languageFile("first")));
    ASSERT_TRUE(init());
    EXPECT_EQ(language.loadedLanguage(), "de");
    machine.platform().files.Kill(kFolder + "Language.inx");
    EXPECT_TRUE(init());
    EXPECT_EQ(language.GetStrLocValue("strLoc_Origin"), "first");
    language.SetLoadedLanguage("");
    EXPECT_FALSE(init());
    EXPECT_EQ(errorText,
              "Error in function LoadUTF8IniFile: File "
              "'C:\\App\\localized\\de\\Language.inx' cannot be found");
}

// A plain file read with the unscrambler, or a scrambled one without it, is noise: its sections
// aren't found. So are files cut short, and four lines of code strings, the head counted.
TEST_F(LanguageLoaderTest, BadFilesGiveTheirReasons) {
    const QString prefix = "Error in function LoadUTF8IniFile: ";
    const struct {
        bool encryption;
        std::string bytes;
        QString errorText;
    } cases[] = {
        {true, languageFile("no mark"),
         prefix + "Error: The file C:\\App\\localized\\de\\Language.inx is not UTF-8 encoded"},
        {true, "", prefix + "File not found or empty"},
        {true, kMark + languageFile("plain"), "Error in function InitCodeStrings"},
        {false, scrambled(languageFile("scrambled")), "Error in function InitCodeStrings"},
        {false, kMark + languageFile("short", 0), "Error in function InitMenuStrings"},
        {false, kMark + "[[Menus]]\r\nM=a\r\n[[Code_Strings]]\r\na=1\r\nb=2\r\nc=3\r\n",
         "Error in function InitCodeStrings"},
    };
    for (const auto& c : cases) {
        options.encryption = c.encryption;
        machine.placeFile(kFolder + (c.encryption ? "Language.inx" : "Language.inr"), c.bytes);
        language.SetLoadedLanguage("");
        EXPECT_FALSE(init());
        EXPECT_EQ(errorText, c.errorText);
        // Only a file that can't be read leaves no language loaded.
        if (c.errorText.startsWith(prefix)) {
            EXPECT_EQ(language.loadedLanguage(), "");
        }
    }
}

}  // namespace
