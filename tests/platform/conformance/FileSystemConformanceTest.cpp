#include <gtest/gtest.h>

#include "support/TestMachine.h"

namespace {

using platform::GetFileName;
using platform::GetParentFolderName;
namespace fileattr = platform::fileattr;

class FileSystemConformance : public ::testing::Test {
protected:
    void SetUp() override {
        machine.placeFile("C:\\Program Files\\Acme Tools\\Acme.exe", "MZ");
        machine.placeFile("C:\\Program Files\\Acme Tools\\readme.txt", "hello");
    }
    testing_support::TestMachine machine;
    platform::FileSystem& files = machine.platform().files;
};

// Windows finds files and folders without regard to case, and tells files from folders.
TEST_F(FileSystemConformance, ExistenceIgnoresCaseAndTellsFilesFromFolders) {
    EXPECT_TRUE(files.FileExists("c:\\PROGRAM FILES\\acme tools\\ACME.EXE"));
    EXPECT_TRUE(files.FileExists("C:/Program Files/Acme Tools/Acme.exe"));
    EXPECT_TRUE(files.FolderExists("C:\\program files\\ACME TOOLS\\"));
    EXPECT_FALSE(files.FileExists("C:\\Program Files\\Acme Tools"));
    EXPECT_FALSE(files.FolderExists("C:\\Program Files\\Acme Tools\\Acme.exe"));
    EXPECT_FALSE(files.FileExists("C:\\Program Files\\Acme Tools\\Missing.exe"));
    EXPECT_TRUE(files.FolderExists("C:\\"));
    EXPECT_TRUE(files.FolderExists("C:\\Windows\\System32\\..\\Fonts"));
}

// A malformed path does not exist: forbidden characters, wildcards, relative or UNC paths.
TEST_F(FileSystemConformance, MalformedPathsDoNotExist) {
    for (const char* path :
         {"", "Acme.exe", "C:Acme.exe", "\\\\server\\share\\a.exe", "C:\\Program Files\\Acme*",
          "C:\\Program Files\\Acme Tools\\Acme.exe,0", "C:\\Program Files\\A|B\\x.exe",
          "C:\\Program Files\\\"Acme Tools\"\\Acme.exe", "1:\\x"}) {
        SCOPED_TRACE(path);
        EXPECT_FALSE(files.FileExists(path));
        EXPECT_FALSE(files.FolderExists(path));
    }
}

TEST_F(FileSystemConformance, DriveTypeOfRoots) {
    EXPECT_EQ(files.GetDriveTypeA("C:\\"), platform::drivetype::Fixed);
    EXPECT_EQ(files.GetDriveTypeA("c:\\"), platform::drivetype::Fixed);
    EXPECT_EQ(files.GetDriveTypeA("Q:\\"), platform::drivetype::NoRootDir);
    EXPECT_EQ(files.GetDriveTypeA("C:\\Windows"), platform::drivetype::NoRootDir);
}

// Dir answers the first matching name as stored; folders only when asked for.
TEST_F(FileSystemConformance, DirFindsNamesAsStored) {
    EXPECT_EQ(files.Dir("C:\\PROGRAM FILES\\ACME TOOLS\\acme.exe", fileattr::Normal), "Acme.exe");
    EXPECT_EQ(files.Dir("C:\\Program Files\\Acme Tools\\*.TXT", fileattr::Normal), "readme.txt");
    EXPECT_EQ(files.Dir("C:\\Program Files\\Acme Tools\\*.*", fileattr::Normal), "Acme.exe");
    EXPECT_EQ(files.Dir("C:\\Program Files\\Acme Tools\\", fileattr::Normal), "Acme.exe");
    EXPECT_EQ(files.Dir("C:\\Program Files\\Acme ?ools\\x.exe", fileattr::Normal), "");
    EXPECT_EQ(files.Dir("C:\\Program Files\\Acme Tools", fileattr::Normal), "");
    EXPECT_EQ(files.Dir("C:\\Program Files\\Acme Tools",
                        fileattr::Hidden | fileattr::System | fileattr::Directory),
              "Acme Tools");
    EXPECT_EQ(files.Dir("C:\\Program Files\\Missing\\*", fileattr::Directory), "");
}

TEST_F(FileSystemConformance, MkDirNeedsItsParent) {
    EXPECT_TRUE(files.MkDir("C:\\ProgramData\\Tallowick"));
    EXPECT_TRUE(files.FolderExists("C:\\PROGRAMDATA\\TALLOWICK"));
    EXPECT_FALSE(files.MkDir("C:\\ProgramData\\Tallowick"));
    EXPECT_FALSE(files.MkDir("C:\\ProgramData\\Missing\\Tallowick"));
}

TEST_F(FileSystemConformance, FilesReadBackWhatWasWritten) {
    const std::string bytes("line\r\n\0\xff", 8);
    ASSERT_TRUE(files.writeFile("C:\\ProgramData\\data.bin", bytes));
    EXPECT_EQ(files.readFile("c:\\programdata\\DATA.BIN"), bytes);
    EXPECT_FALSE(files.readFile("C:\\ProgramData\\none.bin").has_value());
    EXPECT_FALSE(files.writeFile("C:\\Missing\\data.bin", bytes));
    ASSERT_TRUE(files.appendFile("C:\\ProgramData\\DATA.BIN", "more"));
    ASSERT_TRUE(files.appendFile("C:\\ProgramData\\new.txt", "first"));
    EXPECT_EQ(files.readFile("C:\\ProgramData\\data.bin"), bytes + "more");
    EXPECT_EQ(files.readFile("C:\\ProgramData\\new.txt"), "first");
}

// The FileSystemObject's path texts never look at the disk.
TEST(PathTextConformance, ParentFolderAndFileName) {
    struct Case {
        const char* path;
        const char* parent;
        const char* name;
    };
    for (const Case& c : {
             Case{"C:\\App\\app.exe", "C:\\App", "app.exe"},
             Case{"C:\\App", "C:\\", "App"},
             Case{"C:\\App\\", "C:\\", "App"},
             Case{"C:\\", "", ""},
             Case{"C:", "", ""},
             Case{"app.exe", "", "app.exe"},
             Case{"", "", ""},
             Case{"C:\\App,x\\app.exe", "C:\\App,x", "app.exe"},
             Case{"\"C:\\App\\unins000.exe\" /SILENT", "\"C:\\App\\unins000.exe\" ", "SILENT"},
             Case{"C:\\A\\\\b.exe", "C:\\A", "b.exe"},
             Case{"\\\\server\\share\\x", "\\\\server\\share", "x"},
         }) {
        SCOPED_TRACE(c.path);
        EXPECT_EQ(GetParentFolderName(c.path), c.parent);
        EXPECT_EQ(GetFileName(c.path), c.name);
    }
}

}  // namespace
