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
const std::string kList = "C:\\Dev\\localized\\TW\\LanguageLoader.ini";
const std::string kTarget = "C:\\Dev\\TW\\localized\\en\\";

// Two sources in the development layout, each with its code strings last.
const std::string kForms =
    "; forms of the product\r\n"
    "[[TW_frmMain]]\r\n"
    "cmdScanNow.Caption=\"Scan {strLoc_TW_Now}\"\r\n"
    ";+++ a note for translators\r\n";
const std::string kStrings =
    "; shared words\r\n"
    "; of the family\r\n"
    "[[Menus]]\r\n"
    "Menu1=mnuPopup|{strLoc_TW_Open}\r\n"
    "[[SH_Code_Strings]]\r\n"
    "strLoc_TW_Now=now\r\n"
    "strLoc_TW_Open=Open {strLoc_CS_ProductName_{#AppID}}\r\n"
    "strLoc_CS_ProductName_TW=Tallowick\r\n"
    "strLoc_TW_Found={#NumItems} found{CRLF}{strLoc_TW_Now}\r\n"
    "strLoc_TW_Plain=plain ;+++ dropped whole\r\n";

class LanguageAssemblerTest : public ::testing::Test {
protected:
    LanguageAssemblerTest() {
        options.parentFolder = "C:\\Dev\\";
        options.production = false;
        language.setLanguageId("en");
        machine.platform().files.MkDir("C:\\Dev");
        machine.platform().files.MkDir("C:\\Dev\\TW");
        machine.platform().files.MkDir("C:\\Dev\\TW\\localized");
        machine.platform().files.MkDir("C:\\Dev\\TW\\localized\\en");
        placeSource("SourceCode\\TW\\en\\Forms.ini", kForms);
        placeSource("SourceCode\\TW\\en\\Strings.ini", kStrings);
        placeList(
            "; the sources\r\n"
            "file=\"SourceCode\\TW\\{LANGUAGE_ID}\\Forms.ini\"\r\n"
            "   ; file=\"SourceCode\\Old.ini\"\r\n"
            "file=SourceCode\\TW\\{LANGUAGE_ID}\\Strings.ini\r\n");
    }

    void placeSource(const std::string& name, const std::string& text) {
        machine.placeFile(kSources + name, kMark + text);
    }
    void placeList(const std::string& text) { machine.placeFile(kList, text); }
    // Moves a file's modification time by the given seconds from now.
    void age(const std::string& winPath, int seconds) {
        const auto host = machine.machine().paths().existing(winPath);
        std::filesystem::last_write_time(
            *host, std::filesystem::file_time_type::clock::now() + std::chrono::seconds(seconds));
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

// The target layout: the first source as it is, the second behind its "Appended File" line,
// then all code strings in one section at the end. ";+++" lines go from the sources that had
// code strings; a source without keeps them.
TEST_F(LanguageAssemblerTest, MergesSourcesAndGathersTheCodeStrings) {
    ASSERT_TRUE(assemble()) << errorText.toStdString();
    EXPECT_EQ(errorText, "");
    EXPECT_EQ(target("language.ini"),
              kMark +
                  "; forms of the product\r\n"
                  "[[TW_frmMain]]\r\n"
                  "cmdScanNow.Caption=\"Scan {strLoc_TW_Now}\"\r\n"
                  ";+++ a note for translators\r\n"
                  ";### Appended File: SourceCode\\TW\\en\\Strings.ini ###\r\n\r\n"
                  "; shared words\r\n"
                  "; of the family\r\n"
                  "[[Menus]]\r\n"
                  "Menu1=mnuPopup|{strLoc_TW_Open}\r\n"
                  "\r\n\r\n\r\n"
                  ";---------------------- CodeStrings ----------------------\r\n"
                  "[[Code_Strings]]\r\n\r\n\r\n"
                  ";--- CodeStrings added from SourceCode\\TW\\en\\Strings.ini ---\r\n"
                  "strLoc_TW_Now=now\r\n"
                  "strLoc_TW_Open=Open {strLoc_CS_ProductName_{#AppID}}\r\n"
                  "strLoc_CS_ProductName_TW=Tallowick\r\n"
                  "strLoc_TW_Found={#NumItems} found{CRLF}{strLoc_TW_Now}\r\n");
}

// Resolved: variables are filled in, while {CRLF}, parameters and the product-name form stay
// open. Scrambled, the plain file beside the target goes.
TEST_F(LanguageAssemblerTest, ResolvesAndScramblesOnRequest) {
    ASSERT_TRUE(assemble());
    ASSERT_TRUE(assemble(true, false)) << errorText.toStdString();
    const std::string resolved = target("language.inr");
    EXPECT_NE(resolved.find("cmdScanNow.Caption=\"Scan now\""), std::string::npos);
    EXPECT_NE(resolved.find("Menu1=mnuPopup|Open Tallowick\r\n"), std::string::npos);
    EXPECT_NE(resolved.find("strLoc_TW_Open=Open {strLoc_CS_ProductName_{#AppID}}\r\n"),
              std::string::npos);
    EXPECT_NE(resolved.find("strLoc_TW_Found={#NumItems} found{CRLF}now\r\n"), std::string::npos);

    ASSERT_TRUE(assemble(true, true)) << errorText.toStdString();
    std::string scrambled = target("language.inx");
    localisation::UnscrambleBytes(scrambled.erase(0, kMark.size()));
    EXPECT_EQ(kMark + scrambled, resolved);
    EXPECT_EQ(target("language.ini"), "<none>");
}

// A plain target newer than every source is left alone; one source newer than the target
// rebuilds from all sources. The scrambled target always counts as made in 2015.
TEST_F(LanguageAssemblerTest, BuildsOnlyWhenASourceIsNewer) {
    ASSERT_TRUE(assemble());
    machine.placeFile(kTarget + "language.ini", "kept");
    age(kTarget + "language.ini", 60);
    EXPECT_TRUE(assemble());
    EXPECT_EQ(errorText, "The target file is up-to-date");
    EXPECT_EQ(target("language.ini"), "kept");

    age(kSources + "SourceCode\\TW\\en\\Strings.ini", 120);
    EXPECT_TRUE(assemble());
    EXPECT_NE(target("language.ini").find("[[TW_frmMain]]"), std::string::npos);

    machine.placeFile(kTarget + "language.inx", "old");
    age(kTarget + "language.inx", 600);
    EXPECT_TRUE(assemble(true, true));
    EXPECT_NE(target("language.inx"), "old");

    // The found name must be exactly "language.ini": another case never counts as dated.
    machine.platform().files.Kill(kTarget + "language.ini");
    machine.placeFile(kTarget + "Language.ini", "capital");
    age(kTarget + "Language.ini", 600);
    EXPECT_TRUE(assemble());
    EXPECT_NE(target("language.ini"), "capital");
}

TEST_F(LanguageAssemblerTest, RefusesBadPathsAndListLines) {
    language.setLanguageId("eng");
    EXPECT_FALSE(assemble());
    EXPECT_EQ(errorText, "Wrong or missing language ID: eng");

    language.setLanguageId("de");
    EXPECT_FALSE(assemble());
    EXPECT_EQ(errorText, "Folder 'C:\\Dev\\TW\\localized\\de' does not exist");

    language.setLanguageId("en");
    options.loaderFileName = "Other.ini";
    EXPECT_FALSE(assemble());
    EXPECT_EQ(errorText, "File 'C:\\Dev\\localized\\TW\\Other.ini' cannot be found");
    options.loaderFileName = "LanguageLoader.ini";

    placeList("; sources\r\nfile=SourceCode\\a.ini=b\r\n");
    EXPECT_FALSE(assemble());
    EXPECT_EQ(errorText, "Error in LanguageLoader.ini line 2 - file=SourceCode\\a.ini=b");

    placeList("; only comments\r\n;file=x\r\n");
    EXPECT_TRUE(assemble());
    EXPECT_EQ(errorText, "The target file is up-to-date");

    placeList("file=SourceCode\\Missing.ini\r\n");
    EXPECT_FALSE(assemble());
    EXPECT_EQ(errorText,
              "Could not locate language file 'C:\\Dev\\localized\\SourceCode\\Missing.ini,");

    placeList("");
    EXPECT_FALSE(assemble());
    EXPECT_EQ(errorText, "File not found or empty");
}

TEST_F(LanguageAssemblerTest, RefusesSourcesItCannotTakeApart) {
    placeSource("SourceCode\\TW\\en\\Strings.ini", "; no code strings\r\n[[Menus]]\r\nM=a\r\n");
    EXPECT_FALSE(assemble());
    EXPECT_EQ(errorText, "There were no CodeString sections which should not happen!");

    // A head in the very first line has no line before it to step back to.
    placeSource("SourceCode\\TW\\en\\Strings.ini",
                "[[TW_Product_Specific_Code_Strings]]\r\na=1\r\n");
    EXPECT_FALSE(assemble());
    EXPECT_EQ(errorText,
              "Error 5 in function AssembleLanguageFile: Invalid procedure call or "
              "argument");

    // A commented-out section ahead of a live one would send the search round for ever.
    placeSource("SourceCode\\TW\\en\\Strings.ini",
                "; header line one\r\n; two\r\n;[[XX_Code_Strings]]\r\n;old=1\r\n"
                "[[SH_Code_Strings]]\r\na=1\r\n");
    EXPECT_FALSE(assemble());
    EXPECT_EQ(errorText,
              "CodeString section 1 in SourceCode\\TW\\en\\Strings.ini cannot be "
              "reached: a commented-out or empty CodeString section stands before it");

    placeList("file=Elsewhere\\Strings.ini\r\n");
    machine.placeFile(kSources + "Elsewhere\\Strings.ini", kMark + kStrings);
    EXPECT_FALSE(assemble());
    EXPECT_EQ(errorText,
              "Error 5 in function AssembleLanguageFile: Invalid procedure call or "
              "argument");

    placeList("file=SourceCode\\TW\\en\\Forms.ini\r\n");
    machine.placeFile(kSources + "SourceCode\\TW\\en\\Forms.ini", kForms);
    EXPECT_FALSE(assemble());
    EXPECT_TRUE(errorText.endsWith("is not UTF-8 encoded"));
}

// A code-strings section followed by another section takes that section's first "[" with
// it: the body ends in "[" and the head behind is left as "[Name]]".
TEST_F(LanguageAssemblerTest, ASectionBehindCodeStringsLosesItsFirstBracket) {
    placeSource("SourceCode\\TW\\en\\Strings.ini",
                "; header line one\r\n; two\r\n[[SH_Code_Strings]]\r\nstrLoc_A=a\r\n"
                "[[Later]]\r\nx=1\r\n");
    ASSERT_TRUE(assemble()) << errorText.toStdString();
    const std::string text = target("language.ini");
    EXPECT_NE(text.find("\r\n[Later]]\r\nx=1"), std::string::npos);
    EXPECT_NE(text.find("strLoc_A=a\r\n["), std::string::npos);
}

}  // namespace
