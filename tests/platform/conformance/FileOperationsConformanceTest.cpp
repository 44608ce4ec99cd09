// The file operations the privileged service carries out (Kill, SetAttr, FileLen and the
// FileSystemObject's folder calls) and the folder watch, with the rules they have on Windows.
#include <gtest/gtest.h>

#include <chrono>

#include "support/TestMachine.h"

namespace {

namespace fileattr = platform::fileattr;

class FileOperationsConformance : public ::testing::Test {
protected:
    testing_support::TestMachine machine;
    platform::FileSystem& files = machine.platform().files;
};

TEST_F(FileOperationsConformance, FileLenCountsTheBytesOfAFileOnly) {
    machine.placeFile("C:\\Data\\Five.txt", "12345");
    machine.placeFile("C:\\Data\\Empty.txt", "");
    EXPECT_EQ(files.FileLen("c:\\DATA\\five.TXT"), 5u);
    EXPECT_EQ(files.FileLen("C:\\Data\\Empty.txt"), 0u);
    EXPECT_FALSE(files.FileLen("C:\\Data").has_value());
    EXPECT_FALSE(files.FileLen("C:\\Data\\Missing.txt").has_value());
    EXPECT_FALSE(files.SetAttr("C:\\Data\\Missing.txt", fileattr::ReadOnly));
}

// Kill takes one existing file that is not read-only; whatever it refuses stays as it was,
// and so does a read-only file that is written to.
TEST_F(FileOperationsConformance, KillAndWritesRespectTheReadOnlyMark) {
    machine.placeFile("C:\\Data\\Gone.txt", "x");
    machine.placeFile("C:\\Data\\Kept.txt", "kept");
    machine.placeFile("C:\\Data\\Sub\\Inner.txt", "x");

    EXPECT_TRUE(files.Kill("c:\\data\\GONE.TXT"));
    EXPECT_FALSE(files.FileExists("C:\\Data\\Gone.txt"));
    EXPECT_FALSE(files.Kill("C:\\Data\\Gone.txt"));
    EXPECT_FALSE(files.Kill("C:\\Data\\Sub"));
    EXPECT_TRUE(files.FileExists("C:\\Data\\Sub\\Inner.txt"));
    EXPECT_FALSE(files.Kill("C:\\Data\\*.txt"));
    EXPECT_TRUE(files.FileExists("C:\\Data\\Kept.txt"));

    ASSERT_TRUE(files.SetAttr("C:\\DATA\\kept.txt", fileattr::ReadOnly));
    EXPECT_FALSE(files.Kill("C:\\Data\\Kept.txt"));
    EXPECT_FALSE(files.writeFile("C:\\Data\\Kept.txt", "changed"));
    EXPECT_FALSE(files.appendFile("C:\\Data\\Kept.txt", "more"));
    EXPECT_EQ(files.readFile("C:\\Data\\Kept.txt"), "kept");

    ASSERT_TRUE(files.SetAttr("C:\\Data\\Kept.txt", fileattr::Normal));
    EXPECT_TRUE(files.appendFile("C:\\Data\\Kept.txt", "+"));
    EXPECT_EQ(files.readFile("C:\\Data\\Kept.txt"), "kept+");
    EXPECT_TRUE(files.Kill("C:\\Data\\Kept.txt"));
    EXPECT_FALSE(files.FileExists("C:\\Data\\Kept.txt"));
}

// The contents go into the destination with their nested folders; into an existing folder
// they join what is there, entries of the same name found without regard to case.
TEST_F(FileOperationsConformance, CopyFolderMergesAndReplacesOnlyWithOverwrite) {
    machine.placeFile("C:\\Source\\a.txt", "new a");
    machine.placeFile("C:\\Source\\Sub\\Deeper\\b.txt", "new b");

    ASSERT_TRUE(files.CopyFolder("c:\\SOURCE", "C:\\Copy", false));
    EXPECT_EQ(files.readFile("C:\\Copy\\a.txt"), "new a");
    EXPECT_EQ(files.readFile("C:\\Copy\\Sub\\Deeper\\b.txt"), "new b");
    EXPECT_EQ(files.readFile("C:\\Source\\Sub\\Deeper\\b.txt"), "new b");

    // Into an existing folder: what is there stays, the rest joins it.
    machine.placeFile("C:\\Target\\Own.txt", "own");
    machine.placeFile("C:\\Target\\SUB\\Kept.txt", "kept");
    ASSERT_TRUE(files.CopyFolder("C:\\Source", "C:\\Target", false));
    EXPECT_EQ(files.readFile("C:\\Target\\Own.txt"), "own");
    EXPECT_EQ(files.readFile("C:\\Target\\SUB\\Kept.txt"), "kept");
    EXPECT_EQ(files.readFile("C:\\Target\\SUB\\DEEPER\\B.TXT"), "new b");

    // An existing file stops the copy unless it may be replaced.
    machine.placeFile("C:\\Older\\A.TXT", "old a");
    EXPECT_FALSE(files.CopyFolder("C:\\Source", "C:\\Older", false));
    EXPECT_EQ(files.readFile("C:\\Older\\A.TXT"), "old a");
    ASSERT_TRUE(files.CopyFolder("C:\\Source", "C:\\Older", true));
    EXPECT_EQ(files.readFile("C:\\Older\\A.TXT"), "new a");
    EXPECT_EQ(files.readFile("C:\\Older\\Sub\\Deeper\\b.txt"), "new b");

    // Not even overwrite replaces a read-only file.
    ASSERT_TRUE(files.writeFile("C:\\Source\\a.txt", "newer a"));
    ASSERT_TRUE(files.SetAttr("C:\\Older\\a.txt", fileattr::ReadOnly));
    EXPECT_FALSE(files.CopyFolder("C:\\Source", "C:\\Older", true));
    EXPECT_EQ(files.readFile("C:\\Older\\A.TXT"), "new a");

    EXPECT_FALSE(files.CopyFolder("C:\\Missing", "C:\\Elsewhere", true));
    EXPECT_FALSE(files.FolderExists("C:\\Elsewhere"));
    machine.placeFile("C:\\Plain.txt", "plain");
    EXPECT_FALSE(files.CopyFolder("C:\\Source", "C:\\Plain.txt", true));
    EXPECT_EQ(files.readFile("C:\\Plain.txt"), "plain");
}

TEST_F(FileOperationsConformance, DeleteFolderTakesReadOnlyEntriesOnlyWithForce) {
    machine.placeFile("C:\\Old\\a.txt", "a");
    machine.placeFile("C:\\Old\\Sub\\b.txt", "b");
    machine.placeFile("C:\\Old\\Locked\\c.txt", "c");
    ASSERT_TRUE(files.SetAttr("C:\\Old\\Sub\\b.txt", fileattr::ReadOnly));
    ASSERT_TRUE(files.SetAttr("C:\\Old\\Locked", fileattr::ReadOnly));

    EXPECT_FALSE(files.DeleteFolder("c:\\old", false));
    EXPECT_TRUE(files.FileExists("C:\\Old\\Sub\\b.txt"));
    EXPECT_TRUE(files.DeleteFolder("C:\\OLD", true));
    EXPECT_FALSE(files.FolderExists("C:\\Old"));
    EXPECT_FALSE(files.DeleteFolder("C:\\Old", true));

    // The folder's own mark counts too.
    machine.placeFile("C:\\Sealed\\s.txt", "s");
    ASSERT_TRUE(files.SetAttr("C:\\Sealed", fileattr::ReadOnly));
    EXPECT_FALSE(files.DeleteFolder("C:\\Sealed", false));
    EXPECT_TRUE(files.FileExists("C:\\Sealed\\s.txt"));
    EXPECT_TRUE(files.DeleteFolder("C:\\Sealed", true));
    EXPECT_FALSE(files.FolderExists("C:\\Sealed"));

    machine.placeFile("C:\\Plain\\Sub\\x.txt", "x");
    EXPECT_FALSE(files.DeleteFolder("C:\\Plain\\Sub\\x.txt", true));
    EXPECT_TRUE(files.FileExists("C:\\Plain\\Sub\\x.txt"));
    EXPECT_TRUE(files.DeleteFolder("C:\\Plain", false));
    EXPECT_FALSE(files.FolderExists("C:\\Plain"));
    EXPECT_TRUE(files.FolderExists("C:\\"));
}

// A wait reports what happened in the folder since the previous one, once; when nothing did,
// it answers false after its timeout.
TEST_F(FileOperationsConformance, ChangeNotificationReportsEachChangeOnce) {
    machine.placeFile("C:\\Watched\\Present.txt", "x");
    EXPECT_EQ(files.watchFolder("C:\\Missing"), nullptr);
    EXPECT_EQ(files.watchFolder("C:\\Watched\\Present.txt"), nullptr);
    const auto watch = files.watchFolder("c:\\WATCHED");
    ASSERT_NE(watch, nullptr);

    const auto before = std::chrono::steady_clock::now();
    EXPECT_FALSE(watch->wait(100));
    EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(80));
    EXPECT_EQ(files.readFile("C:\\Watched\\Present.txt"), "x");
    EXPECT_FALSE(watch->wait(50));

    // A change made before the wait is reported by it.
    ASSERT_TRUE(files.writeFile("C:\\Watched\\SentData.dat", "command"));
    EXPECT_TRUE(watch->wait(5000));
    EXPECT_FALSE(watch->wait(50));

    ASSERT_TRUE(files.appendFile("C:\\Watched\\Present.txt", "y"));
    EXPECT_TRUE(watch->wait(5000));
    ASSERT_TRUE(files.Kill("C:\\Watched\\SentData.dat"));
    EXPECT_TRUE(watch->wait(5000));
    EXPECT_FALSE(watch->wait(50));
}

}  // namespace
