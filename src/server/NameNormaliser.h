#pragma once
#include <QString>
#include <QStringList>
#include <QStringView>

#include <cstdint>
#include <vector>

namespace server {

// The words of a program name that say which product it is, for the strict tier of the
// match: lower case; bracketed parts "(...)", "[...]", "{...}" dropped; version numbers
// ("1.2.3", "v2.0", "v2", "2025.02.00.02", "8.0.1-beta") dropped; architecture words (x64,
// x86, x86_64, amd64, arm64, aarch64, win64, win32, i386, i686, ia32, ia64, 64-bit, 32 bit,
// ...) dropped; apostrophes removed; every other character that is neither letter nor digit
// a blank, except "?", which stands for a character the code page could not hold. Lone
// numbers ("2025", "3") stay. A name of which nothing would be left keeps its words with
// only the punctuation rule applied.
//   "3CX Call Flow Designer (x64)"                           -> 3cx call flow designer
//   "Altova MissionKit 2025 Enterprise Edition 2025.02.00.02" -> altova missionkit 2025
//                                                               enterprise edition
QStringList nameWords(QStringView name);

// The same words with the bracketed parts kept: "Mozilla Firefox (cy)" -> mozilla firefox cy.
QStringList fullNameWords(QStringView name);

// The loose tier: the strict words without edition words (free, freeware, pro, edition,
// enterprise, community, portable, setup, installer, lite, beta, preview, trial), without
// "web", "online" or "offline" before "installer" or "setup", and without lone numbers. The
// strict words when nothing would be left.
QStringList looseWords(const QStringList& strictWords);

// The words joined without blanks: two names match when their keys are equal, so that
// "DiffDog" and "Diff Dog" are the same.
QString matchKey(const QStringList& words);

// The numbers a name carries, in order: each lone number, and the first number of each
// version ("Liberica NIK 22 Full (JDK 11) 22.3.5" -> 22 11 22).
std::vector<std::uint32_t> nameNumbers(QStringView name);

// What a name says besides its key, to keep a program from matching the wrong one of several
// products that share a key.
struct NameTraits {
    QString fullKey;                     // the key of fullNameWords()
    QString bracketKey;                  // the key of the words in brackets: "jre", "cy"
    std::vector<std::uint32_t> numbers;  // nameNumbers()
    std::uint32_t channels = 0;  // a bit per prerelease word: alpha, beta, preview, nightly,
                                 // dev, development, eap, canary, insider, rc, unstable,
                                 // experimental, trial, prerelease, snapshot, daily
    std::uint32_t editions = 0;  // a bit per edition: free, pro (professional), enterprise,
                                 // community, standard, premium, ultimate, home, personal,
                                 // business, basic, lite, express, student, education,
                                 // developer
};
NameTraits nameTraits(QStringView name);

// Two number lists disagree when neither starts with the other: 2025 and 2022 do, 2025 and
// 2025 2025 do not, and an empty list agrees with every list.
bool numbersConflict(const std::vector<std::uint32_t>& a, const std::vector<std::uint32_t>& b);

// The words of a package identifier's part: "VisualStudioCode" -> visual studio code,
// "Firefox.ESR" -> firefox esr, "Blender.LTS.4.2" -> blender lts 4.2 (so that the version
// rule then drops "4.2"). ".", "-" and "_" split; with splitWords also a lower-case letter
// before a capital and a boundary between letters and digits ("SQLiteExpert" -> SQLite
// Expert, "Avogadro2" -> Avogadro 2). The numbers of an identifier are those of its text
// without splitWords: "Avogadro2" carries none, "Python.3.12" carries 3.
QString identifierText(QStringView identifier, bool splitWords = true);

// A publisher reduced for comparison: lower case, bracketed parts, legal forms (LLC, Ltd.,
// Inc., GmbH, s.r.o., B.V., AB, Pty Ltd, Corporation, Corp., Co., Labs, SA, AG, Oy, Software,
// ...), punctuation and blanks removed. "Mozilla Corporation" -> mozilla, "3CX s.r.o." ->
// 3cx. A publisher that is nothing but such words keeps them: "Software AG" -> softwareag.
QString publisherKey(QStringView publisher);

// Two publisher keys name the same maker when one contains the other; a key shorter than
// three characters has to be equal. Empty keys relate to nothing.
bool publishersRelate(const QString& a, const QString& b);

}  // namespace server
