#include <gtest/gtest.h>

#include <string>

#include "ConformanceTest.h"

namespace {

using platform::GetFileName;
using platform::GetParentFolderName;
namespace fileattr = platform::fileattr;

using conformance::at;
using conformance::lowerCase;

class FileSystemConformance : public conformance::ConformanceTest {
protected:
    void SetUp() override {
        ConformanceTest::SetUp();
        machine->placeFile(at("\\Program Files\\Acme Tools\\Acme.exe"), "MZ");
        machine->placeFile(at("\\Program Files\\Acme Tools\\readme.txt"), "hello");
    }
    platform::FileSystem& files = machine->platform().files;
};

// Windows finds files and folders without regard to case, and tells files from folders.
TEST_F(FileSystemConformance, ExistenceIgnoresCaseAndTellsFilesFromFolders) {
    EXPECT_TRUE(files.FileExists(at("\\PROGRAM FILES\\acme tools\\ACME.EXE")));
    EXPECT_TRUE(files.FileExists(lowerCase(at("\\Program Files\\Acme Tools\\Acme.exe"))));
    EXPECT_TRUE(files.FileExists(at("/Program Files/Acme Tools/Acme.exe")));
    EXPECT_TRUE(files.FolderExists(at("\\program files\\ACME TOOLS\\")));
    EXPECT_FALSE(files.FileExists(at("\\Program Files\\Acme Tools")));
    EXPECT_FALSE(files.FolderExists(at("\\Program Files\\Acme Tools\\Acme.exe")));
    EXPECT_FALSE(files.FileExists(at("\\Program Files\\Acme Tools\\Missing.exe")));
    EXPECT_TRUE(files.FolderExists("C:\\"));
    EXPECT_TRUE(files.FolderExists(at("\\Program Files\\Acme Tools\\..\\Acme Tools")));
}

// A malformed path does not exist: forbidden characters, wildcards, relative or UNC paths.
TEST_F(FileSystemConformance, MalformedPathsDoNotExist) {
    for (const std::string& path :
         {std::string(), std::string("Acme.exe"), std::string("C:Acme.exe"),
          std::string("\\\\server\\share\\a.exe"), at("\\Program Files\\Acme*"),
          at("\\Program Files\\Acme Tools\\Acme.exe,0"), at("\\Program Files\\A|B\\x.exe"),
          at("\\Program Files\\\"Acme Tools\"\\Acme.exe"), std::string("1:\\x")}) {
        SCOPED_TRACE(path);
        EXPECT_FALSE(files.FileExists(path));
        EXPECT_FALSE(files.FolderExists(path));
    }
}

// A drive's root tells its type in either case; a drive that is not there, or a folder that is
// no root, is no root (1).
TEST_F(FileSystemConformance, DriveTypeOfRoots) {
    EXPECT_EQ(files.GetDriveTypeA("C:\\"), platform::drivetype::Fixed);
    EXPECT_EQ(files.GetDriveTypeA("c:\\"), platform::drivetype::Fixed);
    EXPECT_EQ(files.GetDriveTypeA("Q:\\"), platform::drivetype::NoRootDir);
    if (conformance::wineDiffers("GetDriveType answers for any folder, not only a root")) {
        EXPECT_EQ(files.GetDriveTypeA(conformance::kFolder), platform::drivetype::Fixed);
    } else {
        EXPECT_EQ(files.GetDriveTypeA(conformance::kFolder), platform::drivetype::NoRootDir);
    }
}

// Dir answers the first matching name as stored; folders only when asked for.
TEST_F(FileSystemConformance, DirFindsNamesAsStored) {
    EXPECT_EQ(files.Dir(at("\\PROGRAM FILES\\ACME TOOLS\\acme.exe"), fileattr::Normal), "Acme.exe");
    EXPECT_EQ(files.Dir(at("\\Program Files\\Acme Tools\\*.TXT"), fileattr::Normal), "readme.txt");
    EXPECT_EQ(files.Dir(at("\\Program Files\\Acme Tools\\*.*"), fileattr::Normal), "Acme.exe");
    EXPECT_EQ(files.Dir(at("\\Program Files\\Acme Tools\\"), fileattr::Normal), "Acme.exe");
    EXPECT_EQ(files.Dir(at("\\Program Files\\Acme ?ools\\x.exe"), fileattr::Normal), "");
    EXPECT_EQ(files.Dir(at("\\Program Files\\Acme Tools"), fileattr::Normal), "");
    EXPECT_EQ(files.Dir(at("\\Program Files\\Acme Tools"),
                        fileattr::Hidden | fileattr::System | fileattr::Directory),
              "Acme Tools");
    EXPECT_EQ(files.Dir(at("\\Program Files\\Missing\\*"), fileattr::Directory), "");
}

// MkDir makes one folder in an existing one, and refuses one that is there.
TEST_F(FileSystemConformance, MkDirNeedsItsParent) {
    EXPECT_TRUE(files.MkDir(at("\\ProgramData")));
    EXPECT_TRUE(files.MkDir(at("\\ProgramData\\Tallowick")));
    EXPECT_TRUE(files.FolderExists(at("\\PROGRAMDATA\\TALLOWICK")));
    EXPECT_FALSE(files.MkDir(at("\\ProgramData\\Tallowick")));
    EXPECT_FALSE(files.MkDir(at("\\ProgramData\\Missing\\Tallowick")));
}

// Files hold any bytes, found without regard to case; a write needs the folder, an append
// makes a missing file.
TEST_F(FileSystemConformance, FilesReadBackWhatWasWritten) {
    const std::string bytes("line\r\n\0\xff", 8);
    ASSERT_TRUE(files.writeFile(at("\\data.bin"), bytes));
    EXPECT_EQ(files.readFile(at("\\DATA.BIN")), bytes);
    EXPECT_EQ(files.readFile(lowerCase(at("\\data.bin"))), bytes);
    EXPECT_FALSE(files.readFile(at("\\none.bin")).has_value());
    EXPECT_FALSE(files.writeFile(at("\\Missing\\data.bin"), bytes));
    ASSERT_TRUE(files.appendFile(at("\\DATA.BIN"), "more"));
    ASSERT_TRUE(files.appendFile(at("\\new.txt"), "first"));
    EXPECT_EQ(files.readFile(at("\\data.bin")), bytes + "more");
    EXPECT_EQ(files.readFile(at("\\new.txt")), "first");
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
