#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

#include "core/QtPrinters.h"
#include "localisation/LanguageAssembler.h"
#include "localisation/Scramble.h"
#include "platform/portable/WinPath.h"
#include "support/TestMachine.h"

namespace {

using localisation::LanguageAssembler;

const std::string kMark = "\xEF\xBB\xBF";
const std::string kSources = "C:\\Dev\\localized\\";
const std::string kStringsFile = "SourceCode\\TW\\en\\Strings.ini";
const std::string kTarget = "C:\\Dev\\TW\\localized\\en\\";

// Two sources in the development layout; the second has its code strings last.
const std::string kForms =
    "; forms of the product\r\n"
    "[[TW_frmMain]]\r\n"
    "cmdScanNow.Caption=\"Scan {strLoc_TW_Now}\"\r\n"
    ";+++ a note for translators\r\n";
const std::string kMenus =
    "; shared words\r\n"
    "; of the family\r\n"
    "[[Menus]]\r\n"
    "Menu1=mnuPopup|{strLoc_TW_Open}\r\n";
const std::string kCodeStrings =
    "strLoc_TW_Now=now\r\n"
    "strLoc_TW_Open=Open {strLoc_CS_ProductName_{#AppID}}\r\n"
    "strLoc_CS_ProductName_TW=Tallowick\r\n"
    "strLoc_TW_Found={#NumItems} found{CRLF}{strLoc_TW_Now}\r\n";
const std::string kStrings = kMark + kMenus + "[[SH_Code_Strings]]\r\n" + kCodeStrings +
                             "strLoc_TW_Plain=plain ;+++ dropped whole\r\n";
const std::string kList =
    "; the sources\r\n"
    "file=\"SourceCode\\TW\\{LANGUAGE_ID}\\Forms.ini\"\r\n"
    "   ; file=\"SourceCode\\Old.ini\"\r\n"
    "file=SourceCode\\TW\\{LANGUAGE_ID}\\Strings.ini\r\n";

class LanguageAssemblerTest : public ::testing::Test {
protected:
    LanguageAssemblerTest() {
        options.parentFolder = "C:\\Dev\\";
        options.production = false;
        language.setLanguageId("en");
        std::filesystem::create_directories(machine.folder() / "drive_c/Dev/TW/localized/en");
        placeSource("SourceCode\\TW\\en\\Forms.ini", kMark + kForms);
        placeSource(kStringsFile, kStrings);
        placeList(kList);
    }

    void placeSource(const std::string& name, const std::string& text) {
        machine.placeFile(kSources + name, text);
    }
    void placeList(const std::string& text) { placeSource("TW\\LanguageLoader.ini", text); }
    // Moves a file's modification time by the given seconds from now.
    void age(const std::string& winPath, int seconds) {
        std::filesystem::last_write_time(
            *machine.machine().paths().existing(winPath),
            std::filesystem::file_time_type::clock::now() + std::chrono::seconds(seconds));
    }
    bool assemble(bool resolve = false, bool encryption = false) {
        options.resolve = resolve;
        options.encryption = encryption;
        errorText = "stale";
        return LanguageAssembler(machine.platform(), language, options)
            .AssembleLanguageFile(errorText);
    }
    std::string target(const std::string& name) {
        return machine.platform().files.readFile(kTarget + name).value_or("<none>");
    }

    testing_support::TestMachine machine;
    localisation::LanguageOptions options;
    localisation::LanguageText language{"TW"};
    QString errorText;
};

// The target: the first source as it is, the second behind its "Appended File" line, then all
// code strings in one section at the end. ";+++" lines go from the sources that had code
// strings; a source without keeps them.
TEST_F(LanguageAssemblerTest, MergesSourcesAndGathersTheCodeStrings) {
    ASSERT_TRUE(assemble()) << errorText.toStdString();
    EXPECT_EQ(errorText, "");
    EXPECT_EQ(target("language.ini"),
              kMark + kForms + ";### Appended File: " + kStringsFile + " ###\r\n\r\n" + kMenus +
                  "\r\n\r\n\r\n;---------------------- CodeStrings ----------------------\r\n"
                  "[[Code_Strings]]\r\n\r\n\r\n;--- CodeStrings added from " +
                  kStringsFile + " ---\r\n" + kCodeStrings);
}

// Resolved: variables are filled in, while {CRLF}, parameters and the product-name form stay
// open. Scrambled, the plain file beside the target goes.
TEST_F(LanguageAssemblerTest, ResolvesAndScramblesOnRequest) {
    ASSERT_TRUE(assemble());
    ASSERT_TRUE(assemble(true, false)) << errorText.toStdString();
    const std::string resolved = target("language.inr");
    for (const char* line :
         {"cmdScanNow.Caption=\"Scan now\"\r\n", "Menu1=mnuPopup|Open Tallowick\r\n",
          "strLoc_TW_Open=Open {strLoc_CS_ProductName_{#AppID}}\r\n",
          "strLoc_TW_Found={#NumItems} found{CRLF}now\r\n"}) {
        EXPECT_NE(resolved.find(line), std::string::npos) << line;
    }
    ASSERT_TRUE(assemble(true, true)) << errorText.toStdString();
    std::string scrambled = target("language.inx");
    localisation::UnscrambleBytes(scrambled.erase(0, kMark.size()));
    EXPECT_EQ(kMark + scrambled, resolved);
    EXPECT_EQ(target("language.ini"), "<none>");
}

// A plain target newer than every source is left alone; one source newer than the target
// rebuilds from all sources. The scrambled target always counts as made in 2015, and a target
// named in another case never counts as made.
TEST_F(LanguageAssemblerTest, BuildsOnlyWhenASourceIsNewer) {
    ASSERT_TRUE(assemble());
    machine.placeFile(kTarget + "language.ini", "kept");
    age(kTarget + "language.ini", 60);
    EXPECT_TRUE(assemble());
    EXPECT_EQ(errorText, "The target file is up-to-date");
    EXPECT_EQ(target("language.ini"), "kept");

    age(kSources + kStringsFile, 120);
    EXPECT_TRUE(assemble());
    EXPECT_NE(target("language.ini").find("[[TW_frmMain]]"), std::string::npos);

    machine.placeFile(kTarget + "language.inx", "old");
    age(kTarget + "language.inx", 600);
    EXPECT_TRUE(assemble(true, true));
    EXPECT_NE(target("language.inx"), "old");

    machine.platform().files.Kill(kTarget + "language.ini");
    machine.placeFile(kTarget + "Language.ini", "capital");
    age(kTarget + "Language.ini", 600);
    EXPECT_TRUE(assemble());
    EXPECT_NE(target("language.ini"), "capital");
}

// Each case changes one thing of the working layout: the language ID, the list's name or
// text, or the source with the code strings.
TEST_F(LanguageAssemblerTest, RefusesBadPathsListsAndSources) {
    const QString error5 =
        "Error 5 in function AssembleLanguageFile: Invalid procedure call or argument";
    placeSource("Elsewhere\\Strings.ini", kStrings);
    const struct {
        QString id = "en";
        QString loader = "LanguageLoader.ini";
        std::string list = kList;
        std::string strings = kStrings;
        QString error;
    } cases[] = {
        {.id = "eng", .error = "Wrong or missing language ID: eng"},
        {.id = "de", .error = "Folder 'C:\\Dev\\TW\\localized\\de' does not exist"},
        {.loader = "Other.ini",
         .error = "File 'C:\\Dev\\localized\\TW\\Other.ini' cannot be found"},
        {.list = "; sources\r\nfile=SourceCode\\a.ini=b\r\n",
         .error = "Error in LanguageLoader.ini line 2 - file=SourceCode\\a.ini=b"},
        {.list = "file=SourceCode\\Missing.ini\r\n",
         .error = "Could not locate language file 'C:\\Dev\\localized\\SourceCode\\Missing.ini,"},
        {.list = "", .error = "File not found or empty"},
        {.list = "file=Elsewhere\\Strings.ini\r\n", .error = error5},
        {.strings = kStrings.substr(kMark.size()),
         .error = "Error: The file C:\\Dev\\localized\\SourceCode\\TW\\en\\Strings.ini is not "
                  "UTF-8 encoded"},
        {.strings = kMark + "; no code strings\r\n[[Menus]]\r\nM=a\r\n",
         .error = "There were no CodeString sections which should not happen!"},
        // A head in the very first line has no line before it to step back to.
        {.strings = kMark + "[[TW_Product_Specific_Code_Strings]]\r\na=1\r\n", .error = error5},
        // A commented-out section ahead of a live one would send the search round for ever.
        {.strings = kMark + "; one\r\n; two\r\n;[[XX_Code_Strings]]\r\n;old=1\r\n"
                            "[[SH_Code_Strings]]\r\na=1\r\n",
         .error = "CodeString section 1 in SourceCode\\TW\\en\\Strings.ini cannot be reached: a "
                  "commented-out or empty CodeString section stands before it"},
    };
    for (const auto& c : cases) {
        language.setLanguageId(c.id);
        options.loaderFileName = c.loader;
        placeList(c.list);
        placeSource(kStringsFile, c.strings);
        EXPECT_FALSE(assemble());
        EXPECT_EQ(errorText, c.error);
    }
    placeList("; only comments\r\n;file=x\r\n");
    placeSource(kStringsFile, kStrings);
    EXPECT_TRUE(assemble());
    EXPECT_EQ(errorText, "The target file is up-to-date");
}

// A code-strings section followed by another section takes that section's first "[" with
// it: the body ends in "[" and the head behind is left as "[Name]]".
TEST_F(LanguageAssemblerTest, ASectionBehindCodeStringsLosesItsFirstBracket) {
    placeSource(kStringsFile, kMark +
                                  "; header line one\r\n; two\r\n[[SH_Code_Strings]]\r\n"
                                  "strLoc_A=a\r\n[[Later]]\r\nx=1\r\n");
    ASSERT_TRUE(assemble()) << errorText.toStdString();
    const std::string text = target("language.ini");
    EXPECT_NE(text.find("\r\n[Later]]\r\nx=1"), std::string::npos) << text;
    EXPECT_TRUE(text.ends_with("strLoc_A=a\r\n[")) << text;
}

}  // namespace
