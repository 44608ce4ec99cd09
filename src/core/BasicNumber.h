#pragma once
#include <QString>
#include <QtGlobal>

#include <optional>

// Basic's number tests and conversions of text, with the number conventions of the system the
// program was designed on: "." is the decimal point and "," a thousands separator.
namespace core {

// Basic's IsNumeric: blanks, tabs and line breaks around; one sign before or after; digits with
// "," anywhere in the whole part; one "."; an exponent ("1e3", "1.5E-2", "2D3"); or a &H
// hexadecimal or &O octal number of up to 32 bits. Empty and blank texts are not numeric, and
// neither is a number beyond the range of a double.
bool isNumeric(const QString& text);

// Basic's CDbl: the value of a text that isNumeric accepts, nothing for any other text. &H and
// &O numbers are 32-bit patterns, so "&HFFFFFFFF" is -1.
std::optional<double> cDbl(const QString& text);

// Basic's CLng: as cDbl, rounded half to even (2.5 gives 2, 3.5 gives 4); nothing where Basic
// raises an overflow, outside -2147483648..2147483647.
std::optional<qint32> cLng(const QString& text);

// Basic's Val: the number at the start of the text, 0 when there is none. Blanks, tabs and line
// feeds are dropped wherever they stand, so "  12 34abc" is 1234. Reading stops at the first
// character that can't continue the number; only "." is a decimal point. &H and &O numbers are
// read as the smallest of a 16-bit or 32-bit pattern that holds them ("&HFFFF" is -1); one
// beyond 32 bits gives 0, where Basic raises an overflow.
double val(const QString& text);

}  // namespace core
