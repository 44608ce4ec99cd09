// The links of a result row, with the machine's browser standing by.
#include <gtest/gtest.h>

#include <QFile>

#include "RecordingPages.h"
#include "core/QtPrinters.h"
#include "platform/portable/PortableShell.h"
#include "support/TestMachine.h"

namespace {

// What the shell was asked to start: the lines of run/launched.log without their times.
QStringList launched(const testing_support::TestMachine& machine) {
    QFile file(QString::fromStdString((machine.folder() / "run" / "launched.log").string()));
    QStringList lines;
    if (file.open(QIODevice::ReadOnly)) {
        for (const QString& line :
             QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts)) {
            lines << line.section('\t', 1);
        }
    }
    return lines;
}

// A machine whose browser is a host program that does nothing.
struct BrowserMachine : testing_support::TestMachine {
    BrowserMachine() { mapProgram(platform::portable::PortableShell::kBrowser, "/bin/true"); }
};

class ResultsActionsTest : public ::testing::Test {
protected:
    ResultsActionsTest() {
        platform.files.MkDir("C:\\ProgramData\\Tallowick");
        platform.files.MkDir("C:\\ProgramData\\Tallowick\\Settings");
        settings.setSettingsPath("C:\\ProgramData\\Tallowick\\Settings\\Tallowick.ini");
        language.SetLanguageText(
            "[[Code_Strings]]\r\nstrURL_SH_Corporate=http://127.0.0.1:9\r\na=1\r\nb=2\r\n; "
            "end\r\n");
        language.InitCodeStrings();
    }
    QString activityLog() {
        return QString::fromStdString(
            platform.files.readFile("C:\\ProgramData\\Tallowick\\Tallowick Log.txt").value_or(""));
    }

    BrowserMachine machine;
    platform::Platform& platform = machine.platform();
    state::modSettings settings{platform};
    state::ActivityLog log{platform, settings, "C:\\ProgramData\\Tallowick\\Tallowick Log.txt"};
    localisation::LanguageText language{"TW"};
    RecordingScanPage page;
    scan::ResultsActions actions{platform, settings, log, language, page, page.box};
    const QString browser = QString::fromLatin1(platform::portable::PortableShell::kBrowser);
};

// The notice comes first unless it is switched off; the browser opens the address either way
// and the log says so.
TEST_F(ResultsActionsTest, GetUpdateOpensTheDownloadPage) {
    actions.GetUpdate("Tool", "Maker", "https://example.com/get?tool=1&x=2");
    EXPECT_EQ(page.calls, QStringList{"showUpdatePrompt"});
    settings.WriteSetting("General", "ShowUpdateReminder", "0");
    actions.GetUpdate("Other App", "Maker", "https://www.google.com/search?hl=en&q=Other+App");
    EXPECT_EQ(page.calls, QStringList{"showUpdatePrompt"});
    EXPECT_EQ(launched(machine),
              (QStringList{browser + "\thttps://example.com/get?tool=1&x=2",
                           browser + "\thttps://www.google.com/search?hl=en&q=Other+App"}));
    EXPECT_EQ(activityLog(),
              "Grabbing update for: Tool, Maker on URL: https://example.com/get?tool=1&x=2\r\n"
              "Grabbing update for: Other App, Maker on URL: "
              "https://www.google.com/search?hl=en&q=Other+App\r\n");
}

// The report page gets the row's texts as they are, so an "&" in a name cuts it on the
// server's side; Read More joins four texts in one box.
TEST_F(ResultsActionsTest, ReportErrorAndReadMore) {
    actions.ReportError("A&B Tool", "Contoso", "2.0 (2.0.1)", "2.1");
    EXPECT_EQ(launched(machine),
              QStringList{browser + "\thttp://127.0.0.1:9/tw/updatesserver/report_error.asp"
                                    "?name=A&B Tool&publisher=Contoso&installedversion=2.0 "
                                    "(2.0.1)&version=2.1&ve=1.0.0"});
    actions.ReadMore("one", "two", "three", "four");
    ASSERT_EQ(page.boxes.size(), 1u);
    EXPECT_EQ(page.boxes[0].first, "one\r\ntwo\r\nthree\r\n\r\nfour");
    EXPECT_EQ(page.boxes[0].second, platform::mbstyle::IconInformation);
    EXPECT_EQ(activityLog(), "");
}

// A target that no program of the machine stands for is noted and reported as the shell
// reports it, never started.
TEST(PortableShellTest, UnmappedTargetsAreNotedNotStarted) {
    testing_support::TestMachine machine;
    auto& shell = machine.platform().shell;
    EXPECT_EQ(shell.ShellExecuteA(0, "Open", "https://example.com", "", "", 3),
              platform::shellerror::NoAssociation);
    EXPECT_EQ(shell.ShellExecuteA(0, "Open", "C:\\Tools\\tool.exe", "/a \"b c\"", "", 1),
              platform::shellerror::FileNotFound);
    EXPECT_EQ(launched(machine),
              (QStringList{QString(platform::portable::PortableShell::kBrowser) +
                               "\thttps://example.com\t(not started: Open, show 3, no program "
                               "stands for it)",
                           "C:\\Tools\\tool.exe\t/a\tb c\t(not started: Open, show 1, no program "
                           "stands for it)"}));
}

}  // namespace
