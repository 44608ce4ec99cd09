#include "state/ServiceCommands.h"

namespace state::servicecommand {

QString RegSetString(const QString& keyPath, const QString& valueName, const QString& data) {
    return QStringList{QStringLiteral("RegSetString"), keyPath, valueName, data}.join(u'|');
}

QString RegDeleteVal(const QString& keyPath, const QString& valueName) {
    return QStringList{QStringLiteral("RegDeleteVal"), keyPath, valueName}.join(u'|');
}

QString RegCreateKey(const QString& keyPath) {
    return QStringLiteral("RegCreateKey|") + keyPath;
}

QString Kill(const QString& file) {
    return QStringLiteral("Kill|") + file;
}

QString FsoCopyFolder(const QString& source, const QString& target) {
    return QStringList{QStringLiteral("FsoCopyFolder"), source, target, QStringLiteral("False")}
        .join(u'|');
}

QString FsoDeleteFolder(const QString& folder) {
    return QStringList{QStringLiteral("FsoDeleteFolder"), folder, QStringLiteral("True")}.join(
        u'|');
}

QString commandText(const QStringList& commands) {
    return commands.join(QStringLiteral("\r\n"));
}

}  // namespace state::servicecommand
