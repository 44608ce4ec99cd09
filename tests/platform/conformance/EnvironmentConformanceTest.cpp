#include <gtest/gtest.h>

#include <string>

#include "ConformanceTest.h"

namespace {

namespace csidl = platform::csidl;
using conformance::lowerCase;

class EnvironmentConformance : public conformance::ConformanceTest {
protected:
    platform::Environment& environment = machine->platform().environment;
    platform::FileSystem& files = machine->platform().files;
};

// The special folders the program asks for exist and are where Windows keeps them; the
// system folder is System32 of the Windows folder, whose name Windows gives in lower case.
TEST_F(EnvironmentConformance, SpecialFoldersExistAndUnknownCodesFail) {
    for (int code : {csidl::CommonAppData, csidl::AppData, csidl::ProgramFiles, csidl::Windows,
                     csidl::System, csidl::Fonts, csidl::Desktop, csidl::Personal,
                     csidl::CommonStartup, csidl::Cookies, csidl::DesktopDirectory}) {
        SCOPED_TRACE(code);
        std::string path;
        ASSERT_EQ(environment.SHGetFolderPathA(code, &path), 0);
        EXPECT_TRUE(files.FolderExists(path)) << path;
        EXPECT_NE(path.back(), '\\');
    }
    std::string windows;
    std::string system;
    environment.SHGetFolderPathA(csidl::Windows, &windows);
    environment.SHGetFolderPathA(csidl::System, &system);
    EXPECT_EQ(lowerCase(system), lowerCase(windows + "\\system32"));

    // A folder code Windows does not know fails and leaves the path alone.
    std::string path = "unchanged";
    EXPECT_LT(environment.SHGetFolderPathA(0x7777, &path), 0);
    EXPECT_EQ(path, "unchanged");
}

// Variables are found without regard to case; TEMP and PROGRAMFILES name their folders.
TEST_F(EnvironmentConformance, EnvironmentVariablesIgnoreCase) {
    const auto temp = environment.GetEnvironmentVariableA("TEMP");
    ASSERT_TRUE(temp.has_value());
    EXPECT_TRUE(files.FolderExists(*temp));
    EXPECT_EQ(environment.GetEnvironmentVariableA("temp"), temp);
    std::string programFiles;
    ASSERT_EQ(environment.SHGetFolderPathA(csidl::ProgramFiles, &programFiles), 0);
    EXPECT_EQ(environment.GetEnvironmentVariableA("PROGRAMFILES"), programFiles);
    EXPECT_FALSE(environment.GetEnvironmentVariableA("TALLOWICK_SURELY_UNSET_42").has_value());
}

// The locale's language and ANSI code page, a user, a computer and an NT platform.
TEST_F(EnvironmentConformance, LocaleAndUser) {
    EXPECT_EQ(environment.GetLocaleInfoA(platform::localeinfo::AbbrevLangName).size(), 3u);
    EXPECT_EQ(environment.GetLocaleInfoA(platform::localeinfo::DefaultAnsiCodePage),
              std::to_string(machine->platform().codePage.GetACP()));
    EXPECT_FALSE(environment.GetUserNameA().empty());
    EXPECT_FALSE(environment.GetComputerNameA().empty());
    const auto os = environment.osVersion();
    EXPECT_EQ(os.platform, 2);
}

using CodePageConformanceIn1252 = conformance::InCodePage<conformance::ConformanceTest, 1252>;

// Characters the ANSI code page has survive the round trip. One it lacks is written as its
// best fit, as WideCharToMultiByte does by default: a Latin letter with a diacritic or a
// stroke as the letter without it; one with no fit becomes "?".
TEST_F(CodePageConformanceIn1252, Windows1252Conversion) {
    const platform::CodePage& codePage = machine->platform().codePage;
    EXPECT_EQ(codePage.toAnsi(u"Gr\u00fc\u00dfe \u20ac \u65e5\u672c"),
              "Gr\xfc\xdf"
              "e \x80 ??");
    EXPECT_EQ(codePage.toAnsi(u"\u0141\u00f3d\u017a \u0101 \u0111 \u0110 \u0150 \u0131 \u01ce "
                              u"\u0127 \u0149 \u0138 \u0401"),
              "L\xf3"
              "dz a d \xd0 O i a h ? ? ?");
    EXPECT_EQ(codePage.toWide("Gr\xfc\xdf"
                              "e \x80"),
              u"Gr\u00fc\u00dfe \u20ac");
    std::string every;
    for (int byte = 1; byte < 256; ++byte) {
        every.push_back(char(byte));
    }
    EXPECT_EQ(codePage.toAnsi(codePage.toWide(every)), every);
}

}  // namespace
