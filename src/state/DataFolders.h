#pragma once
#include <QString>
#include <QStringList>

#include "platform/Platform.h"
#include "state/ServiceChannel.h"

namespace state {

// SHGetFolderPathA of a special folder (a CSIDL code), up to its first NUL; "" when there is
// none.
QString GetFolderPath(platform::Platform& platform, int csidl);

// Where the program keeps its data, with a trailing "\": under the all-users application
// data, else the user's application data, else the program files; else the program folder
// itself, and *fallback is set.
QString locateDataFolder(platform::Platform& platform, const QString& programFolder,
                         const QString& productName, bool* fallback);

// The data folders that older versions kept in the program folder and that the first run of
// this layout moves into the data folder.
QStringList olderDataFolders();

// Where the program's data lies and where the special folders of the computer are. The
// special folders are read once, at construction; the data folder is found by
// UpdateFileLocations and stays empty until then.
class DataFolders {
public:
    // programFolder is the folder of the running program, without a trailing "\".
    DataFolders(platform::Platform& platform, QString programFolder, QString productName);

    // The path of a special folder (a CSIDL code), "" when there is none.
    QString GetFolderPath(int csidl) const;

    // Finds the data folder under the all-users application data, else the user's
    // application data, else the program files, else uses the program folder itself. On the
    // first run of this layout it makes the folder and has the service move the data folders
    // of older versions out of the program folder into it.
    void UpdateFileLocations(ServiceChannel& service);

    // Expands the folder variables of a path: %AppData%, %StartMenu%, %ProgramFiles% and
    // %Desktop% in any case; %TempDir%, %SystemDir% and the common spellings of %SystemRoot%
    // and %WinDir% only as written.
    QString ReplaceVariableFolders(const QString& path) const;

    // With a trailing "\".
    const QString& dataFolder() const { return dataFolder_; }
    // The others as the computer gives them, without one.
    const QString& systemFolder() const { return systemFolder_; }
    const QString& windowsFolder() const { return windowsFolder_; }
    const QString& tempFolder() const { return tempFolder_; }
    const QString& secondTempFolder() const { return secondTempFolder_; }
    const QString& txtAppData() const { return txtAppData_; }
    const QString& txtStartMenu() const { return txtStartMenu_; }
    const QString& txtProgramsDir() const { return txtProgramsDir_; }
    const QString& txtDesktop() const { return txtDesktop_; }
    const QString& txtCookies() const { return txtCookies_; }
    const QString& txtMyDocuments() const { return txtMyDocuments_; }
    const QString& txtFonts() const { return txtFonts_; }

private:
    void GetSpecialFolders();
    QString environmentVariable(const char* name) const;
    bool folderExists(const QString& path) const;
    void makeFolder(const QString& path) const;

    platform::Platform& platform_;
    const QString programFolder_;
    const QString productName_;

    QString dataFolder_;
    QString systemFolder_;
    QString windowsFolder_;
    QString tempFolder_;
    QString secondTempFolder_;
    QString txtAppData_;
    QString txtStartMenu_;
    QString txtProgramsDir_;
    QString txtDesktop_;
    QString txtCookies_;
    QString txtMyDocuments_;
    QString txtFonts_;
};

}  // namespace state
