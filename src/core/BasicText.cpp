#include "core/BasicText.h"

#include <algorithm>

namespace core {

namespace {

Qt::CaseSensitivity sensitivity(bool caseInsensitive) {
    return caseInsensitive ? Qt::CaseInsensitive : Qt::CaseSensitive;
}

// QString::toUpper applies the full Unicode mappings ("ß" to "SS"); Basic maps each character
// on its own, so this goes code point by code point with the simple mappings.
template <typename Map>
QString mapEachCharacter(const QString& text, Map map) {
    QString mapped;
    mapped.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        char32_t code = text[i].unicode();
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            code = QChar::surrogateToUcs4(text[i], text[i + 1]);
            ++i;
        }
        const char32_t result = map(code);
        if (QChar::requiresSurrogates(result)) {
            mapped += QChar(QChar::highSurrogate(result));
            mapped += QChar(QChar::lowSurrogate(result));
        } else {
            mapped += QChar(result);
        }
    }
    return mapped;
}

}  // namespace

QStringList split(const QString& text, const QString& delimiter, int limit) {
    if (text.isEmpty() || limit == 0) {
        return {};
    }
    if (delimiter.isEmpty() || limit == 1) {
        return {text};
    }
    QStringList parts;
    qsizetype from = 0;
    while (limit < 0 || parts.size() < limit - 1) {
        const qsizetype at = text.indexOf(delimiter, from);
        if (at < 0) {
            break;
        }
        parts.append(text.mid(from, at - from));
        from = at + delimiter.size();
    }
    parts.append(text.mid(from));
    return parts;
}

QStringList splitOne(const QString& text, const QString& delimiter) {
    if (text.isEmpty()) {
        return {QString()};
    }
    return split(text, delimiter);
}

QString ltrim(const QString& text) {
    qsizetype start = 0;
    while (start < text.size() && text[start] == u' ') {
        ++start;
    }
    return text.mid(start);
}

QString rtrim(const QString& text) {
    qsizetype end = text.size();
    while (end > 0 && text[end - 1] == u' ') {
        --end;
    }
    return text.left(end);
}

QString trim(const QString& text) {
    return ltrim(rtrim(text));
}

int inStr(int start, const QString& text, const QString& search, bool caseInsensitive) {
    start = std::max(start, 1);
    if (text.isEmpty() || start > text.size() + 1) {
        return 0;
    }
    if (search.isEmpty()) {
        return start;
    }
    return int(text.indexOf(search, start - 1, sensitivity(caseInsensitive))) + 1;
}

int inStrRev(const QString& text, const QString& search, int start, bool caseInsensitive) {
    if (start == -1) {
        start = int(text.size());
    }
    if (text.isEmpty() || start < 1 || start > text.size()) {
        return 0;
    }
    if (search.isEmpty()) {
        return start;
    }
    if (search.size() > start) {
        return 0;
    }
    return int(text.lastIndexOf(search, start - search.size(), sensitivity(caseInsensitive))) + 1;
}

// QString::left and right give the whole text for a negative count.
QString left(const QString& text, int length) {
    return length > 0 ? text.left(length) : QString();
}

QString right(const QString& text, int length) {
    return length > 0 ? text.right(length) : QString();
}

QString mid(const QString& text, int start, int length) {
    start = std::max(start, 1);
    if (start > text.size()) {
        return {};
    }
    return length < 0 ? text.mid(start - 1) : text.mid(start - 1, length);
}

QString replace(const QString& text, const QString& find, const QString& with,
                bool caseInsensitive) {
    QString result = text;
    if (!find.isEmpty()) {
        result.replace(find, with, sensitivity(caseInsensitive));
    }
    return result;
}

QString lcase(const QString& text) {
    return mapEachCharacter(text, [](char32_t c) { return QChar::toLower(c); });
}

QString ucase(const QString& text) {
    return mapEachCharacter(text, [](char32_t c) { return QChar::toUpper(c); });
}

bool textCompare(const QString& a, const QString& b) {
    return QString::compare(a, b, Qt::CaseInsensitive) == 0;
}

}  // namespace core
