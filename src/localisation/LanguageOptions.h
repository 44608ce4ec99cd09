#pragma once
#include <QString>

namespace localisation {

// What the entry routine fixed about where language files lie and in which state they are
// read: the switches NOPRODUCTION, NOENCRYPTION, RESOLVE and LOADER.
struct LanguageOptions {
    QString applicationId = QStringLiteral("TW");
    bool production = true;
    bool encryption = true;
    bool resolve = false;
    QString loaderFileName = QStringLiteral("LanguageLoader.ini");
    QString programFolder;  // without a trailing "\"
    QString parentFolder;   // the program folder's parent, with a trailing "\"
};

}  // namespace localisation
