// Files and folders as Windows finds them, and the FileSystemObject's path texts.
#include "ConformanceTest.h"

namespace {

using namespace conformance;
namespace fileattr = platform::fileattr;

class FileSystemConformance : public ConformanceTest {
protected:
    void SetUp() override {
        ConformanceTest::SetUp();
        place({{"\\Program Files\\Acme Tools\\Acme.exe", "MZ"},
               {"\\Program Files\\Acme Tools\\readme.txt", "hello"}});
    }
};

// Windows finds files and folders without regard to case, and tells files from folders. A
// malformed path does not exist: forbidden characters, wildcards, relative or UNC paths. A
// drive's root tells its type in either case; a drive that is not there, or a folder that is
// no root, is no root (1).
TEST_F(FileSystemConformance, ExistenceIgnoresCaseAndTellsFilesFromFoldersAndRoots) {
    const std::string acme = at("\\Program Files\\Acme Tools");
    // A path, whether it is a file and whether a folder.
    const std::tuple<std::string, bool, bool> paths[] = {
        {at("\\PROGRAM FILES\\acme tools\\ACME.EXE"), true, false},
        {inCase(acme + "\\Acme.exe", false), true, false},
        {at("/Program Files/Acme Tools/Acme.exe"), true, false},
        {at("\\program files\\ACME TOOLS\\"), false, true},
        {acme, false, true},
        {"C:\\", false, true},
        {acme + "\\..\\Acme Tools", false, true},
        {acme + "\\Missing.exe", false, false}};
    for (const auto& [path, file, folder] : paths) {
        EXPECT_EQ(std::pair(files().FileExists(path), files().FolderExists(path)),
                  std::pair(file, folder))
            << path;
    }
    for (const std::string& path :
         {std::string(), std::string("Acme.exe"), std::string("C:Acme.exe"),
          std::string("\\\\server\\share\\a.exe"), at("\\Program Files\\Acme*"),
          acme + "\\Acme.exe,0", at("\\Program Files\\A|B\\x.exe"),
          at("\\Program Files\\\"Acme Tools\"\\Acme.exe"), std::string("1:\\x")}) {
        EXPECT_FALSE(files().FileExists(path) || files().FolderExists(path)) << path;
    }

    using namespace platform::drivetype;
    const bool anyFolder = wineDiffers("GetDriveType answers for any folder, not only a root");
    EXPECT_EQ(std::tuple(files().GetDriveTypeA("C:\\"), files().GetDriveTypeA("c:\\"),
                         files().GetDriveTypeA("Q:\\"), files().GetDriveTypeA(kFolder)),
              std::tuple(Fixed, Fixed, NoRootDir, anyFolder ? Fixed : NoRootDir));
}

// Dir answers the first matching name as stored; folders only when asked for.
TEST_F(FileSystemConformance, DirFindsNamesAsStored) {
    const auto dir = [this](const char* below, std::uint32_t attributes = fileattr::Normal) {
        return files().Dir(at(below), attributes);
    };
    EXPECT_EQ(dir("\\PROGRAM FILES\\ACME TOOLS\\acme.exe"), "Acme.exe");
    EXPECT_EQ(dir("\\Program Files\\Acme Tools\\*.TXT"), "readme.txt");
    EXPECT_EQ(dir("\\Program Files\\Acme Tools\\*.*"), "Acme.exe");
    EXPECT_EQ(dir("\\Program Files\\Acme Tools\\"), "Acme.exe");
    EXPECT_EQ(dir("\\Program Files\\Acme ?ools\\x.exe") + dir("\\Program Files\\Acme Tools"), "");
    EXPECT_EQ(dir("\\Program Files\\Acme Tools",
                  fileattr::Hidden | fileattr::System | fileattr::Directory),
              "Acme Tools");
    EXPECT_EQ(dir("\\Program Files\\Missing\\*", fileattr::Directory), "");
}

// MkDir makes one folder in an existing one, and refuses one that is there. Files hold any
// bytes, found without regard to case; a write needs the folder, an append makes a missing
// file.
TEST_F(FileSystemConformance, FoldersAreMadeOneByOneAndFilesReadBackWhatWasWritten) {
    EXPECT_TRUE(files().MkDir(at("\\ProgramData")) &&
                files().MkDir(at("\\ProgramData\\Tallowick")));
    EXPECT_TRUE(files().FolderExists(at("\\PROGRAMDATA\\TALLOWICK")));
    EXPECT_FALSE(files().MkDir(at("\\ProgramData\\Tallowick")));
    EXPECT_FALSE(files().MkDir(at("\\ProgramData\\Missing\\Tallowick")));

    const std::string bytes("line\r\n\0\xff", 8);
    ASSERT_TRUE(files().writeFile(at("\\data.bin"), bytes));
    EXPECT_EQ(holds({"\\DATA.BIN", "\\data.bin", "\\none.bin"}), bytes + "|" + bytes + "|-");
    EXPECT_FALSE(files().writeFile(at("\\Missing\\data.bin"), bytes));
    ASSERT_TRUE(files().appendFile(at("\\DATA.BIN"), "more") &&
                files().appendFile(at("\\new.txt"), "first"));
    EXPECT_EQ(holds({"\\data.bin", "\\new.txt"}), bytes + "more|first");
}

// The FileSystemObject's path texts never look at the disk.
TEST(PathTextConformance, ParentFolderAndFileName) {
    // A path, its parent folder and its file name.
    const std::tuple<const char*, const char*, const char*> paths[] = {
        {"C:\\App\\app.exe", "C:\\App", "app.exe"},
        {"C:\\App", "C:\\", "App"},
        {"C:\\App\\", "C:\\", "App"},
        {"C:\\", "", ""},
        {"C:", "", ""},
        {"app.exe", "", "app.exe"},
        {"", "", ""},
        {"C:\\App,x\\app.exe", "C:\\App,x", "app.exe"},
        {"\"C:\\App\\unins000.exe\" /SILENT", "\"C:\\App\\unins000.exe\" ", "SILENT"},
        {"C:\\A\\\\b.exe", "C:\\A", "b.exe"},
        {"\\\\server\\share\\x", "\\\\server\\share", "x"}};
    for (const auto& [path, parent, name] : paths) {
        EXPECT_EQ(platform::GetParentFolderName(path) + "|" + platform::GetFileName(path),
                  std::string(parent) + "|" + name)
            << path;
    }
}

}  // namespace
