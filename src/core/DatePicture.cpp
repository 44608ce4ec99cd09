#include "core/DatePicture.h"

#include "core/DateFields.h"

namespace core::detail {

namespace {

bool isFieldLetter(QChar c) {
    return QStringView(u"dMyhHmst").contains(c);
}

QString number(int value, int width) {
    return QString::number(value).rightJustified(width, u'0');
}

// A blank of the picture stands for any run of blanks, none included; the rest must match.
bool matchLiteral(const QString& text, qsizetype& at, const QString& literal) {
    for (const QChar c : literal) {
        if (c == u' ') {
            skipBlanks(text, at);
        } else if (at < text.size() && text[at].toCaseFolded() == c.toCaseFolded()) {
            ++at;
        } else {
            return false;
        }
    }
    return true;
}

std::optional<int> readNumber(const QString& text, qsizetype& at, int maxDigits, int& digits) {
    int value = 0;
    digits = 0;
    while (digits < maxDigits && at < text.size() && isDigit(text[at])) {
        value = value * 10 + (text[at++].unicode() - u'0');
        ++digits;
    }
    return digits > 0 ? std::optional(value) : std::nullopt;
}

}  // namespace

QList<PictureElement> pictureElements(const QString& picture) {
    QList<PictureElement> elements;
    const auto appendLiteral = [&elements](QChar c) {
        if (elements.isEmpty() || !elements.last().letter.isNull()) {
            elements.append(PictureElement());
        }
        elements.last().literal += c;
    };
    for (qsizetype at = 0; at < picture.size();) {
        const QChar c = picture[at];
        if (c == u'\'') {
            const qsizetype close = picture.indexOf(u'\'', at + 1);
            const qsizetype end = close < 0 ? picture.size() : close;
            for (qsizetype i = at + 1; i < end; ++i) {
                appendLiteral(picture[i]);
            }
            at = end + 1;
        } else if (isFieldLetter(c)) {
            qsizetype end = at;
            while (end < picture.size() && picture[end] == c) {
                ++end;
            }
            elements.append({c, int(end - at), {}});
            at = end;
        } else {
            appendLiteral(c);
            ++at;
        }
    }
    return elements;
}

QString formatWithPicture(const QDateTime& value, const QString& picture,
                          const DateFormats& formats) {
    const QDate date = value.date();
    const QTime time = value.time();
    QString text;
    for (const PictureElement& element : pictureElements(picture)) {
        const int width = element.count >= 2 ? 2 : 1;
        switch (element.letter.unicode()) {
            case u'd':
                text += number(date.day(), width);
                break;
            case u'M':
                text += number(date.month(), width);
                break;
            case u'y':
                text +=
                    element.count >= 3 ? number(date.year(), 4) : number(date.year() % 100, width);
                break;
            case u'h':
                text += number((time.hour() + 11) % 12 + 1, width);
                break;
            case u'H':
                text += number(time.hour(), width);
                break;
            case u'm':
                text += number(time.minute(), width);
                break;
            case u's':
                text += number(time.second(), width);
                break;
            case u't': {
                const QString& designator = time.hour() < 12 ? formats.am : formats.pm;
                text += element.count >= 2 ? designator : designator.left(1);
                break;
            }
            default:
                text += element.literal;
        }
    }
    return text;
}

std::optional<QDateTime> parseWithPicture(const QString& text, const QString& picture,
                                          const DateFormats& formats) {
    DateFields fields;
    qsizetype at = 0;
    skipBlanks(text, at);
    for (const PictureElement& element : pictureElements(picture)) {
        if (element.letter.isNull()) {
            if (!matchLiteral(text, at, element.literal)) {
                return std::nullopt;
            }
            continue;
        }
        if (element.letter == u't') {
            // "t" is the designator's first letter. A locale without designators leaves the
            // hour as written.
            const QString am = element.count >= 2 ? formats.am : formats.am.left(1);
            const QString pm = element.count >= 2 ? formats.pm : formats.pm.left(1);
            if (am.isEmpty() && pm.isEmpty()) {
                continue;
            }
            const auto half = readDesignator(text, at, am, pm);
            if (!half) {
                return std::nullopt;
            }
            fields.half = *half;
            continue;
        }
        const bool fullYear = element.letter == u'y' && element.count >= 3;
        int digits = 0;
        const std::optional<int> value = readNumber(text, at, fullYear ? 4 : 2, digits);
        if (!value) {
            return std::nullopt;
        }
        switch (element.letter.unicode()) {
            case u'd':
                fields.day = value;
                break;
            case u'M':
                fields.month = value;
                break;
            case u'y':
                fields.year = value;
                fields.yearDigits = digits;
                break;
            case u'm':
                fields.minute = *value;
                break;
            case u's':
                fields.second = *value;
                break;
            default:
                fields.hour = value;
        }
    }
    skipBlanks(text, at);
    if (at != text.size()) {
        return std::nullopt;
    }
    return toDateTime(fields);
}

}  // namespace core::detail
