#pragma once
#include <QString>
#include <QStringList>

#include "platform/Platform.h"
#include "state/lst.h"

namespace state {

// The files kept as lists of lines: the settings file while it is rewritten, the ignore list.
// They are plain text in the system code page unless a caller asks for UTF-8.
class SettingsFiles {
public:
    // dataFolder: with its trailing "\"; empty until the data folder is known.
    SettingsFiles(platform::Platform& platform, const QString& dataFolder, lst& holder,
                  QString programTitle);

    // Empties the list and, when the file is there, adds its lines. A file that can't be read
    // is told in a plain box and gives false; a missing file gives false without a word.
    bool LoadFiles(const QString& path, QStringList& list);
    // Replaces <data folder><folder><fileName> with the list's lines joined by CR LF, no line
    // end behind the last. A failed save is told without the file's name.
    void SaveSettingsToFile(const QStringList& list, const QString& folder, const QString& fileName,
                            bool useUTF8);
    // The same for an absolute path, always in the system code page.
    void SaveToFile(const QString& path, const QStringList& list);
    // Writes the ignore list: Settings\Ignored.cus.
    void SaveData();

private:
    // Clears the attributes of an existing file and deletes it.
    void removeOld(const QString& path);
    // Replaces the file with the lines in the system code page; 0, or Basic's error number.
    int replacePlain(const QString& path, const QStringList& list);
    // The handler's line of a failed save, in a plain box.
    void tellFailedSave(int error, const QString& procedure);
    void tell(const QString& text);

    platform::Platform& platform_;
    const QString& dataFolder_;
    lst& lst_;
    const QString programTitle_;
};

}  // namespace state
