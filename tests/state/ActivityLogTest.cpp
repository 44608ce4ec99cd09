#include <gtest/gtest.h>

#include "state/ActivityLog.h"
#include "support/TestMachine.h"

namespace {

using namespace state;

const std::string kLog = "C:\\ProgramData\\Tallowick\\Tallowick Log.txt";

class RecordingLogView final : public ActivityLogView {
public:
    bool confirmClearLog() override {
        ++asked;
        return answer;
    }
    void showLogFile(const QString& path) override { shown = path; }
    bool answer = true;
    int asked = 0;
    QString shown;
};

class ActivityLogTest : public ::testing::Test {
protected:
    ActivityLogTest() {
        machine.platform().files.MkDir("C:\\ProgramData\\Tallowick");
        machine.platform().files.MkDir("C:\\ProgramData\\Tallowick\\Settings");
        settings.setSettingsPath("C:\\ProgramData\\Tallowick\\Settings\\Tallowick.ini");
    }
    std::optional<std::string> log() { return machine.platform().files.readFile(kLog); }

    testing_support::TestMachine machine;
    modSettings settings{machine.platform()};
    ActivityLog activity{machine.platform(), settings, QString::fromStdString(kLog)};
};

// A missing log is made by the next line; with LogAllActivity 0 the file stays as it is.
TEST_F(ActivityLogTest, LinesAppendOnlyWhileLoggingIsOn) {
    activity.write("Grabbing update for: Zip, 1.0 on URL: http://x");
    activity.write("second");
    EXPECT_EQ(log(), "Grabbing update for: Zip, 1.0 on URL: http://x\r\nsecond\r\n");
    settings.WriteSetting(setting::LogAllActivity, "0");
    activity.write("third");
    EXPECT_EQ(log(), "Grabbing update for: Zip, 1.0 on URL: http://x\r\nsecond\r\n");
}

// The limit is MaximumLogSize megabytes; a log that reaches it is emptied, not rotated. A
// limit that is not a number reads as 0 and empties any log; ClearLargeLogfile 0 keeps it.
TEST_F(ActivityLogTest, ALogAtItsLimitIsEmptied) {
    machine.placeFile(kLog, std::string(1024 * 1024 - 1, 'x'));
    settings.WriteSetting(setting::MaximumLogSize, "1");
    activity.ClearLargeLogfile();
    EXPECT_EQ(log()->size(), 1024u * 1024 - 1);
    activity.write("");
    activity.ClearLargeLogfile();
    EXPECT_EQ(log(), "");

    machine.placeFile(kLog, "line\r\n");
    settings.WriteSetting(setting::MaximumLogSize, "big");
    settings.WriteSetting(setting::ClearLargeLogfile, "0");
    activity.ClearLargeLogfile();
    EXPECT_EQ(log(), "line\r\n");
    settings.WriteSetting(setting::ClearLargeLogfile, "1");
    activity.ClearLargeLogfile();
    EXPECT_EQ(log(), "");
}

// The size box stores what is typed; text that is not a number puts "2" back in the box.
TEST_F(ActivityLogTest, TheSizeBoxStoresAsTypedAndResetsText) {
    QString box;
    activity.txtLogSize_Change("5", [&box](const QString& text) { box = text; });
    EXPECT_EQ(box, "");
    activity.txtLogSize_Change("five", [&box](const QString& text) { box = text; });
    EXPECT_EQ(settings.ReadSetting(setting::MaximumLogSize, "2"), "five");
    EXPECT_EQ(box, "2");
}

TEST_F(ActivityLogTest, TheLinksClearAfterAYesAndShowTheFile) {
    machine.placeFile(kLog, "old\r\n");
    RecordingLogView view;
    view.answer = false;
    activity.lblCmdClearLog_Click(view);
    EXPECT_EQ(log(), "old\r\n");
    view.answer = true;
    activity.lblCmdClearLog_Click(view);
    EXPECT_EQ(log(), "");
    EXPECT_EQ(view.asked, 2);
    activity.lblCmdViewLog_Click(view);
    EXPECT_EQ(view.shown, QString::fromStdString(kLog));
}

}  // namespace
