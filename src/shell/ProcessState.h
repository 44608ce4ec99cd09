#pragma once
#include <QString>

namespace shell {

// The values the entry routine fixes for the life of the process; everything else reads
// them from here.
struct ProcessState {
    QString applicationId = QStringLiteral("TW");
    QString productName = QStringLiteral("Tallowick");
    // The copy of the product name that registry paths are built from.
    QString registryProductName = QStringLiteral("Tallowick");
    QString programFileName = QStringLiteral("Tallo-wick.exe");
    QString serviceFileName = QStringLiteral("Tallo-wickService.exe");
    QString trackingInstallerTag = QStringLiteral("Installer");

    QString languageId;
    bool languageAutoSelected = false;
    bool production = true;
    bool encryption = true;
    bool resolve = false;
    QString loaderFileName = QStringLiteral("LanguageLoader.ini");
    bool failFonts = false;
    bool debugUnlock = false;
    // Set by DELAY5 and FREEZE and read by nobody: the start-up looks for those words in
    // the raw command line itself.
    bool delay = false;
    bool freeze = false;
    bool testModeL5291 = false;  // control centre downloads from the test path
    bool testModeU5291 = false;  // self update from the test address
    bool testModeA5291 = false;  // update lookup on the test path
    bool starting = true;

    QString programFolder;  // without a trailing "\"
    QString parentFolder;   // with a trailing "\"
    QString programLocalizedFolder;
    QString parentLocalizedFolder;
    QString htmlFolder;
    QString coSellFolder;
};

}  // namespace shell
