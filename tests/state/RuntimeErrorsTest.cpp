#include <gtest/gtest.h>

#include <cstdlib>

#include "state/RuntimeErrors.h"
#include "support/RecordingMachine.h"

namespace {

using namespace state;

class RuntimeErrorsTest : public ::testing::Test {
protected:
    RuntimeErrorsTest() { unsetenv("TWVerbose"); }
    ~RuntimeErrorsTest() override { unsetenv("TWVerbose"); }

    RuntimeError fault() { return {53, "File not found", "Tallowick", 120}; }

    testing_support::RecordingMachine recording;
    testing_support::TestMachine& machine = recording.test;
    testing_support::RecordingMessageBox& box = recording.box;
    modSettings settings{machine.platform()};
    RuntimeErrors errors{machine.platform(), settings};
};

// Outside debug mode the user sees nothing; the text comes back without line ends when the
// caller gave none, and the error object is cleared.
TEST_F(RuntimeErrorsTest, QuietUnlessDebugOrVerbose) {
    RuntimeError error = fault();
    error.description = "File\r\nnot found";
    QString message;
    errors.ReportRuntimeError(error, "CheckSettings", "", &message);
    EXPECT_TRUE(box.shown.empty());
    EXPECT_TRUE(message.contains(" Error Line: 120"));
    EXPECT_FALSE(message.contains('\r'));
    EXPECT_FALSE(message.contains('\n'));
    EXPECT_EQ(error.number, 0);

    QString untouched = "kept";
    error = fault();
    errors.ReportRuntimeError(error, "CheckSettings", "while saving", &untouched);
    EXPECT_EQ(untouched, "kept");
}

// With TWVerbose=1, or in debug mode, the box says "ERROR: " under the family's first
// product's title; a text-less report names its state unknown.
TEST_F(RuntimeErrorsTest, VerboseAndDebugShowTheFault) {
    setenv("TWVerbose", "1", 1);
    RuntimeError error = fault();
    errors.ReportRuntimeError(error, "SendToService", "", nullptr);
    unsetenv("TWVerbose");
    errors.setDebugMode(true);
    error = fault();
    errors.ReportRuntimeError(error, "FreezeDelay", "reading Wait", nullptr);
    ASSERT_EQ(box.shown.size(), 2u);
    EXPECT_EQ(box.shown[0].caption, "Quillfen");
    EXPECT_TRUE(box.shown[0].text.startsWith("ERROR: "));
    EXPECT_TRUE(box.shown[0].text.contains("State Unknown"));
    EXPECT_TRUE(box.shown[1].text.contains("reading Wait"));
}

// The time of the first fault is kept in RunTime/Start once the settings file is known.
TEST_F(RuntimeErrorsTest, TheFirstFaultsTimeIsKept) {
    machine.platform().files.MkDir("C:\\ProgramData\\Tallowick");
    settings.setSettingsPath("C:\\ProgramData\\Tallowick\\Tallowick.ini");
    RuntimeError error = fault();
    errors.ReportRuntimeError(error, "CheckSettings", "", nullptr);
    const QString first = settings.ReadSetting(setting::RunTimeStart, "");
    EXPECT_FALSE(first.isEmpty());
    settings.WriteSetting(setting::RunTimeStart, "1/2/2020 3:04:05 AM");
    error = fault();
    errors.ReportRuntimeError(error, "CheckSettings", "", nullptr);
    EXPECT_EQ(settings.ReadSetting(setting::RunTimeStart, ""), "1/2/2020 3:04:05 AM");
}

TEST_F(RuntimeErrorsTest, AHandlersLineNamesItsForm) {
    EXPECT_EQ(HandlerErrorLine(fault(), "Form_Load", CodeUnit::Form, "frmMain"),
              "Error 53 (File not found) in procedure Form_Load at 120 of Form frmMain");
}

}  // namespace
