#include "state/DataFolders.h"

#include <QStringList>

#include <algorithm>
#include <utility>

#include "core/AnsiText.h"
#include "core/BasicText.h"

#include "state/ProductNames.h"
#include "state/ServiceCommands.h"

namespace state {

namespace {

// "C:\A\B\C" less two elements is "C:\A".
QString dropLastElements(const QString& path, int count) {
    QStringList elements = core::split(path, QStringLiteral("\\"));
    if (elements.size() <= count) {
        return {};
    }
    elements.erase(elements.end() - count, elements.end());
    return elements.join(u'\\');
}

}  // namespace

DataFolders::DataFolders(platform::Platform& platform, QString programFolder, QString productName)
    : platform_(platform),
      programFolder_(std::move(programFolder)),
      productName_(std::move(productName)) {
    GetSpecialFolders();
}

QStringList olderDataFolders() {
    return {QStringLiteral("Settings"), QStringLiteral("Full Backups"),
            QStringLiteral("Item Backups"), QStringLiteral("Startup Manager")};
}

QString GetFolderPath(platform::Platform& platform, int csidl) {
    std::string path;
    if (platform.environment.SHGetFolderPathA(csidl, &path) != 0) {
        return {};
    }
    path.resize(std::min(path.size(), path.find('\0')));
    return core::fromAnsi(platform.codePage, path);
}

QString locateDataFolder(platform::Platform& platform, const QString& programFolder,
                         const QString& productName, bool* fallback) {
    using namespace platform::csidl;
    QString found = GetFolderPath(platform, CommonAppData);
    if (found.isEmpty()) {
        found = GetFolderPath(platform, AppData);
    }
    if (found.isEmpty()) {
        found = GetFolderPath(platform, ProgramFiles);
    }
    *fallback = found.isEmpty();
    return *fallback ? programFolder + u'\\' : found + u'\\' + productName + u'\\';
}

QString DataFolders::GetFolderPath(int csidl) const {
    return state::GetFolderPath(platform_, csidl);
}

void DataFolders::GetSpecialFolders() {
    using namespace platform::csidl;
    systemFolder_ = GetFolderPath(System);
    if (systemFolder_.isEmpty()) {
        systemFolder_ = QStringLiteral("C:\\WINDOWS\\SYSTEM32");
    }
    windowsFolder_ = GetFolderPath(Windows);
    if (windowsFolder_.isEmpty()) {
        windowsFolder_ = QStringLiteral("C:\\WINDOWS");
    }
    tempFolder_ = environmentVariable("TEMP");
    secondTempFolder_ = environmentVariable("TMP");
    txtAppData_ = GetFolderPath(AppData);
    txtStartMenu_ = GetFolderPath(CommonStartMenu);
    if (txtStartMenu_.isEmpty()) {
        txtStartMenu_ = dropLastElements(GetFolderPath(CommonStartup), 2);
    }
    txtProgramsDir_ = GetFolderPath(ProgramFiles);
    txtDesktop_ = GetFolderPath(DesktopDirectory);
    txtCookies_ = GetFolderPath(Cookies);
    txtMyDocuments_ = GetFolderPath(Personal);
    txtFonts_ = GetFolderPath(Fonts);
    if (txtFonts_.isEmpty()) {
        txtFonts_ = windowsFolder_ + QStringLiteral("\\Fonts");
    }
}

void DataFolders::UpdateFileLocations(ServiceChannel& service) {
    bool fallback = false;
    dataFolder_ = locateDataFolder(platform_, programFolder_, productName_, &fallback);
    if (fallback || folderExists(dataFolder_)) {
        return;
    }

    // First run of a version that keeps its data here.
    makeFolder(dataFolder_);
    makeFolder(dataFolder_ + product::serviceFolder());
    for (const QString& name : olderDataFolders()) {
        const QString old = programFolder_ + u'\\' + name;
        if (folderExists(old)) {
            service.SendToService(
                servicecommand::commandText({servicecommand::FsoCopyFolder(old, dataFolder_ + name),
                                             servicecommand::FsoDeleteFolder(old)}));
        }
    }
}

QString DataFolders::ReplaceVariableFolders(const QString& path) const {
    const std::pair<const char*, const QString*> anyCase[] = {
        {"%AppData%", &txtAppData_},
        {"%StartMenu%", &txtStartMenu_},
        {"%ProgramFiles%", &txtProgramsDir_},
        {"%Desktop%", &txtDesktop_},
    };
    const std::pair<const char*, const QString*> asWritten[] = {
        {"%TempDir%", &tempFolder_},       {"%SystemRoot%", &windowsFolder_},
        {"%Systemroot%", &windowsFolder_}, {"%systemroot%", &windowsFolder_},
        {"%SYSTEMROOT%", &windowsFolder_}, {"%SystemDir%", &systemFolder_},
        {"%windir%", &windowsFolder_},     {"%WinDir%", &windowsFolder_},
        {"%Windir%", &windowsFolder_},     {"%WINDIR%", &windowsFolder_},
    };
    QString expanded = path;
    for (const auto& [name, folder] : anyCase) {
        expanded = core::replace(expanded, QLatin1String(name), *folder, true);
    }
    for (const auto& [name, folder] : asWritten) {
        expanded = core::replace(expanded, QLatin1String(name), *folder);
    }
    return expanded;
}

QString DataFolders::environmentVariable(const char* name) const {
    return core::fromAnsi(
        platform_.codePage,
        platform_.environment.GetEnvironmentVariableA(name).value_or(std::string()));
}

bool DataFolders::folderExists(const QString& path) const {
    return platform_.files.FolderExists(core::toAnsi(platform_.codePage, path));
}

void DataFolders::makeFolder(const QString& path) const {
    platform_.files.MkDir(core::toAnsi(platform_.codePage, path));
}

}  // namespace state
