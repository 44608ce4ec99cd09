#include "scan/ScanOSWord.h"

namespace scan {

QString ScanOSWord(const platform::OsVersion& version) {
    // The number in hundredths: 6.1 is 601. Both forms of 5.1 and 6.1 (5.01 and 5.10) are
    // known, as the version may come either way.
    const int hundredths = version.major * 100 + version.minor;
    switch (hundredths) {
        case 400:
            return QStringLiteral("Win3.x");
        case 500:
            return QStringLiteral("Win2K");
        case 501:
        case 510:
            return QStringLiteral("XP");
        case 502:
            return QStringLiteral("Win2003");
        case 600:
            return QStringLiteral("Vista");
        case 601:
        case 610:
            return QStringLiteral("Win7");
        case 602:
            return QStringLiteral("Win8");
        default:
            break;
    }
    QString text = QString::number(version.major);
    const int minor = hundredths % 100;
    if (minor != 0) {
        text += u'.' + QStringLiteral("%1").arg(minor, 2, 10, QChar(u'0'));
        while (text.endsWith(u'0')) {
            text.chop(1);
        }
    }
    return text;
}

}  // namespace scan
