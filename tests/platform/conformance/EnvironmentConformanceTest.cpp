#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "ConformanceMachine.h"

namespace {

namespace csidl = platform::csidl;

class EnvironmentConformance : public ::testing::Test {
protected:
    std::unique_ptr<conformance::Machine> machine = conformance::newMachine();
    platform::Environment& environment = machine->platform().environment;
    platform::FileSystem& files = machine->platform().files;
};

// The special folders the program asks for exist and are where Windows keeps them.
TEST_F(EnvironmentConformance, SpecialFoldersExist) {
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
    EXPECT_EQ(system, windows + "\\System32");
}

TEST_F(EnvironmentConformance, UnknownFolderCodeFails) {
    std::string path = "unchanged";
    EXPECT_LT(environment.SHGetFolderPathA(0x7777, &path), 0);
    EXPECT_EQ(path, "unchanged");
}

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

TEST_F(EnvironmentConformance, LocaleAndUser) {
    EXPECT_EQ(environment.GetLocaleInfoA(platform::localeinfo::AbbrevLangName).size(), 3u);
    EXPECT_EQ(environment.GetLocaleInfoA(platform::localeinfo::DefaultAnsiCodePage),
              std::to_string(machine->platform().codePage.GetACP()));
    EXPECT_FALSE(environment.GetUserNameA().empty());
    EXPECT_FALSE(environment.GetComputerNameA().empty());
    const auto os = environment.osVersion();
    EXPECT_EQ(os.platform, 2);
}

// Characters the ANSI code page lacks become "?"; the others survive the round trip.
TEST(CodePageConformance, Windows1252Conversion) {
    const auto machine = conformance::newMachine(1252);
    if (!machine) {
        GTEST_SKIP() << "needs a computer whose ANSI code page is 1252 (Western European)";
    }
    const platform::CodePage& codePage = machine->platform().codePage;
    ASSERT_EQ(codePage.GetACP(), 1252u);
    EXPECT_EQ(codePage.toAnsi(u"Gr\u00fc\u00dfe \u20ac \u65e5\u672c"),
              "Gr\xfc\xdf"
              "e \x80 ??");
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
