#include <gtest/gtest.h>

#include "core/QtPrinters.h"
#include "localisation/Scramble.h"
#include "shell/LanguageStart.h"
#include "state/ProductNames.h"
#include "support/RecordingMachine.h"

namespace {

class LanguageStartTest : public ::testing::Test {
protected:
    LanguageStartTest() {
        state.programFolder = "C:\\Program Files\\Tallowick";
        registry.CreateKey(state::product::key());
    }
    void store(const QString& id) {
        registry.SetStringValue(state::product::key(), "Language", id);
    }
    QString choose(const QString& fromCommandLine) {
        state.languageId = fromCommandLine;
        state.languageAutoSelected = false;
        return shell::ChooseLanguage(state, registry, machine.test.platform().environment);
    }

    testing_support::RecordingMachine machine;
    state::modRegistry registry{machine.test.platform()};
    shell::ProcessState state;
};

// The machine's locale is English.
TEST_F(LanguageStartTest, TheCommandLineThenTheStoredThenTheSystemLanguage) {
    EXPECT_EQ(choose("fr"), "fr");
    EXPECT_FALSE(state.languageAutoSelected);

    EXPECT_EQ(choose(""), "en");
    EXPECT_TRUE(state.languageAutoSelected);

    store("de");
    EXPECT_EQ(choose(""), "de");
    EXPECT_FALSE(state.languageAutoSelected);

    // "xx" asks for the language screen; the stored language stands until the user picks.
    EXPECT_EQ(choose("xx"), "de");
    EXPECT_TRUE(state.languageAutoSelected);

    store("deu");
    EXPECT_EQ(choose(""), "en");
    EXPECT_TRUE(state.languageAutoSelected);
}

TEST_F(LanguageStartTest, AMissingLanguageFileEndsTheStartWithACriticalBox) {
    state.languageId = "de";
    localisation::LanguageText language("TW");
    EXPECT_FALSE(shell::StartLanguage(state, registry, machine.test.platform(), language));
    ASSERT_EQ(machine.box.shown.size(), 1u);
    EXPECT_EQ(machine.box.shown[0].text,
              "Error in function LoadUTF8IniFile: File 'C:\\Program "
              "Files\\Tallowick\\localized\\de\\Language.inx' cannot be found");
    EXPECT_EQ(machine.box.shown[0].caption, "Tallowick");
    EXPECT_EQ(machine.box.shown[0].style, platform::mbstyle::IconStop);

    std::string text =
        "[[Menus]]\r\nM=mnuPopup|a\r\n[[Code_Strings]]\r\na=1\r\nb=2\r\nc=3\r\nd=4\r\n; end\r\n";
    localisation::ScrambleBytes(text);
    machine.test.placeFile("C:\\Program Files\\Tallowick\\localized\\de\\Language.inx",
                           "\xEF\xBB\xBF" + text);
    EXPECT_TRUE(shell::StartLanguage(state, registry, machine.test.platform(), language));
    EXPECT_EQ(language.GetStrLocValue("d"), "4");
}

}  // namespace
