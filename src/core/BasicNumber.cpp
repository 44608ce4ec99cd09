#include "core/BasicNumber.h"

#include <QByteArray>

#include <charconv>
#include <cmath>
#include <limits>

namespace core {

namespace {

bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

int digitValue(QChar c) {
    if (isDigit(c)) {
        return c.unicode() - u'0';
    }
    const char16_t upper = c.toUpper().unicode();
    return upper >= u'A' && upper <= u'F' ? upper - u'A' + 10 : -1;
}

bool isSign(QChar c) {
    return c == u'+' || c == u'-';
}

bool isExponentLetter(QChar c) {
    return c == u'e' || c == u'E' || c == u'd' || c == u'D';  // Basic's "D" marks a double
}

bool isWhite(QChar c) {
    return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n';
}

void skipWhite(const QString& text, qsizetype& at) {
    while (at < text.size() && isWhite(text[at])) {
        ++at;
    }
}

// The digits of a &H or &O number, the "&" at `at`. Reads as far as digits of the base go;
// nothing when there is no digit or the number needs more than 32 bits.
std::optional<quint32> readRadixNumber(const QString& text, qsizetype& at) {
    if (at + 1 >= text.size() || text[at] != u'&') {
        return std::nullopt;
    }
    const QChar prefix = text[at + 1].toUpper();
    const int base = prefix == u'H' ? 16 : prefix == u'O' ? 8 : 0;
    if (base == 0) {
        return std::nullopt;
    }
    qsizetype end = at + 2;
    quint64 value = 0;
    for (; end < text.size(); ++end) {
        const int d = digitValue(text[end]);
        if (d < 0 || d >= base) {
            break;
        }
        value = value * base + quint64(d);
        if (value > std::numeric_limits<quint32>::max()) {
            return std::nullopt;
        }
    }
    if (end == at + 2) {
        return std::nullopt;
    }
    at = end;
    return quint32(value);
}

// A decimal number from `at` on, as text that std::from_chars reads: digits, one ".", and an
// exponent when one with digits follows. With `thousands`, "," may stand anywhere before the
// point and is dropped. Empty when no digit came.
QByteArray readDecimalNumber(const QString& text, qsizetype& at, bool thousands) {
    QByteArray number;
    bool point = false;
    bool digit = false;
    qsizetype end = at;
    for (; end < text.size(); ++end) {
        const QChar c = text[end];
        if (isDigit(c)) {
            number += char(c.unicode());
            digit = true;
        } else if (c == u'.' && !point) {
            number += '.';
            point = true;
        } else if (!(thousands && c == u',' && !point)) {
            break;
        }
    }
    if (!digit) {
        return {};
    }
    if (end < text.size() && isExponentLetter(text[end])) {
        qsizetype exponentEnd = end + 1;
        QByteArray exponent = "e";
        if (exponentEnd < text.size() && isSign(text[exponentEnd])) {
            exponent += char(text[exponentEnd++].unicode());
        }
        const qsizetype digitsStart = exponentEnd;
        while (exponentEnd < text.size() && isDigit(text[exponentEnd])) {
            exponent += char(text[exponentEnd++].unicode());
        }
        if (exponentEnd > digitsStart) {
            number += exponent;
            end = exponentEnd;
        }
    }
    at = end;
    return number;
}

// Nothing for a number too large for a double, where Basic raises an overflow; a number too
// small for one is 0.
std::optional<double> toDouble(const QByteArray& number) {
    double value = 0;
    const auto [end, error] = std::from_chars(number.begin(), number.end(), value);
    if (error == std::errc::result_out_of_range) {
        return number.contains("e-") ? std::optional(0.0) : std::nullopt;
    }
    return value;
}

}  // namespace

std::optional<double> cDbl(const QString& text) {
    qsizetype at = 0;
    skipWhite(text, at);
    bool negative = false;
    const bool leadingSign = at < text.size() && isSign(text[at]);
    if (leadingSign) {
        negative = text[at++] == u'-';
        skipWhite(text, at);
    }
    std::optional<double> value;
    if (at < text.size() && text[at] == u'&') {
        if (const auto pattern = readRadixNumber(text, at)) {
            value = double(qint32(*pattern));
        }
    } else if (const QByteArray number = readDecimalNumber(text, at, true); !number.isEmpty()) {
        value = toDouble(number);
    }
    if (!value) {
        return std::nullopt;
    }
    skipWhite(text, at);
    if (!leadingSign && at < text.size() && isSign(text[at])) {
        negative = text[at++] == u'-';
        skipWhite(text, at);
    }
    if (at != text.size()) {
        return std::nullopt;
    }
    return negative ? -*value : *value;
}

bool isNumeric(const QString& text) {
    return cDbl(text).has_value();
}

std::optional<qint32> cLng(const QString& text) {
    const std::optional<double> value = cDbl(text);
    if (!value) {
        return std::nullopt;
    }
    const double rounded = std::nearbyint(*value);  // the default rounding is half to even
    if (rounded < double(std::numeric_limits<qint32>::min()) ||
        rounded > double(std::numeric_limits<qint32>::max())) {
        return std::nullopt;
    }
    return qint32(rounded);
}

double val(const QString& text) {
    QString compact;
    compact.reserve(text.size());
    for (const QChar c : text) {
        if (c != u' ' && c != u'\t' && c != u'\n') {
            compact += c;
        }
    }
    qsizetype at = 0;
    if (compact.startsWith(u'&')) {
        const std::optional<quint32> pattern = readRadixNumber(compact, at);
        if (!pattern) {
            return 0;
        }
        return *pattern <= 0xFFFF ? double(qint16(*pattern)) : double(qint32(*pattern));
    }
    const bool negative = at < compact.size() && compact[at] == u'-';
    if (at < compact.size() && isSign(compact[at])) {
        ++at;
    }
    const QByteArray number = readDecimalNumber(compact, at, false);
    if (number.isEmpty()) {
        return 0;
    }
    // Basic raises an overflow beyond a double's range; there is no value to give instead.
    const double value = toDouble(number).value_or(std::numeric_limits<double>::infinity());
    return negative ? -value : value;
}

}  // namespace core
