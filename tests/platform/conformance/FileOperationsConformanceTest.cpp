// The file operations the privileged service carries out (Kill, SetAttr, FileLen and the
// FileSystemObject's folder calls) and the folder watch, with the rules they have on Windows.
#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "ConformanceTest.h"

namespace {

namespace fileattr = platform::fileattr;

using conformance::at;

class FileOperationsConformance : public conformance::ConformanceTest {
protected:
    platform::FileSystem& files = machine->platform().files;
};

// FileLen is a file's size, found without regard to case; a folder or a missing file has none.
TEST_F(FileOperationsConformance, FileLenCountsTheBytesOfAFileOnly) {
    machine->placeFile(at("\\Data\\Five.txt"), "12345");
    machine->placeFile(at("\\Data\\Empty.txt"), "");
    EXPECT_EQ(files.FileLen(at("\\DATA\\five.TXT")), 5u);
    EXPECT_EQ(files.FileLen(at("\\Data\\Empty.txt")), 0u);
    EXPECT_FALSE(files.FileLen(at("\\Data")).has_value());
    EXPECT_FALSE(files.FileLen(at("\\Data\\Missing.txt")).has_value());
    EXPECT_FALSE(files.SetAttr(at("\\Data\\Missing.txt"), fileattr::ReadOnly));
}

// Kill takes one existing file that is not read-only; whatever it refuses stays as it was,
// and so does a read-only file that is written to.
TEST_F(FileOperationsConformance, KillAndWritesRespectTheReadOnlyMark) {
    machine->placeFile(at("\\Data\\Gone.txt"), "x");
    machine->placeFile(at("\\Data\\Kept.txt"), "kept");
    machine->placeFile(at("\\Data\\Sub\\Inner.txt"), "x");

    EXPECT_TRUE(files.Kill(at("\\data\\GONE.TXT")));
    EXPECT_FALSE(files.FileExists(at("\\Data\\Gone.txt")));
    EXPECT_FALSE(files.Kill(at("\\Data\\Gone.txt")));
    EXPECT_FALSE(files.Kill(at("\\Data\\Sub")));
    EXPECT_TRUE(files.FileExists(at("\\Data\\Sub\\Inner.txt")));
    EXPECT_FALSE(files.Kill(at("\\Data\\*.txt")));
    EXPECT_TRUE(files.FileExists(at("\\Data\\Kept.txt")));

    ASSERT_TRUE(files.SetAttr(at("\\DATA\\kept.txt"), fileattr::ReadOnly));
    EXPECT_FALSE(files.Kill(at("\\Data\\Kept.txt")));
    EXPECT_FALSE(files.writeFile(at("\\Data\\Kept.txt"), "changed"));
    EXPECT_FALSE(files.appendFile(at("\\Data\\Kept.txt"), "more"));
    EXPECT_EQ(files.readFile(at("\\Data\\Kept.txt")), "kept");

    ASSERT_TRUE(files.SetAttr(at("\\Data\\Kept.txt"), fileattr::Normal));
    EXPECT_TRUE(files.appendFile(at("\\Data\\Kept.txt"), "+"));
    EXPECT_EQ(files.readFile(at("\\Data\\Kept.txt")), "kept+");
    EXPECT_TRUE(files.Kill(at("\\Data\\Kept.txt")));
    EXPECT_FALSE(files.FileExists(at("\\Data\\Kept.txt")));
}

// The contents go into the destination with their nested folders; into an existing folder
// they join what is there, entries of the same name found without regard to case.
TEST_F(FileOperationsConformance, CopyFolderMergesAndReplacesOnlyWithOverwrite) {
    machine->placeFile(at("\\Source\\a.txt"), "new a");
    machine->placeFile(at("\\Source\\Sub\\Deeper\\b.txt"), "new b");

    ASSERT_TRUE(files.CopyFolder(at("\\SOURCE"), at("\\Copy"), false));
    EXPECT_EQ(files.readFile(at("\\Copy\\a.txt")), "new a");
    EXPECT_EQ(files.readFile(at("\\Copy\\Sub\\Deeper\\b.txt")), "new b");
    EXPECT_EQ(files.readFile(at("\\Source\\Sub\\Deeper\\b.txt")), "new b");

    // Into an existing folder: what is there stays, the rest joins it.
    machine->placeFile(at("\\Target\\Own.txt"), "own");
    machine->placeFile(at("\\Target\\SUB\\Kept.txt"), "kept");
    ASSERT_TRUE(files.CopyFolder(at("\\Source"), at("\\Target"), false));
    EXPECT_EQ(files.readFile(at("\\Target\\Own.txt")), "own");
    EXPECT_EQ(files.readFile(at("\\Target\\SUB\\Kept.txt")), "kept");
    EXPECT_EQ(files.readFile(at("\\Target\\SUB\\DEEPER\\B.TXT")), "new b");

    // An existing file stops the copy unless it may be replaced.
    machine->placeFile(at("\\Older\\A.TXT"), "old a");
    EXPECT_FALSE(files.CopyFolder(at("\\Source"), at("\\Older"), false));
    EXPECT_EQ(files.readFile(at("\\Older\\A.TXT")), "old a");
    ASSERT_TRUE(files.CopyFolder(at("\\Source"), at("\\Older"), true));
    EXPECT_EQ(files.readFile(at("\\Older\\A.TXT")), "new a");
    EXPECT_EQ(files.readFile(at("\\Older\\Sub\\Deeper\\b.txt")), "new b");

    // Not even overwrite replaces a read-only file.
    ASSERT_TRUE(files.writeFile(at("\\Source\\a.txt"), "newer a"));
    ASSERT_TRUE(files.SetAttr(at("\\Older\\a.txt"), fileattr::ReadOnly));
    EXPECT_FALSE(files.CopyFolder(at("\\Source"), at("\\Older"), true));
    EXPECT_EQ(files.readFile(at("\\Older\\A.TXT")), "new a");

    EXPECT_FALSE(files.CopyFolder(at("\\Missing"), at("\\Elsewhere"), true));
    EXPECT_FALSE(files.FolderExists(at("\\Elsewhere")));
    machine->placeFile(at("\\Plain.txt"), "plain");
    EXPECT_FALSE(files.CopyFolder(at("\\Source"), at("\\Plain.txt"), true));
    EXPECT_EQ(files.readFile(at("\\Plain.txt")), "plain");
}

// DeleteFolder takes a folder with all in it; a read-only file or folder in it, or its own
// read-only mark, stops it unless forced.
TEST_F(FileOperationsConformance, DeleteFolderTakesReadOnlyEntriesOnlyWithForce) {
    machine->placeFile(at("\\Old\\a.txt"), "a");
    machine->placeFile(at("\\Old\\Sub\\b.txt"), "b");
    machine->placeFile(at("\\Old\\Locked\\c.txt"), "c");
    ASSERT_TRUE(files.SetAttr(at("\\Old\\Sub\\b.txt"), fileattr::ReadOnly));
    ASSERT_TRUE(files.SetAttr(at("\\Old\\Locked"), fileattr::ReadOnly));

    EXPECT_FALSE(files.DeleteFolder(at("\\old"), false));
    EXPECT_TRUE(files.FileExists(at("\\Old\\Sub\\b.txt")));
    EXPECT_TRUE(files.DeleteFolder(at("\\OLD"), true));
    EXPECT_FALSE(files.FolderExists(at("\\Old")));
    EXPECT_FALSE(files.DeleteFolder(at("\\Old"), true));

    // The folder's own mark counts too.
    machine->placeFile(at("\\Sealed\\s.txt"), "s");
    ASSERT_TRUE(files.SetAttr(at("\\Sealed"), fileattr::ReadOnly));
    if (conformance::wineDiffers("folders keep no read-only mark")) {
        EXPECT_TRUE(files.DeleteFolder(at("\\Sealed"), false));
    } else {
        EXPECT_FALSE(files.DeleteFolder(at("\\Sealed"), false));
        EXPECT_TRUE(files.FileExists(at("\\Sealed\\s.txt")));
        EXPECT_TRUE(files.DeleteFolder(at("\\Sealed"), true));
    }
    EXPECT_FALSE(files.FolderExists(at("\\Sealed")));

    machine->placeFile(at("\\Plain\\Sub\\x.txt"), "x");
    EXPECT_FALSE(files.DeleteFolder(at("\\Plain\\Sub\\x.txt"), true));
    EXPECT_TRUE(files.FileExists(at("\\Plain\\Sub\\x.txt")));
    EXPECT_TRUE(files.DeleteFolder(at("\\Plain"), false));
    EXPECT_FALSE(files.FolderExists(at("\\Plain")));
    EXPECT_TRUE(files.FolderExists(conformance::kFolder));
}

// A wait reports what happened in the folder since the previous one, once; when nothing did,
// it answers false after its timeout.
TEST_F(FileOperationsConformance, ChangeNotificationReportsEachChangeOnce) {
    machine->placeFile(at("\\Watched\\Present.txt"), "x");
    EXPECT_EQ(files.watchFolder(at("\\Missing")), nullptr);
    EXPECT_EQ(files.watchFolder(at("\\Watched\\Present.txt")), nullptr);
    const auto watch = files.watchFolder(at("\\WATCHED"));
    ASSERT_NE(watch, nullptr);

    const auto before = std::chrono::steady_clock::now();
    EXPECT_FALSE(watch->wait(100));
    EXPECT_GE(std::chrono::steady_clock::now() - before, std::chrono::milliseconds(80));
    EXPECT_EQ(files.readFile(at("\\Watched\\Present.txt")), "x");
    EXPECT_FALSE(watch->wait(50));

    // A change made before the wait is reported by it.
    ASSERT_TRUE(files.writeFile(at("\\Watched\\SentData.dat"), "command"));
    EXPECT_TRUE(watch->wait(5000));
    EXPECT_FALSE(watch->wait(50));

    ASSERT_TRUE(files.appendFile(at("\\Watched\\Present.txt"), "y"));
    EXPECT_TRUE(watch->wait(5000));
    ASSERT_TRUE(files.Kill(at("\\Watched\\SentData.dat")));
    EXPECT_TRUE(watch->wait(5000));
    EXPECT_FALSE(watch->wait(50));
}

}  // namespace
