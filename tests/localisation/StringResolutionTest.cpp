#include <gtest/gtest.h>

#include <QRandomGenerator>

#include "core/BasicText.h"
#include "core/QtPrinters.h"
#include "localisation/LanguageText.h"

namespace {

using localisation::LanguageText;

const QString kError = "Error in function GetStrLocValue -- line ";

// A language text with one code-strings section of the given lines, and a section behind it.
LanguageText languageOf(const QStringList& codeStrings) {
    LanguageText language("TW");
    language.SetLanguageText("; head\r\n[[Code_Strings]]\r\n" + codeStrings.join("\r\n") +
                             "\r\n[[Menus]]\r\n");
    language.InitCodeStrings();
    return language;
}

// Sections are found with or without their brackets, their names compare with case, and
// blank and comment lines are dropped. The last section of a text ends one character early.
TEST(GetSectionTest, FindsSectionsWithOrWithoutBracketsAndDropsComments) {
    LanguageText language("TW");
    language.SetLanguageText(
        "[[Menus]]\r\n  Menu1=mnuPopup|Open  \r\n\r\n  ; a note\r\n;x\r\nMenu2=b\r\n"
        "[[TW_frmMain]]\r\ncmdScanNow.Caption=\"Scan\"\r\nlast=abc");
    const QStringList expected{"[[Menus]]", "Menu1=mnuPopup|Open", "Menu2=b"};
    EXPECT_EQ(language.GetSection("Menus"), expected);
    QString name = "[[Menus]]";
    EXPECT_EQ(language.GetSection(name), expected);
    QString bare = "TW_frmMain";
    EXPECT_EQ(language.GetSection(bare),
              (QStringList{"[[TW_frmMain]]", "cmdScanNow.Caption=\"Scan\"", "last=ab"}));
    EXPECT_EQ(bare, "[[TW_frmMain]]");
    EXPECT_EQ(language.GetSection("Missing"), QStringList{QString()});
    EXPECT_EQ(language.GetSection("menus"), QStringList{QString()});
}

// A value is found by its whole name before the equal sign, the first line first; two equal
// signs let a value hold one.
TEST(GetStrLocValueTest, MatchesTheWholeNameBeforeTheEqualSign) {
    const LanguageText language =
        languageOf({"strLoc_FooBar=long", "strLoc_Foo = short ", "strLoc_Foo=second", "strLoc_Bare",
                    "strLoc_Q=\"quoted\"", "strLoc_Half=\"abc"});
    EXPECT_EQ(language.GetStrLocValue("strLoc_Foo"), "short");
    EXPECT_EQ(language.GetStrLocValue("strLoc_FooBar"), "long");
    EXPECT_EQ(language.GetStrLocValue("strLoc_Fo"), kError + "strLoc_Fo");
    EXPECT_EQ(language.GetStrLocValue("strLoc_Bare"), kError + "strLoc_Bare");
    EXPECT_EQ(language.GetStrLocValue("strLoc_Q"), "quoted");
    EXPECT_EQ(language.GetStrLocValue("strLoc_Half"), "abc");
    EXPECT_EQ(language.ProcessLanguageLine("a==b=c"), "b=c");
    EXPECT_EQ(language.ProcessLanguageLine("a=  \"  padded  \"  "), "  padded  ");
    for (const char* line : {"a=b=c", "a==b==c", "novalue"}) {
        EXPECT_EQ(language.ProcessLanguageLine(line),
                  "Error in function ProcessLanguageLine: " + QString(line));
    }
    EXPECT_EQ(languageOf({"strLoc_Days= Monday | Tuesday|Wednesday "})
                  .FillComboFromLanguage("strLoc_Days"),
              (QStringList{"Monday", "Tuesday", "Wednesday"}));
}

TEST(ResolveVariablesTest, ExpandsEveryPlaceholderForm) {
    LanguageText language =
        languageOf({"strLoc_Ok=OK", "str_Name=Tallowick", "strLoc_ErrorString=Error",
                    "strURL_Site=http://x", "strLoc_Nested={str_Name} at {strURL_Site}",
                    "strLoc_Empty=", "strLoc_CS_ProductName_TW=Tallowick"});
    EXPECT_EQ(language.ResolveVariables("{strLoc_Nested}!"), "Tallowick at http://x!");
    EXPECT_EQ(language.ResolveVariables("a{CRLF}b"), "a\r\nb");
    EXPECT_EQ(language.ResolveVariables("{#NumItems} found"), ">>>NumItems} found");
    EXPECT_EQ(language.ResolveVariables("{#AppID}-{#AppID}"), "TW-TW");
    EXPECT_EQ(language.ResolveVariables("{strLoc_CS_ProductName_{#AppID}}"), "Tallowick");
    EXPECT_EQ(language.ResolveVariables("use {MNUPopup}"), "use MNUPopup");
    EXPECT_EQ(language.ResolveVariables("x{strLoc_Missing}y"), "x" + kError + "strLoc_Missingy");
    // An empty value leaves its placeholder.
    EXPECT_EQ(language.ResolveVariables("{strLoc_Empty}"), "{strLoc_Empty}");
    // A brace pair of no known form blocks everything behind it.
    EXPECT_EQ(language.ResolveVariables("{unknown}x{strLoc_Ok}"), "{unknown}x{strLoc_Ok}");
    EXPECT_EQ(language.ResolveVariables("{strLoc_Ok} {"), "OK {");
    // The shelter keeps the shared values open.
    language.setShelterSharedValues(true);
    EXPECT_EQ(language.ResolveVariables("{str_Name} {strLoc_ErrorString} {strLoc_Ok}"),
              "{str_Name} {strLoc_ErrorString} OK");
}

TEST(ResolveVariablesTest, VariablesThatNameEachOtherEndInAnErrorText) {
    const LanguageText language =
        languageOf({"strLoc_A=a{strLoc_B}", "strLoc_B=b{strLoc_A}", "strLoc_Self={strLoc_Self}"});
    const QString a = language.GetStrLocValue("strLoc_A");
    EXPECT_TRUE(a.startsWith("ab"));
    EXPECT_TRUE(a.contains("variables refer to each other: strLoc_A > strLoc_B > strLoc_A"));
    EXPECT_TRUE(language.GetStrLocValue("strLoc_Self").contains("refer to each other"));
    // The error text of a line that names itself holds the placeholder again; put back at
    // every pass it would double the text each time.
    const LanguageText broken = languageOf({"strLoc_Loop=a=b {strLoc_Loop}"});
    EXPECT_EQ(broken.ResolveVariables("<{strLoc_Loop}>"),
              "<Error in function GetStrLocValue -- variables refer to each other: strLoc_Loop>");
    // The guard leaves no trace: an acyclic lookup afterwards is unaffected.
    EXPECT_TRUE(language.GetStrLocValue("strLoc_B").startsWith("ba"));
}

// The index must find what a walk over the lines finds, first match first, for any mix of
// names, prefixes of names, blanks around "=" and duplicates.
TEST(GetStrLocValueTest, TheIndexAgreesWithTheLinearSearch) {
    const QStringList names{"strLoc_A", "strLoc_AB", "strLoc_A B", "str_A", "", "strLoc_Ab"};
    auto* random = QRandomGenerator::global();
    for (int round = 0; round < 50; ++round) {
        QStringList lines;
        for (int i = 0; i < 30; ++i) {
            const QString name = names[random->bounded(int(names.size()))];
            const QString gap = QString(random->bounded(3), u' ');
            lines << name + gap + (random->bounded(4) == 0 ? "" : "=") + gap + QString::number(i);
        }
        const LanguageText language = languageOf(lines);
        for (const QString& name : names + QStringList{"strLoc_", "strLoc_A "}) {
            QString expected = kError + name;
            for (const QString& line : language.codeStrings()) {
                const QStringList parts = core::split(line, "=");
                if (line.startsWith(name) && parts.size() >= 2 && core::trim(parts[0]) == name) {
                    expected = language.ProcessLanguageLine(line);
                    break;
                }
            }
            EXPECT_EQ(language.GetStrLocValue(name), expected) << lines.join("|").toStdString();
        }
    }
}

}  // namespace
