#pragma once
#include <QDateTime>
#include <QString>

#include <optional>

// What the two date readers, by picture and loose, share.
namespace core::detail {

// The numbers a date or time text gave, before they are checked and put together.
struct DateFields {
    enum class Half { None, Am, Pm };

    std::optional<int> year;
    int yearDigits = 4;
    std::optional<int> month;
    std::optional<int> day;
    std::optional<int> hour;
    int minute = 0;
    int second = 0;
    Half half = Half::None;
};

inline bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

inline void skipBlanks(const QString& text, qsizetype& at) {
    while (at < text.size() && text[at] == u' ') {
        ++at;
    }
}

// The designator, am or pm, that begins the text at `at`, without regard to case; the longer
// one first when one begins the other.
std::optional<DateFields::Half> readDesignator(const QString& text, qsizetype& at,
                                               const QString& am, const QString& pm);

// The date-time the fields stand for, as Basic keeps it: a time alone lies on the zero date, a
// date alone at midnight. Nothing when the fields don't make a valid date and time, or when the
// date part is incomplete.
std::optional<QDateTime> toDateTime(const DateFields& fields);

}  // namespace core::detail
