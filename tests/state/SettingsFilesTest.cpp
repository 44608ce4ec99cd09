#include <gtest/gtest.h>

#include "state/SettingsFiles.h"
#include "support/RecordingMachine.h"

namespace {

using namespace state;

class SettingsFilesTest : public ::testing::Test {
protected:
    std::optional<std::string> read(const std::string& path) {
        return machine.platform().files.readFile(path);
    }

    testing_support::RecordingMachine recording;
    testing_support::TestMachine& machine = recording.test;
    QString dataFolder = "C:\\ProgramData\\Tallowick\\";
    lst holder;
    SettingsFiles files{machine.platform(), dataFolder, holder, "Tallowick"};
};

// Lines end at CR LF or CR; a last line without an end counts, a final empty one does not;
// an empty file is an empty list; a missing file is false without a word.
TEST_F(SettingsFilesTest, LoadFilesSplitsLines) {
    QStringList list{"stale"};
    machine.placeFile("C:\\Data\\a.txt", "one\r\ntwo\rthree\r\n\r\nfive");
    EXPECT_TRUE(files.LoadFiles("C:\\Data\\a.txt", list));
    EXPECT_EQ(list, QStringList({"one", "two", "three", "", "five"}));
    machine.placeFile("C:\\Data\\b.txt", "\xEF\xBB\xBFGr\xC3\xBC\xC3\x9F\x65\r\n\r\n");
    EXPECT_TRUE(files.LoadFiles("C:\\Data\\b.txt", list));
    EXPECT_EQ(list, QStringList({"Grüße"}));
    machine.placeFile("C:\\Data\\empty.txt", "");
    EXPECT_TRUE(files.LoadFiles("C:\\Data\\empty.txt", list));
    EXPECT_TRUE(list.isEmpty());
    EXPECT_FALSE(files.LoadFiles("C:\\Data\\missing.txt", list));
    EXPECT_TRUE(recording.box.shown.empty());
}

// A save replaces the file whole, no line end behind the last line; a save that fails is told
// without the file's name; nothing is saved before the data folder is known.
TEST_F(SettingsFilesTest, SavesReplaceTheFileAndFailuresHideItsName) {
    machine.placeFile("C:\\ProgramData\\Tallowick\\Settings\\Ignored.cus",
                      "a much longer old text");
    holder.lstIgnoreListFile = {"Zip|1.0", "Viewer|2"};
    files.SaveData();
    EXPECT_EQ(read("C:\\ProgramData\\Tallowick\\Settings\\Ignored.cus"), "Zip|1.0\r\nViewer|2");

    // The fault's own number and description: a missing folder, a folder in the file's place.
    machine.placeFile("C:\\ProgramData\\Tallowick\\Settings\\x.ini\\inside", "");
    files.SaveSettingsToFile({"[General]", "A=1"}, "Missing\\", "x.ini", false);
    files.SaveSettingsToFile({"[General]", "A=1"}, "Settings\\", "x.ini", false);
    files.SaveToFile("C:\\Missing\\y.txt", {"y"});
    ASSERT_EQ(recording.box.shown.size(), 3u);
    EXPECT_EQ(recording.box.shown[0].text,
              "Error 76 (Path not found) in procedure SaveSettingsToFile at 0 of Module "
              "modSettings");
    EXPECT_EQ(recording.box.shown[1].text,
              "Error 75 (Path/File access error) in procedure SaveSettingsToFile at 0 of Module "
              "modSettings");
    EXPECT_EQ(recording.box.shown[2].text,
              "Error 76 (Path not found) in procedure SaveToFile at 0 of Module modSettings");

    files.SaveSettingsToFile({"x"}, "Settings\\", "u.txt", true);
    EXPECT_EQ(read("C:\\ProgramData\\Tallowick\\Settings\\u.txt"), "\xEF\xBB\xBFx");

    dataFolder.clear();
    files.SaveSettingsToFile({"x"}, "Settings\\", "later.txt", false);
    EXPECT_FALSE(read("C:\\ProgramData\\Tallowick\\Settings\\later.txt"));
}

}  // namespace
