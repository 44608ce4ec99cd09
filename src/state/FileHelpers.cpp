#include "state/FileHelpers.h"

#include <QDateTime>

#include <algorithm>

#include "core/AnsiText.h"
#include "core/BasicText.h"
#include "localisation/BasicErrors.h"

#include "state/SystemDateFormats.h"

namespace state {

FileHelpers::FileHelpers(platform::Platform& platform) : platform_(platform) {}

bool FileHelpers::FileExists(const QString& path) {
    const std::string ansi = core::toAnsi(platform_.codePage, path);
    if (path.size() == 3 && path.endsWith(QStringLiteral(":\\"))) {
        const std::uint32_t type = platform_.files.GetDriveTypeA(ansi);
        return type >= platform::drivetype::Removable && type <= platform::drivetype::RamDisk;
    }
    if (path.size() < 3) {
        return false;
    }
    using namespace platform::fileattr;
    return !platform_.files.Dir(ansi, Hidden | System | Directory).empty();
}

bool FileHelpers::FolderExists(const QString& path) {
    return platform_.files.FolderExists(core::toAnsi(platform_.codePage, path));
}

bool FileHelpers::CreateBlankFile(const QString& path) {
    return platform_.files.writeFile(core::toAnsi(platform_.codePage, path), {});
}

int FileHelpers::WriteTextFile(const QString& path, const QString& text) {
    const std::string file = core::toAnsi(platform_.codePage, path);
    if (platform_.files.writeFile(file, core::toAnsi(platform_.codePage, text))) {
        return 0;
    }
    using namespace localisation::basicerror;
    return platform_.files.FolderExists(platform::GetParentFolderName(file)) ? PathFileAccessError
                                                                             : PathNotFound;
}

void FileHelpers::UniqueFileName(QString& path) {
    if (!FileExists(path)) {
        return;
    }
    // A dot before the last separator belongs to a folder's name, not to an extension.
    int dot = core::inStrRev(path, QStringLiteral("."));
    if (dot < core::inStrRev(path, QStringLiteral("\\"))) {
        dot = 0;
    }
    const QString stem = dot > 0 ? core::left(path, dot - 1) : path;
    const QString extension = dot > 0 ? core::mid(path, dot) : QString();
    QString candidate;
    int number = 0;
    do {
        ++number;
        candidate = stem + u'(' + QString::number(number) + u')' + extension;
    } while (FileExists(candidate));
    path = candidate;
}

QString FileHelpers::TimeStampUTC() {
    // Windows's bias is UTC less local time, in minutes, so the local time plus the bias is UTC.
    const QDateTime local = LocalNow(platform_);
    return QDateTime(local.date(), local.time(), Qt::UTC)
        .addSecs(60 * platform_.clock.timeZoneBiasMinutes())
        .toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

QString FileHelpers::GetOSUserName() {
    std::string name = platform_.environment.GetUserNameA();
    name.resize(std::min(name.size(), name.find('\0')));
    return core::fromAnsi(platform_.codePage, name);
}

bool FileHelpers::IsVista() {
    const platform::OsVersion os = platform_.environment.osVersion();
    return os.platform == 2 && os.major == 6 && os.minor >= 0 && os.minor <= 2;
}

QString FileHelpers::WindowsVersion() {
    // Platform, major, minor (-1: any) and the name; platform 0 is Win32s of any version.
    struct Known {
        int platform, major, minor;
        const char* name;
    };
    static constexpr Known known[] = {
        {1, 4, 0, "Win 95"}, {1, 4, 10, "Win 98"}, {2, 4, -1, "Win NT"},   {2, 5, 0, "Win 2000"},
        {2, 5, 1, "Win XP"}, {2, 6, 0, "Vista"},   {2, 6, 1, "Windows 7"}, {2, 6, 2, "Windows 8"},
    };
    const platform::OsVersion os = platform_.environment.osVersion();
    if (os.platform == 0) {
        return QStringLiteral("Win32");
    }
    for (const Known& entry : known) {
        if (entry.platform == os.platform && entry.major == os.major &&
            (entry.minor < 0 || entry.minor == os.minor)) {
            return QString::fromLatin1(entry.name);
        }
    }
    return {};
}

QString PercentEscape(const platform::CodePage& codePage, const QString& text) {
    static constexpr char hex[] = "0123456789ABCDEF";
    QString escaped;
    for (const char byte : core::toAnsi(codePage, text)) {
        const auto code = static_cast<unsigned char>(byte);
        if ((code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z') ||
            (code >= 'a' && code <= 'z')) {
            escaped += QChar(code);
        } else {
            escaped += u'%';
            escaped += QChar(hex[code >> 4]);
            escaped += QChar(hex[code & 0x0F]);
        }
    }
    return escaped;
}

}  // namespace state
