// Special folders, environment variables, the locale and the ANSI code page as Windows gives
// them.
#include "ConformanceTest.h"

namespace {

using namespace conformance;
namespace csidl = platform::csidl;

class EnvironmentConformance : public ConformanceTest {
protected:
    explicit EnvironmentConformance(unsigned codePage = 0) : ConformanceTest(codePage) {}

    // The folder of a code, or "<error N>".
    std::string folder(int code) {
        std::string path;
        const long result = os().environment.SHGetFolderPathA(code, &path);
        return answer(result, path);
    }
};

// The special folders the program asks for exist and are where Windows keeps them; the
// system folder is System32 of the Windows folder, whose name Windows gives in lower case. A
// folder code Windows does not know fails and leaves the path alone.
TEST_F(EnvironmentConformance, SpecialFoldersExistAndUnknownCodesFail) {
    for (int code : {csidl::CommonAppData, csidl::AppData, csidl::ProgramFiles, csidl::Windows,
                     csidl::System, csidl::Fonts, csidl::Desktop, csidl::Personal,
                     csidl::CommonStartup, csidl::Cookies, csidl::DesktopDirectory}) {
        const std::string path = folder(code);
        EXPECT_TRUE(files().FolderExists(path) && path.back() != '\\') << code << " " << path;
    }
    EXPECT_EQ(inCase(folder(csidl::System), false),
              inCase(folder(csidl::Windows) + "\\system32", false));
    std::string path = "unchanged";
    EXPECT_LT(os().environment.SHGetFolderPathA(0x7777, &path), 0);
    EXPECT_EQ(path, "unchanged");
}

// Variables are found without regard to case; TEMP and PROGRAMFILES name their folders. The
// locale has a language and the ANSI code page; there is a user, a computer and an NT
// platform.
TEST_F(EnvironmentConformance, VariablesIgnoreCaseAndTheLocaleTellsItsCodePage) {
    platform::Environment& environment = os().environment;
    const auto temp = environment.GetEnvironmentVariableA("TEMP");
    EXPECT_TRUE(temp && files().FolderExists(*temp));
    EXPECT_EQ(environment.GetEnvironmentVariableA("temp"), temp);
    EXPECT_EQ(environment.GetEnvironmentVariableA("PROGRAMFILES"), folder(csidl::ProgramFiles));
    EXPECT_FALSE(environment.GetEnvironmentVariableA("TALLOWICK_SURELY_UNSET_42").has_value());
    EXPECT_EQ(environment.GetLocaleInfoA(platform::localeinfo::AbbrevLangName).size(), 3u);
    EXPECT_EQ(environment.GetLocaleInfoA(platform::localeinfo::DefaultAnsiCodePage),
              std::to_string(os().codePage.GetACP()));
    EXPECT_FALSE(environment.GetUserNameA().empty() || environment.GetComputerNameA().empty());
    EXPECT_EQ(environment.osVersion().platform, 2);
}

using CodePageConformanceIn1252 = InCodePage<EnvironmentConformance, 1252>;

// Characters the ANSI code page has survive the round trip. One it lacks is written as its
// best fit, as WideCharToMultiByte does by default: a Latin letter with a diacritic or a
// stroke as the letter without it; one with no fit becomes "?".
TEST_F(CodePageConformanceIn1252, Windows1252Conversion) {
    const platform::CodePage& codePage = os().codePage;
    EXPECT_EQ(codePage.toAnsi(u"S\u00fc\u00df \u20ac \u65e5\u672c"), "S\xfc\xdf \x80 ??");
    EXPECT_EQ(codePage.toAnsi(u"\u0141\u00f3d\u017a \u0101 \u0111 \u0110 \u0150 \u0131 \u01ce "
                              u"\u0127 \u0149 \u0138 \u0401"),
              "L\363dz a d \xd0 O i a h ? ? ?");
    EXPECT_EQ(codePage.toWide("S\xfc\xdf \x80"), u"S\u00fc\u00df \u20ac");
    std::string every;
    for (int byte = 1; byte < 256; ++byte) {
        every.push_back(char(byte));
    }
    EXPECT_EQ(codePage.toAnsi(codePage.toWide(every)), every);
}

}  // namespace
