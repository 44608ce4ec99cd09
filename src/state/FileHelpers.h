#pragma once
#include <QString>

#include "platform/Platform.h"

namespace state {

// Small helpers around files, the clock and the facts of the computer.
class FileHelpers {
public:
    explicit FileHelpers(platform::Platform& platform);

    // A drive root such as "C:\" exists when it is a removable, fixed, remote, CD or RAM
    // drive; any other path when Dir finds it, hidden, system and folders included, so a
    // folder counts too and a wildcard pattern counts when it matches. Paths of fewer than
    // three characters are false.
    bool FileExists(const QString& path);
    bool FolderExists(const QString& path);
    // An empty file; false when it could not be written.
    bool CreateBlankFile(const QString& path);
    // Replaces the file with the text in the system code page in one step, so that no reader
    // ever sees it half written. 0, or the number of Basic's error that the write would have
    // raised: 76 (path not found) when the folder is missing, 75 (path/file access error) else.
    int WriteTextFile(const QString& path, const QString& text);
    // When the path exists, adds "(1)", "(2)", ... before the extension until it does not.
    void UniqueFileName(QString& path);

    // "yyyy-mm-dd hh:mm:ss" of the present time in UTC: the local time corrected by the
    // time-zone bias.
    QString TimeStampUTC();
    QString GetOSUserName();
    // Windows Vista, 7 or 8 (NT 6.0 to 6.2).
    bool IsVista();
    // "Win32", "Win 95", "Win 98", "Win NT", "Win 2000", "Win XP", "Vista", "Windows 7" or
    // "Windows 8"; "" for any other platform and version.
    QString WindowsVersion();

private:
    platform::Platform& platform_;
};

// ASCII letters and digits stay; every other byte of the text's ANSI form becomes "%" and two
// upper-case hex digits, so a character outside the code page arrives as "%3F" ("?") and a
// double-byte character as two escapes.
QString PercentEscape(const platform::CodePage& codePage, const QString& text);

}  // namespace state
