#pragma once
#include <QList>
#include <QString>
#include <QStringView>

#include <optional>

namespace server {

// One key and value of a query, decoded, in the order of the query; keys may repeat.
struct QueryParameter {
    QString key;
    QString value;
};
using QueryParameters = QList<QueryParameter>;

// How the values of a query were written.
enum class QueryEncoding {
    // As the desktop program sends them: every character other than 0-9, A-Z and a-z is
    // "%XX" of its Windows-1252 byte. A "%" without two hex digits makes the query malformed.
    Windows1252,
    // As they come from the desktop program's tracking and a browser's address bar: mostly
    // unencoded. "%XX" is decoded where it stands, any other "%" is kept; the bytes are read
    // as UTF-8 when they are that, else as Windows-1252. A control character (other than
    // tab) in a decoded key or value makes the query malformed.
    Raw,
};

// The parameters of a query text (without "?"): split at "&", then at the first "=" (a part
// without "=" is a key with an empty value); empty parts are skipped; "+" stays "+".
// Nothing when the query is malformed.
std::optional<QueryParameters> parseQuery(QStringView query, QueryEncoding encoding);

// True when a "%" of the text lacks two hex digits behind it.
bool hasBadEscape(QStringView text);

// The value of the first parameter of that key, compared without regard to case (as ASP
// reads its query); nothing when the key is not there.
std::optional<QString> queryValue(const QueryParameters& parameters, QStringView key);

}  // namespace server
