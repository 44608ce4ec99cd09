#include "service/WindowsPath.h"

#include <QRegularExpression>

namespace service {

namespace {

bool sameElements(const QStringList& a, const QStringList& b, qsizetype count) {
    for (qsizetype i = 0; i < count; ++i) {
        if (a[i].compare(b[i], Qt::CaseInsensitive) != 0) {
            return false;
        }
    }
    return true;
}

}  // namespace

std::optional<QStringList> pathElements(const QString& path) {
    static const QRegularExpression kSeparators(QStringLiteral("[\\\\/]"));
    static const QRegularExpression kDrive(QStringLiteral("^[A-Za-z]:$"));
    static const QRegularExpression kForbidden(QStringLiteral("[<>:\"|?*\\x00-\\x1f]"));
    QStringList elements = path.split(kSeparators);
    if (elements.size() > 2 && elements.last().isEmpty()) {
        elements.removeLast();
    }
    if (elements.size() < 2 || !kDrive.match(elements.first()).hasMatch()) {
        return std::nullopt;
    }
    for (qsizetype i = 1; i < elements.size(); ++i) {
        const QString& name = elements[i];
        // Windows drops trailing dots and blanks, which would turn ".. " into "..".
        if (name.isEmpty() || name.endsWith(u'.') || name.endsWith(u' ') ||
            name.contains(kForbidden)) {
            return std::nullopt;
        }
    }
    return elements;
}

bool liesBelow(const QStringList& path, const QStringList& folder) {
    return path.size() > folder.size() && sameElements(path, folder, folder.size());
}

bool samePath(const QStringList& a, const QStringList& b) {
    return a.size() == b.size() && sameElements(a, b, a.size());
}

}  // namespace service
