#include <gtest/gtest.h>

#include "state/ActivityLog.h"
#include "support/TestMachine.h"

namespace {

using namespace state;

const std::string kLog = "C:\\ProgramData\\Tallowick\\Tallowick Log.txt";

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

}  // namespace
