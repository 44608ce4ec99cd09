#include "server/NameNormaliser.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace server {

namespace {

// "?" stands for a character that the Windows code page could not hold: it stays part of its
// word, so that a name that lost characters matches only a name written the same way.
bool isWordChar(QChar c) {
    return c.isLetterOrNumber() || c == u'?';
}

bool isApostrophe(QChar c) {
    return c == u'\'' || c == u'\u2019' || c == u'`';
}

bool isOpening(QChar c) {
    return c == u'(' || c == u'[' || c == u'{';
}

bool isClosing(QChar c) {
    return c == u')' || c == u']' || c == u'}';
}

// The text outside brackets, or inside them: "(...)", "[...]" and "{...}", nested or not; an
// opening bracket that is never closed takes the rest of the text. Brackets become blanks.
QString bracketPart(const QString& text, bool inside) {
    QString out;
    out.reserve(text.size());
    int depth = 0;
    for (QChar c : text) {
        if (isOpening(c)) {
            ++depth;
            out += u' ';
        } else if (isClosing(c) && depth > 0) {
            --depth;
            out += u' ';
        } else if ((depth > 0) == inside) {
            out += c;
        }
    }
    return out;
}

// Architecture words as installers append them; the text is lower case already.
const QRegularExpression& architectureWords() {
    static const QRegularExpression expression(
        QStringLiteral("(?<![\\p{L}\\p{N}])(?:x86[-_]64|x64|x86|amd64|arm64|aarch64|win64|win32|"
                       "i386|i686|ia32|ia64|(?:64|32)[- _]?bits?)(?![\\p{L}\\p{N}])"),
        QRegularExpression::UseUnicodePropertiesOption);
    return expression;
}

// Dotted numbers with an optional "v" and an optional suffix ("1.2.3", "v2.0",
// "2025.02.00.02", "8.0.1-beta", "1.0.0-rc.1", "2.0b1"), and "v" with a number ("v2").
const QRegularExpression& versionNumbers() {
    static const QRegularExpression expression(
        QStringLiteral(
            "(?<![\\p{L}\\p{N}.])(?:v?(\\d+)(?:\\.\\d+)+(?:[a-z]+\\d*)?"
            "(?:[-+][\\p{L}\\p{N}]+(?:\\.[\\p{L}\\p{N}]+)*)?|v(\\d+))(?![\\p{L}\\p{N}])"),
        QRegularExpression::UseUnicodePropertiesOption);
    return expression;
}

QStringList punctuationWords(const QString& text) {
    QString cleaned;
    cleaned.reserve(text.size());
    for (QChar c : text) {
        if (isWordChar(c)) {
            cleaned += c;
        } else if (!isApostrophe(c)) {
            cleaned += u' ';
        }
    }
    return cleaned.split(u' ', Qt::SkipEmptyParts);
}

bool isNumber(const QString& word) {
    return std::all_of(word.begin(), word.end(), [](QChar c) { return c.isDigit(); });
}

// Words that the loose tier drops.
const QSet<QString>& looseDropWords() {
    static const QSet<QString> words = {"free",      "freeware", "pro",   "edition",   "enterprise",
                                        "community", "portable", "setup", "installer", "lite",
                                        "beta",      "preview",  "trial"};
    return words;
}

// Words of a prerelease channel, one bit each.
const QHash<QString, std::uint32_t>& channelBits() {
    static const QHash<QString, std::uint32_t> bits = [] {
        QHash<QString, std::uint32_t> map;
        std::uint32_t bit = 1;
        for (const char* word : {"alpha", "beta", "preview", "nightly", "dev", "development", "eap",
                                 "canary", "insider", "insiders", "rc", "unstable", "experimental",
                                 "trial", "prerelease", "snapshot", "daily"}) {
            map.insert(QString::fromLatin1(word), bit);
            bit <<= 1;
        }
        return map;
    }();
    return bits;
}

// Edition words, one bit each; synonyms share theirs.
const QHash<QString, std::uint32_t>& editionBits() {
    static const QHash<QString, std::uint32_t> bits = [] {
        QHash<QString, std::uint32_t> map;
        std::uint32_t bit = 1;
        for (const char* words :
             {"free freeware", "pro professional", "enterprise", "community", "standard std",
              "premium", "ultimate", "home", "personal", "business", "basic", "lite light",
              "express", "student", "education", "developer"}) {
            for (const QString& word : QString::fromLatin1(words).split(u' ')) {
                map.insert(word, bit);
            }
            bit <<= 1;
        }
        return map;
    }();
    return bits;
}

std::uint32_t bitsOf(const QStringList& words, const QHash<QString, std::uint32_t>& table) {
    std::uint32_t bits = 0;
    for (const QString& word : words) {
        bits |= table.value(word);
    }
    return bits;
}

// Legal forms and the like, as whole words of a lower-case publisher with its punctuation
// turned into blanks ("s.r.o." is then "s r o").
const QRegularExpression& legalForms() {
    static const QRegularExpression expression(
        QStringLiteral("(?<![\\p{L}\\p{N}])(?:l ?l ?c|l ?l ?p|ltd|limited|inc|incorporated|"
                       "gmbh(?: co kg)?|mbh|s r ?o|spol s r o|b ?v|n ?v|ab|aps|as|asa|oy|oyj|"
                       "pty(?: ltd)?|plc|pvt|pte|corporation|corp|co|company|labs|sa|s ?a ?s|"
                       "s ?a ?r ?l|s ?r ?l|s ?p ?a|ag|kg|ug|se|kft|k ?k|sp z o ?o|bvba|"
                       "software|softwares|technologies|technology|development)"
                       "(?![\\p{L}\\p{N}])"),
        QRegularExpression::UseUnicodePropertiesOption);
    return expression;
}

// The words of a lower-case text without architecture words and version numbers; the words of
// `fallback` with only the punctuation rule when nothing is left.
QStringList wordsOf(QString text, const QString& fallback) {
    text.replace(architectureWords(), QStringLiteral(" "));
    text.replace(versionNumbers(), QStringLiteral(" "));
    QStringList words = punctuationWords(text);
    if (words.isEmpty()) {
        words = punctuationWords(fallback);
    }
    return words;
}

QString compact(const QString& text) {
    QString key;
    key.reserve(text.size());
    for (QChar c : text) {
        if (c != u' ') {
            key += c;
        }
    }
    return key;
}

}  // namespace

QStringList nameWords(QStringView name) {
    const QString lower = name.toString().toLower();
    return wordsOf(bracketPart(lower, false), lower);
}

QStringList fullNameWords(QStringView name) {
    const QString lower = name.toString().toLower();
    return wordsOf(lower, lower);
}

QStringList looseWords(const QStringList& strictWords) {
    QStringList words;
    for (qsizetype i = 0; i < strictWords.size(); ++i) {
        const QString& word = strictWords[i];
        const bool installerKind =
            (word == u"web" || word == u"online" || word == u"offline") &&
            i + 1 < strictWords.size() &&
            (strictWords[i + 1] == u"installer" || strictWords[i + 1] == u"setup");
        if (!installerKind && !isNumber(word) && !looseDropWords().contains(word)) {
            words += word;
        }
    }
    return words.isEmpty() ? strictWords : words;
}

QString matchKey(const QStringList& words) {
    return words.join(QString());
}

std::vector<std::uint32_t> nameNumbers(QStringView name) {
    QString text = name.toString().toLower();
    text.replace(architectureWords(), QStringLiteral(" "));
    std::vector<std::uint32_t> numbers;
    const auto addLoneNumbers = [&](const QString& part) {
        for (const QString& word : punctuationWords(part)) {
            if (isNumber(word) && word.size() <= 9) {
                numbers.push_back(word.toUInt());
            }
        }
    };
    qsizetype done = 0;
    for (auto it = versionNumbers().globalMatch(text); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        addLoneNumbers(text.mid(done, match.capturedStart() - done));
        const QString major = match.captured(1).isEmpty() ? match.captured(2) : match.captured(1);
        numbers.push_back(major.size() <= 9 ? major.toUInt() : 0);
        done = match.capturedEnd();
    }
    addLoneNumbers(text.mid(done));
    return numbers;
}

NameTraits nameTraits(QStringView name) {
    const QString lower = name.toString().toLower();
    const QStringList full = wordsOf(lower, lower);
    NameTraits traits;
    traits.fullKey = matchKey(full);
    const QString inside = bracketPart(lower, true);
    traits.bracketKey = matchKey(wordsOf(inside, QString()));
    traits.numbers = nameNumbers(name);
    traits.channels = bitsOf(full, channelBits());
    traits.editions = bitsOf(full, editionBits());
    return traits;
}

bool numbersConflict(const std::vector<std::uint32_t>& a, const std::vector<std::uint32_t>& b) {
    if (a.empty() || b.empty()) {
        return false;
    }
    const std::size_t n = std::min(a.size(), b.size());
    return !std::equal(a.begin(), a.begin() + std::ptrdiff_t(n), b.begin());
}

QString identifierText(QStringView identifier, bool splitWords) {
    QString text;
    text.reserve(identifier.size() * 2);
    const auto kind = [](QChar c) { return c.isDigit() ? 1 : c.isLetter() ? 2 : 0; };
    for (qsizetype i = 0; i < identifier.size(); ++i) {
        const QChar c = identifier[i];
        if (c == u'.' || c == u'-' || c == u'_') {
            // Numbers on both sides of a point keep it: "4.2" stays a version.
            const bool numbers = c == u'.' && i > 0 && i + 1 < identifier.size() &&
                                 identifier[i - 1].isDigit() && identifier[i + 1].isDigit();
            text += numbers ? u'.' : u' ';
            continue;
        }
        if (i > 0 && splitWords) {
            const QChar previous = identifier[i - 1];
            const bool camel = previous.isLower() && c.isUpper();
            const bool digitBoundary =
                kind(previous) != 0 && kind(c) != 0 && kind(previous) != kind(c);
            if (camel || digitBoundary) {
                text += u' ';
            }
        }
        text += c;
    }
    return text;
}

QString publisherKey(QStringView publisher) {
    const QString lower = bracketPart(publisher.toString().toLower(), false);
    QString text;
    text.reserve(lower.size());
    for (QChar c : lower) {
        if (isWordChar(c)) {
            text += c;
        } else if (!isApostrophe(c)) {
            text += u' ';
        }
    }
    const QString key = compact(QString(text).replace(legalForms(), QStringLiteral(" ")));
    // A maker called only "Software AG" keeps its name.
    return key.isEmpty() ? compact(text) : key;
}

bool publishersRelate(const QString& a, const QString& b) {
    if (a.isEmpty() || b.isEmpty()) {
        return false;
    }
    const QString& shorter = a.size() <= b.size() ? a : b;
    const QString& longer = a.size() <= b.size() ? b : a;
    return shorter.size() < 3 ? shorter == longer : longer.contains(shorter);
}

}  // namespace server
