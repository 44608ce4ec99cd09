#include "server/QueryText.h"

#include <QByteArray>

#include <algorithm>

#include "server/Windows1252.h"

namespace server {

namespace {

int hexValue(QChar c) {
    const char16_t u = c.unicode();
    if (u >= u'0' && u <= u'9') {
        return u - u'0';
    }
    if (u >= u'a' && u <= u'f') {
        return u - u'a' + 10;
    }
    if (u >= u'A' && u <= u'F') {
        return u - u'A' + 10;
    }
    return -1;
}

bool hasControlCharacter(const QString& text) {
    return std::any_of(text.begin(), text.end(), [](QChar c) {
        return (c.unicode() < 0x20 && c != u'\t') || c.unicode() == 0x7F;
    });
}

std::optional<QString> decode(QStringView part, QueryEncoding encoding) {
    QByteArray bytes;
    bytes.reserve(part.size());
    for (qsizetype i = 0; i < part.size(); ++i) {
        const QChar c = part[i];
        if (c == u'%') {
            const int high = i + 2 < part.size() ? hexValue(part[i + 1]) : -1;
            const int low = i + 2 < part.size() ? hexValue(part[i + 2]) : -1;
            if (high >= 0 && low >= 0) {
                bytes += char(high * 16 + low);
                i += 2;
                continue;
            }
            if (encoding == QueryEncoding::Windows1252) {
                return std::nullopt;
            }
            bytes += '%';
        } else if (c.unicode() < 0x80) {
            bytes += char(c.unicode());
        } else if (encoding == QueryEncoding::Windows1252) {
            bytes += toWindows1252(part.mid(i, 1));
        } else {
            bytes += part.mid(i, 1).toUtf8();
        }
    }
    if (encoding == QueryEncoding::Windows1252) {
        return fromWindows1252(bytes);
    }
    const QString text = QString::fromUtf8(bytes);
    const bool utf8 = !text.contains(QChar::ReplacementCharacter) || bytes.contains("\xEF\xBF\xBD");
    const QString decoded = utf8 ? text : fromWindows1252(bytes);
    if (hasControlCharacter(decoded)) {
        return std::nullopt;
    }
    return decoded;
}

}  // namespace

bool hasBadEscape(QStringView text) {
    for (qsizetype at = text.indexOf(u'%'); at >= 0; at = text.indexOf(u'%', at + 1)) {
        if (at + 2 >= text.size() || hexValue(text[at + 1]) < 0 || hexValue(text[at + 2]) < 0) {
            return true;
        }
    }
    return false;
}

std::optional<QueryParameters> parseQuery(QStringView query, QueryEncoding encoding) {
    QueryParameters parameters;
    for (QStringView part : query.split(u'&', Qt::SkipEmptyParts)) {
        const qsizetype equals = part.indexOf(u'=');
        const auto key = decode(equals < 0 ? part : part.left(equals), encoding);
        const auto value = decode(equals < 0 ? QStringView() : part.mid(equals + 1), encoding);
        if (!key || !value) {
            return std::nullopt;
        }
        parameters.push_back({*key, *value});
    }
    return parameters;
}

std::optional<QString> queryValue(const QueryParameters& parameters, QStringView key) {
    for (const QueryParameter& parameter : parameters) {
        if (parameter.key.compare(key, Qt::CaseInsensitive) == 0) {
            return parameter.value;
        }
    }
    return std::nullopt;
}

}  // namespace server
