#pragma once
#include <QString>
#include <QStringList>

// The string functions of Basic with the exact behaviour the program's rules rely on. Positions
// are 1-based as in Basic, and out-of-range arguments are tolerated instead of raising
// "invalid procedure call".
namespace core {

// Basic's Split: an empty text gives no element at all, an empty delimiter gives the whole text
// as one element, a trailing delimiter gives a last empty element. A positive limit caps the
// count and the last element keeps the rest of the text; a limit of 0 gives no element.
QStringList split(const QString& text, const QString& delimiter, int limit = -1);

// As split, except that an empty text gives one empty element instead of none: the behaviour
// of the places that always find an element 0 to read.
QStringList splitOne(const QString& text, const QString& delimiter);

// Remove blanks (U+0020) only; tabs and line breaks stay.
QString trim(const QString& text);
QString ltrim(const QString& text);
QString rtrim(const QString& text);

// Basic's InStr: the 1-based position of search in text from start on, 0 when not found.
// An empty search text is found at start, provided start is at most one past the end of a
// non-empty text. A start below 1 counts as 1.
int inStr(int start, const QString& text, const QString& search, bool caseInsensitive = false);

// Basic's InStrRev: the last position where search lies wholly within the first `start`
// characters (-1: the whole text), 0 when not found, when text is empty or when start is
// beyond the end, 0 or below -1. An empty search text is found at start.
int inStrRev(const QString& text, const QString& search, int start = -1,
             bool caseInsensitive = false);

// Left, Right and Mid: counts beyond the text give what there is, negative counts nothing.
// mid's start is 1-based; a start below 1 counts as 1 and a negative length means "to the end".
QString left(const QString& text, int length);
QString right(const QString& text, int length);
QString mid(const QString& text, int start, int length = -1);

// Basic's Replace: every non-overlapping occurrence from left to right; an empty find text
// leaves the text as it is.
QString replace(const QString& text, const QString& find, const QString& with,
                bool caseInsensitive = false);

// Basic's LCase and UCase map character by character and keep the length ("ß" stays "ß").
QString lcase(const QString& text);
QString ucase(const QString& text);

// True when the two texts are equal under Basic's text comparison, which ignores case.
bool textCompare(const QString& a, const QString& b);

}  // namespace core
