#include "scan/VersionCompare.h"

#include <QStringList>

#include "core/BasicNumber.h"
#include "core/BasicText.h"

namespace scan {

namespace {

// A part of digits, commas and blanks with at least one blank: the blanks separate parts.
QString cleanPart(const QString& part) {
    if (!part.contains(u' ')) {
        return part;
    }
    for (const QChar c : part) {
        if ((c < u'0' || c > u'9') && c != u'.' && c != u',' && c != u' ') {
            return part;
        }
    }
    return QString(part).replace(u' ', u'.');
}

QStringList versionParts(const QString& version) {
    QStringList parts = core::split(version, QStringLiteral("."));
    for (QString& part : parts) {
        part = cleanPart(part);
    }
    return core::split(parts.join(u'.'), QStringLiteral("."));
}

void padTo(QStringList& parts, const QStringList& other) {
    while (parts.size() < other.size()) {
        parts.append(QString(other[parts.size()].size(), u'0'));
    }
}

QString withoutLeadingV(const QString& part) {
    return part.startsWith(u'v') || part.startsWith(u'V') ? part.mid(1) : part;
}

// -1, 0 or 1 as available is older than, equal to or newer than installed. A number beyond
// 32 bits compares as text.
int comparePart(const QString& installed, const QString& available) {
    if (core::isNumeric(installed) && core::isNumeric(available)) {
        const auto installedNumber = core::cLng(installed);
        const auto availableNumber = core::cLng(available);
        if (installedNumber && availableNumber) {
            return (*availableNumber > *installedNumber) - (*availableNumber < *installedNumber);
        }
    }
    const int order = QString::compare(available, installed, Qt::CaseSensitive);
    return (order > 0) - (order < 0);
}

}  // namespace

bool IsVersionNewer(const QString& installed, const QString& available) {
    if (installed.isEmpty()) {
        return true;
    }
    if (available.isEmpty()) {
        return false;
    }
    QStringList availableParts = versionParts(available);
    QStringList installedParts = versionParts(installed);
    padTo(availableParts, installedParts);
    padTo(installedParts, availableParts);
    for (qsizetype i = 0; i < installedParts.size(); ++i) {
        const QString a = i == 0 ? withoutLeadingV(availableParts[i]) : availableParts[i];
        const QString b = i == 0 ? withoutLeadingV(installedParts[i]) : installedParts[i];
        const int order = comparePart(b, a);
        if (order != 0) {
            return order > 0;
        }
    }
    return false;
}

}  // namespace scan
