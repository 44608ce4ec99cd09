#pragma once
#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>

namespace server {

// The Windows single-byte code page that the desktop program speaks to the server: bytes to
// text, and text to bytes with "?" for a character the code page lacks. The five bytes it
// leaves undefined stand for the control characters of the same value, as on Windows.
QString fromWindows1252(QByteArrayView bytes);
QByteArray toWindows1252(QStringView text);

}  // namespace server
