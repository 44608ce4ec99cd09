#include <gtest/gtest.h>

#include "core/QtPrinters.h"
#include "localisation/SystemLanguage.h"
#include "support/TestMachine.h"

namespace {

platform::portable::MachineFacts withLocale(const char* abbreviation) {
    platform::portable::MachineFacts facts;
    facts.localeAbbreviation = abbreviation;
    return facts;
}

TEST(GetSystemLanguageTest, TakesTheFirstTwoLettersOfTheLocalesName) {
    for (const auto& [locale, language] :
         std::initializer_list<std::pair<const char*, const char*>>{{"ENU", "en"},
                                                                    {"DEU", "de"},
                                                                    {"FRA", "fr"},
                                                                    {"GER", "de"},
                                                                    {"JPN", "ja"},
                                                                    {"ESN", "es"},
                                                                    {"E", "e"},
                                                                    {"", ""}}) {
        testing_support::TestMachine machine(withLocale(locale));
        EXPECT_EQ(localisation::GetSystemLanguage(machine.platform().environment), language)
            << locale;
    }
}

TEST(HasJapaneseFontsTest, LooksForTheVerticalMinchoFontUnlessTheSwitchFailsIt) {
    platform::portable::MachineFacts facts;
    testing_support::TestMachine plain(facts);
    EXPECT_FALSE(localisation::HasJapaneseFonts(plain.platform().environment, false));
    facts.fonts = {"Arial", "MS Mincho", "@MS Mincho"};
    testing_support::TestMachine japanese(facts);
    EXPECT_TRUE(localisation::HasJapaneseFonts(japanese.platform().environment, false));
    EXPECT_FALSE(localisation::HasJapaneseFonts(japanese.platform().environment, true));
    facts.fonts = {"@ms mincho"};
    testing_support::TestMachine lowerCase(facts);
    EXPECT_FALSE(localisation::HasJapaneseFonts(lowerCase.platform().environment, false));
}

}  // namespace
