#include <gtest/gtest.h>

#include <QFile>

#include "state/SettingNames.h"
#include "state/modSettings.h"
#include "support/TestMachine.h"

namespace {

using namespace state;

const QString kSettings = "C:\\ProgramData\\Tallowick\\Settings\\Tallowick.ini";

class SettingsTest : public ::testing::Test {
protected:
    SettingsTest() {
        machine.platform().files.MkDir("C:\\ProgramData\\Tallowick");
        machine.platform().files.MkDir("C:\\ProgramData\\Tallowick\\Settings");
        settings.setSettingsPath(kSettings);
    }
    std::optional<std::string> file() {
        return machine.platform().files.readFile(kSettings.toStdString());
    }

    testing_support::TestMachine machine;
    modSettings settings{machine.platform()};
};

// A first run has no file: every key reads the default its reader passes, reading makes no
// file, and the first write makes it with that one key.
TEST_F(SettingsTest, FirstRunReadsDefaultsAndWritesKeyByKey) {
    EXPECT_EQ(settings.ReadSetting(setting::ScanOnLoad, setting::Off), "0");
    EXPECT_EQ(settings.ReadSetting(setting::BrenmoorControlCenter, setting::On), "1");
    EXPECT_EQ(settings.ReadSetting(setting::BrenmoorControlCenter,
                                   setting::BrenmoorControlCenterInNavigation),
              "0");
    EXPECT_FALSE(file());
    settings.WriteSetting(setting::ScanOnLoad, "1");
    EXPECT_EQ(file(), "[General]\r\nScanOnLoad=1\r\n");
    EXPECT_EQ(settings.ReadSetting("general", "scanonload", "0"), "1");
    settings.DeleteSetting(setting::ScanOnLoad.section, setting::ScanOnLoad.name);
    EXPECT_EQ(settings.ReadSetting(setting::ScanOnLoad, setting::Off), "0");
}

// Before the data folder is known nothing is read or written.
TEST_F(SettingsTest, NoSettingsPathMeansDefaultsOnly) {
    modSettings early(machine.platform());
    early.WriteSetting(setting::ScanOnLoad, "1");
    EXPECT_EQ(early.ReadSetting(setting::ScanOnLoad, setting::Off), "0");
    EXPECT_FALSE(file());
}

TEST_F(SettingsTest, ValuesAreCutAt255Characters) {
    const QString longValue(300, u'x');
    settings.WriteSetting(setting::UID, longValue);
    EXPECT_EQ(settings.ReadSetting(setting::UID, ""), longValue.left(255));
}

// Garbage, a file without sections and a read-only file: keys read their defaults or what is
// there, a write to the read-only file fails in silence, and a write elsewhere loses nothing.
TEST_F(SettingsTest, BadFilesReadAsDefaultsAndLoseNothing) {
    machine.placeFile(kSettings.toStdString(), std::string("\x00\xff\xfe garbage\x1a", 12));
    EXPECT_EQ(settings.ReadSetting(setting::LogAllActivity, setting::On), "1");

    machine.placeFile(kSettings.toStdString(), "NoSection=1\r\n; note\r\n[General]\r\nA=b\r\n");
    settings.WriteSetting(setting::ScanOnLoad, "1");
    EXPECT_EQ(file(), "NoSection=1\r\n; note\r\n[General]\r\nA=b\r\nScanOnLoad=1\r\n");

    machine.platform().files.SetAttr(kSettings.toStdString(), platform::fileattr::ReadOnly);
    const auto before = file();
    settings.WriteSetting(setting::LastRunBy, "User");
    EXPECT_EQ(file(), before);
    EXPECT_EQ(settings.ReadSetting(setting::LastRunBy, ""), "");
}

}  // namespace
