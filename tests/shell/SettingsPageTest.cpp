#include <gtest/gtest.h>

#include <QStringList>

#include <map>

#include "shell/SettingsPage.h"
#include "state/ProductNames.h"
#include "support/RecordingMessageBox.h"
#include "support/TestMachine.h"

namespace {

using namespace state;
using shell::SettingsPage;
using shell::SettingsView;

const std::string kLog = "C:\\ProgramData\\Tallowick\\Tallowick Log.txt";

class RecordingChannel final : public ServiceChannel {
public:
    bool SendToService(const QString& commandText) override {
        sent << commandText;
        return true;
    }
    QStringList sent;
};

class RecordingView final : public SettingsView {
public:
    void setStartWithWindows(bool on) override { startWithWindows = on; }
    void setProgramSetting(int index, bool on) override { boxes[index] = on; }
    void setLogSize(const QString& text) override { logSize = text; }
    void setSchedulerAction(const QString& action) override { schedulerAction = action; }
    void setActivateLiveUpdate(bool on) override { liveUpdate = on; }
    void showLogFile(const QString& path) override { shownLog = path; }

    std::optional<bool> startWithWindows;
    std::map<int, bool> boxes;
    QString logSize;
    QString schedulerAction;
    std::optional<bool> liveUpdate;
    QString shownLog;
};

class SettingsPageTest : public ::testing::Test {
protected:
    SettingsPageTest() {
        machine.platform().files.MkDir("C:\\ProgramData\\Tallowick");
        machine.platform().files.MkDir("C:\\ProgramData\\Tallowick\\Settings");
        settings.setSettingsPath("C:\\ProgramData\\Tallowick\\Settings\\Tallowick.ini");
    }
    void setRunValue(const QString& data) {
        registry.SetStringValue(product::runKey(), product::name(), data);
    }

    testing_support::RecordingMessageBox box;
    testing_support::TestMachine machine;
    const UniMessageBox messages{box, "Tallowick"};
    modSettings settings{machine.platform()};
    ActivityLog log{machine.platform(), settings, QString::fromStdString(kLog)};
    localisation::LanguageText language{"TW"};
    modRegistry registry{machine.platform()};
    RecordingChannel channel;
    RecordingView view;
    bool loading = false;
    SettingsPage page{settings,    registry, channel,
                      log,         language, messages,
                      view,        loading,  "C:\\Program Files\\Tallowick",
                      "Tallo-wick"};
};

// A first run: every box takes its default, only ScanOnLoad off; the control centre's box is
// written back; no Run value means the program does not start with Windows.
TEST_F(SettingsPageTest, FirstRunShowsTheDefaults) {
    page.ApplySettings();
    const std::map<int, bool> expected{{0, true}, {1, true}, {2, true}, {3, true},  {4, true},
                                       {5, true}, {6, true}, {7, true}, {8, false}, {9, true}};
    EXPECT_EQ(view.boxes, expected);
    EXPECT_EQ(view.startWithWindows, false);
    EXPECT_EQ(view.logSize, "2");
    EXPECT_EQ(view.schedulerAction, "0");
    EXPECT_EQ(view.liveUpdate, true);
    EXPECT_EQ(settings.ReadSetting(setting::BrenmoorControlCenter, "x"), "1");
    EXPECT_EQ(settings.ReadSetting(setting::RunOnStartup, "x"), "0");
}

// The registry is the truth for starting with Windows: the file's key follows it, and a Run
// value whose data is the failure word, in any case, counts as absent.
TEST_F(SettingsPageTest, TheRunValueDecidesStartWithWindows) {
    registry.CreateKey(product::runKey());
    for (const char* failure : {"Error", "ERROR", "error"}) {
        settings.WriteSetting(setting::RunOnStartup, "0");
        setRunValue("\"C:\\Program Files\\Tallowick\\Tallo-wick.Exe\" /boot");
        page.ApplySettings();
        EXPECT_EQ(view.startWithWindows, true);
        EXPECT_EQ(settings.ReadSetting(setting::RunOnStartup, "x"), "1");

        setRunValue(failure);
        page.ApplySettings();
        EXPECT_EQ(view.startWithWindows, false) << failure;
        EXPECT_EQ(settings.ReadSetting(setting::RunOnStartup, "x"), "0") << failure;
    }
}

// Each click stores at once, outside the loading state only; the start-with-Windows box sends
// the Run value, or its delete, through the service.
TEST_F(SettingsPageTest, ClicksStoreAtOnceOutsideLoading) {
    loading = true;
    page.chkProgramSettings_Click(8, true);
    page.chkStartWithWin_Click(true);
    EXPECT_EQ(settings.ReadSetting(setting::ScanOnLoad, "unset"), "unset");
    EXPECT_TRUE(channel.sent.isEmpty());

    loading = false;
    page.chkProgramSettings_Click(8, true);
    EXPECT_EQ(settings.ReadSetting(setting::ScanOnLoad, "unset"), "1");
    page.chkStartWithWin_Click(true);
    page.chkStartWithWin_Click(false);
    const QString run = "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Run";
    EXPECT_EQ(channel.sent,
              QStringList({"RegSetString|" + run +
                               "|Tallowick|\"C:\\Program Files\\Tallowick\\Tallo-wick.Exe\" /boot",
                           "RegDeleteVal|" + run + "|Tallowick"}));
    EXPECT_EQ(settings.ReadSetting(setting::RunOnStartup, "x"), "0");
}

// The limit's box stores what is typed and puts the default back for text that is no number;
// the log's links empty it only after a Yes, and show it.
TEST_F(SettingsPageTest, TheLogsBoxAndLinks) {
    page.txtLogSize_Change("5");
    EXPECT_EQ(view.logSize, "");
    page.txtLogSize_Change("five");
    EXPECT_EQ(settings.ReadSetting(setting::MaximumLogSize, "2"), "five");
    EXPECT_EQ(view.logSize, "2");

    machine.placeFile(kLog, "old\r\n");
    box.answer = platform::mbresult::No;
    page.lblCmdClearLog_Click();
    EXPECT_EQ(machine.platform().files.readFile(kLog), "old\r\n");
    box.answer = platform::mbresult::Yes;
    page.lblCmdClearLog_Click();
    EXPECT_EQ(machine.platform().files.readFile(kLog), "");
    ASSERT_EQ(box.shown.size(), 2u);
    EXPECT_EQ(box.shown[0].style, platform::mbstyle::YesNo);
    page.lblCmdViewLog_Click();
    EXPECT_EQ(view.shownLog, QString::fromStdString(kLog));
}

}  // namespace
