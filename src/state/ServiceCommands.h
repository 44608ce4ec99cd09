#pragma once
#include <QString>
#include <QStringList>

// The commands of the service's command file, one builder each: fields separated by "|", with
// nothing escaped, so data can't hold a "|". A text of several commands is carried out in order.
namespace state::servicecommand {

QString RegSetString(const QString& keyPath, const QString& valueName, const QString& data);
QString RegDeleteVal(const QString& keyPath, const QString& valueName);
QString RegCreateKey(const QString& keyPath);
QString Kill(const QString& file);
// The contents of source into target, an existing file there left as it is.
QString FsoCopyFolder(const QString& source, const QString& target);
// The folder and everything in it, read-only entries too.
QString FsoDeleteFolder(const QString& folder);

// One command text: the commands joined by CR LF.
QString commandText(const QStringList& commands);

}  // namespace state::servicecommand
