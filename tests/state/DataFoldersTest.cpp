#include <gtest/gtest.h>

#include <QStringList>

#include <filesystem>

#include "state/DataFolders.h"
#include "support/TestMachine.h"

namespace {

const QString kProgramFolder = "C:\\Program Files\\Tallowick";

// Nothing here has older data folders for the service to move: any command fails the test.
// The moves themselves are the real service's tests' affair.
class NoMovesService : public state::ServiceChannel {
public:
    bool SendToService(const QString& commandText) override {
        ADD_FAILURE() << "unexpected command: " << commandText.toStdString();
        return false;
    }
};

class DataFoldersTest : public ::testing::Test {
protected:
    // Takes a folder of drive C away, as a damaged or unusual computer would lack it.
    void removeFolder(const std::string& relative) {
        std::filesystem::remove_all(machine.folder() / "drive_c" / relative);
    }
    bool folderExists(const std::string& winPath) {
        return machine.platform().files.FolderExists(winPath);
    }

    testing_support::TestMachine machine;
    NoMovesService service;
};

// The special folders of a standard computer; a missing system folder falls back to its
// Windows 9x name, a missing fonts folder keeps its place.
TEST_F(DataFoldersTest, SpecialFoldersAndTheirFallBacks) {
    state::DataFolders folders(machine.platform(), kProgramFolder, "Tallowick");
    EXPECT_EQ(
        (QStringList{folders.dataFolder(), folders.systemFolder(), folders.windowsFolder(),
                     folders.tempFolder(), folders.secondTempFolder(), folders.txtAppData(),
                     folders.txtStartMenu(), folders.txtProgramsDir(), folders.txtDesktop(),
                     folders.txtCookies(), folders.txtMyDocuments(), folders.txtFonts(),
                     folders.GetFolderPath(0x7777)}),
        (QStringList{"", "C:\\Windows\\System32", "C:\\Windows",
                     "C:\\Users\\User\\AppData\\Local\\Temp",
                     "C:\\Users\\User\\AppData\\Local\\Temp", "C:\\Users\\User\\AppData\\Roaming",
                     "C:\\ProgramData\\Microsoft\\Windows\\Start Menu", "C:\\Program Files",
                     "C:\\Users\\User\\Desktop",
                     "C:\\Users\\User\\AppData\\Roaming\\Microsoft\\Windows\\Cookies",
                     "C:\\Users\\User\\Documents", "C:\\Windows\\Fonts", ""}));

    removeFolder("Windows/System32");
    removeFolder("Windows/Fonts");
    state::DataFolders damaged(machine.platform(), kProgramFolder, "Tallowick");
    EXPECT_EQ(damaged.systemFolder(), "C:\\WINDOWS\\SYSTEM32");
    EXPECT_EQ(damaged.txtFonts(), "C:\\Windows\\Fonts");
}

TEST_F(DataFoldersTest, FirstRunMakesTheDataFolderAndASecondRunMovesNothing) {
    state::DataFolders folders(machine.platform(), kProgramFolder, "Tallowick");
    folders.UpdateFileLocations(service);
    EXPECT_EQ(folders.dataFolder(), "C:\\ProgramData\\Tallowick\\");
    EXPECT_TRUE(folderExists("C:\\ProgramData\\Tallowick\\Service"));

    state::DataFolders again(machine.platform(), kProgramFolder, "Tallowick");
    again.UpdateFileLocations(service);
    EXPECT_EQ(again.dataFolder(), "C:\\ProgramData\\Tallowick\\");
}

TEST_F(DataFoldersTest, DataFolderFallsBackToUserDataThenProgramFolder) {
    removeFolder("ProgramData");
    state::DataFolders userData(machine.platform(), kProgramFolder, "Tallowick");
    userData.UpdateFileLocations(service);
    EXPECT_EQ(userData.dataFolder(), "C:\\Users\\User\\AppData\\Roaming\\Tallowick\\");

    removeFolder("Users");
    removeFolder("Program Files");
    state::DataFolders none(machine.platform(), "C:\\Tallowick", "Tallowick");
    none.UpdateFileLocations(service);
    EXPECT_EQ(none.dataFolder(), "C:\\Tallowick\\");
    EXPECT_FALSE(folderExists("C:\\Tallowick"));
}

TEST_F(DataFoldersTest, ReplaceVariableFoldersKeepsItsCaseRules) {
    state::DataFolders folders(machine.platform(), kProgramFolder, "Tallowick");
    EXPECT_EQ(folders.ReplaceVariableFolders("%APPDATA%\\x;%startmenu%;%ProgramFiles%;%DESKTOP%"),
              "C:\\Users\\User\\AppData\\Roaming\\x;"
              "C:\\ProgramData\\Microsoft\\Windows\\Start Menu;C:\\Program Files;"
              "C:\\Users\\User\\Desktop");
    EXPECT_EQ(folders.ReplaceVariableFolders("%TempDir%|%TEMPDIR%|%SystemDir%|%SYSTEMDIR%"),
              "C:\\Users\\User\\AppData\\Local\\Temp|%TEMPDIR%|C:\\Windows\\System32|%SYSTEMDIR%");
    EXPECT_EQ(folders.ReplaceVariableFolders(
                  "%SystemRoot%|%Systemroot%|%systemroot%|%SYSTEMROOT%|%SystemROOT%"),
              "C:\\Windows|C:\\Windows|C:\\Windows|C:\\Windows|%SystemROOT%");
    EXPECT_EQ(folders.ReplaceVariableFolders("%windir%|%WinDir%|%Windir%|%WINDIR%|%wINDIR%"),
              "C:\\Windows|C:\\Windows|C:\\Windows|C:\\Windows|%wINDIR%");
    EXPECT_EQ(folders.ReplaceVariableFolders("C:\\plain\\path"), "C:\\plain\\path");
}

}  // namespace
