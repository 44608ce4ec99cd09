#include "core/LooseDate.h"

#include <QList>

#include <utility>

#include "core/DateFields.h"
#include "core/DatePicture.h"

namespace core::detail {

namespace {

struct Number {
    int value = 0;
    int digits = 0;
};

// Up to four digits: no part of a date or time has more.
std::optional<Number> readNumber(const QString& text, qsizetype& at) {
    Number number;
    while (at < text.size() && isDigit(text[at])) {
        if (++number.digits > 4) {
            return std::nullopt;
        }
        number.value = number.value * 10 + (text[at++].unicode() - u'0');
    }
    return number.digits > 0 ? std::optional(number) : std::nullopt;
}

std::optional<DateFields::Half> readAnyDesignator(const QString& text, qsizetype& at,
                                                  const DateFormats& formats) {
    const qsizetype start = at;
    auto half = readDesignator(text, at, formats.am, formats.pm);
    if (!half) {
        half = readDesignator(text, at, QStringLiteral("AM"), QStringLiteral("PM"));
    }
    if (half && at < text.size() && text[at].isLetter()) {
        at = start;  // the start of a longer word
        return std::nullopt;
    }
    return half;
}

// "h:mm", "h:mm:ss" or "h" with a designator. Leaves `at` alone when there is no time.
bool readTime(const QString& text, qsizetype& at, const DateFormats& formats, DateFields& fields) {
    qsizetype end = at;
    const std::optional<Number> hour = readNumber(text, end);
    if (!hour || hour->digits > 2) {
        return false;
    }
    int parts[2] = {0, 0};
    int partCount = 0;
    while (partCount < 2 && end < text.size() && text[end] == u':') {
        ++end;
        const std::optional<Number> part = readNumber(text, end);
        if (!part || part->digits > 2) {
            return false;
        }
        parts[partCount++] = part->value;
    }
    qsizetype designatorEnd = end;
    skipBlanks(text, designatorEnd);
    const std::optional<DateFields::Half> half = readAnyDesignator(text, designatorEnd, formats);
    if (partCount == 0 && !half) {
        return false;
    }
    fields.hour = hour->value;
    fields.minute = parts[0];
    fields.second = parts[1];
    fields.half = half.value_or(DateFields::Half::None);
    at = half ? designatorEnd : end;
    return true;
}

bool readDateSeparator(const QString& text, qsizetype& at) {
    const qsizetype start = at;
    skipBlanks(text, at);
    if (at < text.size() && QStringView(u"/-.,").contains(text[at])) {
        ++at;
        skipBlanks(text, at);
    }
    return at > start;
}

bool readDate(const QString& text, qsizetype& at, QList<Number>& numbers) {
    qsizetype end = at;
    QList<Number> read;
    for (int i = 0; i < 3; ++i) {
        if (i > 0 && !readDateSeparator(text, end)) {
            return false;
        }
        const std::optional<Number> number = readNumber(text, end);
        if (!number) {
            return false;
        }
        read.append(*number);
    }
    numbers = read;
    at = end;
    return true;
}

// The order of day ('d'), month ('M') and year ('y') in the short date picture.
QString dateOrder(const QString& shortDate) {
    QString order;
    for (const PictureElement& element : pictureElements(shortDate)) {
        if (QStringView(u"dMy").contains(element.letter) && !order.contains(element.letter)) {
            order += element.letter;
        }
    }
    for (const QChar letter : QStringView(u"Mdy")) {
        if (!order.contains(letter)) {
            order += letter;
        }
    }
    return order;
}

std::optional<QDateTime> withDate(DateFields fields, const QList<Number>& numbers,
                                  const QString& order) {
    for (qsizetype i = 0; i < order.size(); ++i) {
        const Number& number = numbers[i];
        if (order[i] == u'y') {
            fields.year = number.value;
            fields.yearDigits = number.digits;
        } else if (order[i] == u'M') {
            fields.month = number.value;
        } else {
            fields.day = number.value;
        }
    }
    return toDateTime(fields);
}

}  // namespace

std::optional<QDateTime> parseLooseDate(const QString& text, const DateFormats& formats) {
    DateFields fields;
    QList<Number> date;
    bool hasTime = false;
    qsizetype at = 0;
    skipBlanks(text, at);
    while (at < text.size()) {
        if (!hasTime && readTime(text, at, formats, fields)) {
            hasTime = true;
        } else if (!date.isEmpty() || !readDate(text, at, date)) {
            return std::nullopt;
        }
        const qsizetype partEnd = at;
        skipBlanks(text, at);
        if (at < text.size() && at == partEnd) {
            return std::nullopt;  // a date and a time stand apart
        }
    }
    if (date.isEmpty()) {
        return toDateTime(fields);
    }
    QString order = date.first().digits >= 3 ? QStringLiteral("yMd") : dateOrder(formats.shortDate);
    if (const auto dateTime = withDate(fields, date, order)) {
        return dateTime;
    }
    const qsizetype day = order.indexOf(u'd');
    const qsizetype month = order.indexOf(u'M');
    std::swap(order[day], order[month]);
    return withDate(fields, date, order);
}

}  // namespace core::detail
