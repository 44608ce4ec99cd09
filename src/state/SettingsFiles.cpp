#include "state/SettingsFiles.h"

#include "core/AnsiText.h"
#include "localisation/modUTF8_FileIO.h"
#include "state/FileHelpers.h"
#include "state/ProductNames.h"
#include "state/RuntimeErrors.h"

namespace state {

SettingsFiles::SettingsFiles(platform::Platform& platform, const QString& dataFolder, lst& holder,
                             QString programTitle)
    : platform_(platform),
      dataFolder_(dataFolder),
      lst_(holder),
      programTitle_(std::move(programTitle)) {}

void SettingsFiles::tell(const QString& text) {
    platform_.messageBox.show(text.toStdU16String(), programTitle_.toStdU16String(),
                              platform::mbstyle::Ok);
}

bool SettingsFiles::LoadFiles(const QString& path, QStringList& list) {
    list.clear();
    if (!platform_.files.FileExists(core::toAnsi(platform_.codePage, path))) {
        return false;
    }
    QString text;
    QString errorText;
    if (!localisation::modUTF8_FileIO(platform_).ReadUTF8File(path, text, errorText, true, true,
                                                              false)) {
        tell(errorText);
        return false;
    }
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\r"));
    // A last piece without CR counts; a CR alone left at the end does not.
    while (!text.isEmpty() && text != QLatin1String("\r")) {
        const qsizetype end = text.indexOf(u'\r');
        if (end < 0) {
            list << text;
            break;
        }
        list << text.left(end);
        text = text.mid(end + 1);
    }
    return true;
}

void SettingsFiles::removeOld(const QString& path) {
    const std::string file = core::toAnsi(platform_.codePage, path);
    if (platform_.files.FileExists(file)) {
        platform_.files.SetAttr(file, platform::fileattr::Normal);
        platform_.files.Kill(file);
    }
}

int SettingsFiles::replacePlain(const QString& path, const QStringList& list) {
    removeOld(path);
    return FileHelpers(platform_).WriteTextFile(path, list.join(QStringLiteral("\r\n")));
}

void SettingsFiles::tellFailedSave(int error, const QString& procedure) {
    // The handler reaches for a member that does not exist, so the folder and file name never
    // make it into this text.
    tell(HandlerErrorLine(BasicFault(error), procedure, CodeUnit::Module,
                          QStringLiteral("modSettings")));
}

void SettingsFiles::SaveSettingsToFile(const QStringList& list, const QString& folder,
                                       const QString& fileName, bool useUTF8) {
    if (dataFolder_.isEmpty()) {
        return;
    }
    const QString path = dataFolder_ + folder + fileName;
    if (useUTF8) {
        removeOld(path);
        QString errorText;
        if (!localisation::modUTF8_FileIO(platform_).WriteUTF8File(
                path, list.join(QStringLiteral("\r\n")), errorText, false)) {
            tell(errorText);
        }
        return;
    }
    if (const int error = replacePlain(path, list); error != 0) {
        tellFailedSave(error, QStringLiteral("SaveSettingsToFile"));
    }
}

void SettingsFiles::SaveToFile(const QString& path, const QStringList& list) {
    if (const int error = replacePlain(path, list); error != 0) {
        tellFailedSave(error, QStringLiteral("SaveToFile"));
    }
}

void SettingsFiles::SaveData() {
    SaveSettingsToFile(lst_.lstIgnoreListFile, QStringLiteral("Settings\\"),
                       QStringLiteral("Ignored.cus"), false);
}

}  // namespace state
