// The file operations the privileged service carries out (Kill, SetAttr, FileLen and the
// FileSystemObject's folder calls) and the folder watch, with the rules they have on Windows.
#include "ConformanceTest.h"

namespace {

using namespace conformance;
namespace fileattr = platform::fileattr;
using FileOperationsConformance = ConformanceTest;

// FileLen is a file's size, found without regard to case; a folder or a missing file has none.
// Kill takes one existing file that is not read-only; whatever it refuses stays as it was, and
// so does a read-only file that is written to.
TEST_F(FileOperationsConformance, FileLenAndKillAndWritesRespectTheReadOnlyMark) {
    place({{"\\Data\\Five.txt", "12345"},
           {"\\Data\\Empty.txt", ""},
           {"\\Data\\Sub\\Inner.txt", "x"}});
    EXPECT_EQ(files().FileLen(at("\\DATA\\five.TXT")), 5u);
    EXPECT_EQ(files().FileLen(at("\\Data\\Empty.txt")), 0u);
    EXPECT_FALSE(files().FileLen(at("\\Data")) || files().FileLen(at("\\Data\\Missing.txt")));
    EXPECT_FALSE(files().SetAttr(at("\\Data\\Missing.txt"), fileattr::ReadOnly));

    EXPECT_TRUE(files().Kill(at("\\data\\EMPTY.TXT")));
    for (const char* refused : {"\\Data\\Empty.txt", "\\Data\\Sub", "\\Data\\*.txt"}) {
        EXPECT_FALSE(files().Kill(at(refused))) << refused;
    }
    EXPECT_EQ(holds({"\\Data\\Empty.txt", "\\Data\\Sub\\Inner.txt", "\\Data\\Five.txt"}),
              "-|x|12345");

    const std::string file = at("\\Data\\Five.txt");
    ASSERT_TRUE(files().SetAttr(at("\\DATA\\five.txt"), fileattr::ReadOnly));
    EXPECT_FALSE(files().Kill(file) || files().writeFile(file, "changed") ||
                 files().appendFile(file, "more"));
    EXPECT_EQ(holds({"\\Data\\Five.txt"}), "12345");
    ASSERT_TRUE(files().SetAttr(file, fileattr::Normal));
    EXPECT_TRUE(files().appendFile(file, "+"));
    EXPECT_EQ(holds({"\\Data\\Five.txt"}), "12345+");
    EXPECT_TRUE(files().Kill(file));
    EXPECT_EQ(holds({"\\Data\\Five.txt"}), "-");
}

// The contents go into the destination with their nested folders; into an existing folder
// they join what is there, entries of the same name found without regard to case. An
// existing file stops the copy unless it may be replaced, and not even overwrite replaces a
// read-only file.
TEST_F(FileOperationsConformance, CopyFolderMergesAndReplacesOnlyWithOverwrite) {
    place({{"\\Source\\a.txt", "new a"}, {"\\Source\\Sub\\Deeper\\b.txt", "new b"}});
    ASSERT_TRUE(files().CopyFolder(at("\\SOURCE"), at("\\Copy"), false));
    EXPECT_EQ(
        holds({"\\Copy\\a.txt", "\\Copy\\Sub\\Deeper\\b.txt", "\\Source\\Sub\\Deeper\\b.txt"}),
        "new a|new b|new b");

    place({{"\\Target\\Own.txt", "own"}, {"\\Target\\SUB\\Kept.txt", "kept"}});
    ASSERT_TRUE(files().CopyFolder(at("\\Source"), at("\\Target"), false));
    EXPECT_EQ(
        holds({"\\Target\\Own.txt", "\\Target\\SUB\\Kept.txt", "\\Target\\SUB\\DEEPER\\B.TXT"}),
        "own|kept|new b");

    place({{"\\Older\\A.TXT", "old a"}});
    EXPECT_FALSE(files().CopyFolder(at("\\Source"), at("\\Older"), false));
    EXPECT_EQ(holds({"\\Older\\A.TXT"}), "old a");
    ASSERT_TRUE(files().CopyFolder(at("\\Source"), at("\\Older"), true));
    EXPECT_EQ(holds({"\\Older\\A.TXT", "\\Older\\Sub\\Deeper\\b.txt"}), "new a|new b");
    ASSERT_TRUE(files().writeFile(at("\\Source\\a.txt"), "newer a"));
    ASSERT_TRUE(files().SetAttr(at("\\Older\\a.txt"), fileattr::ReadOnly));
    EXPECT_FALSE(files().CopyFolder(at("\\Source"), at("\\Older"), true));
    EXPECT_EQ(holds({"\\Older\\A.TXT"}), "new a");

    EXPECT_FALSE(files().CopyFolder(at("\\Missing"), at("\\Elsewhere"), true));
    EXPECT_FALSE(files().FolderExists(at("\\Elsewhere")));
    place({{"\\Plain.txt", "plain"}});
    EXPECT_FALSE(files().CopyFolder(at("\\Source"), at("\\Plain.txt"), true));
    EXPECT_EQ(holds({"\\Plain.txt"}), "plain");
}

// DeleteFolder takes a folder with all in it; a read-only file or folder in it, or its own
// read-only mark, stops it unless forced. A file is no folder to delete.
TEST_F(FileOperationsConformance, DeleteFolderTakesReadOnlyEntriesOnlyWithForce) {
    place({{"\\Old\\a.txt", "a"}, {"\\Old\\Sub\\b.txt", "b"}, {"\\Old\\Locked\\c.txt", "c"}});
    ASSERT_TRUE(files().SetAttr(at("\\Old\\Sub\\b.txt"), fileattr::ReadOnly));
    ASSERT_TRUE(files().SetAttr(at("\\Old\\Locked"), fileattr::ReadOnly));
    EXPECT_FALSE(files().DeleteFolder(at("\\old"), false));
    EXPECT_EQ(holds({"\\Old\\Sub\\b.txt"}), "b");
    EXPECT_TRUE(files().DeleteFolder(at("\\OLD"), true));
    EXPECT_FALSE(files().FolderExists(at("\\Old")));
    EXPECT_FALSE(files().DeleteFolder(at("\\Old"), true));

    place({{"\\Sealed\\s.txt", "s"}});
    ASSERT_TRUE(files().SetAttr(at("\\Sealed"), fileattr::ReadOnly));
    const bool unmarked = wineDiffers("folders keep no read-only mark");
    EXPECT_EQ(files().DeleteFolder(at("\\Sealed"), false), unmarked);
    EXPECT_EQ(holds({"\\Sealed\\s.txt"}), unmarked ? "-" : "s");
    EXPECT_EQ(files().DeleteFolder(at("\\Sealed"), true), !unmarked);
    EXPECT_FALSE(files().FolderExists(at("\\Sealed")));

    place({{"\\Plain\\Sub\\x.txt", "x"}});
    EXPECT_FALSE(files().DeleteFolder(at("\\Plain\\Sub\\x.txt"), true));
    EXPECT_EQ(holds({"\\Plain\\Sub\\x.txt"}), "x");
    EXPECT_TRUE(files().DeleteFolder(at("\\Plain"), false));
    EXPECT_FALSE(files().FolderExists(at("\\Plain")));
    EXPECT_TRUE(files().FolderExists(kFolder));
}

// A wait reports what happened in the folder since the previous one, once, a change made
// before the wait too; when nothing did, it answers false after its timeout.
TEST_F(FileOperationsConformance, ChangeNotificationReportsEachChangeOnce) {
    place({{"\\Watched\\Present.txt", "x"}});
    EXPECT_FALSE(files().watchFolder(at("\\Missing")) ||
                 files().watchFolder(at("\\Watched\\Present.txt")));
    const auto watch = files().watchFolder(at("\\WATCHED"));
    ASSERT_NE(watch, nullptr);

    EXPECT_FALSE(watch->wait(100));
    EXPECT_EQ(holds({"\\Watched\\Present.txt"}), "x");
    EXPECT_FALSE(watch->wait(50));

    ASSERT_TRUE(files().writeFile(at("\\Watched\\SentData.dat"), "command"));
    EXPECT_TRUE(watch->wait(5000));
    EXPECT_FALSE(watch->wait(50));
    ASSERT_TRUE(files().appendFile(at("\\Watched\\Present.txt"), "y"));
    EXPECT_TRUE(watch->wait(5000));
    ASSERT_TRUE(files().Kill(at("\\Watched\\SentData.dat")));
    EXPECT_TRUE(watch->wait(5000));
    EXPECT_FALSE(watch->wait(50));
}

}  // namespace
