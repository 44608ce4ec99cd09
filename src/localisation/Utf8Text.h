#pragma once
#include <QString>

#include <string>
#include <string_view>

namespace localisation {

// UTF-8 as Windows converts it with code page 65001 and no flags. A leading byte order mark
// stays U+FEFF (QString::fromUtf8 would drop it) and a lone surrogate is written as U+FFFD
// (QString::toUtf8 would write "?"). A broken sequence becomes one U+FFFD for each of its
// bytes, as Qt's decoder counts them.
QString decodeUtf8(std::string_view bytes);
std::string encodeUtf8(const QString& text);

}  // namespace localisation
