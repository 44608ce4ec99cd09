#pragma once
#include <QString>
#include <QStringList>

namespace state {

// The process's scratch memory, alive as long as the process: named text buffers and string
// lists that any code may fill and read. The routine that fills a buffer reads it back; the
// lists hold the lines of the settings file and of the ignore list while they are rewritten,
// the queue of silent fetches, and the scratch lists of the scan and the family code.
struct lst {
    QString txtBuffer1;
    QString txtBuffer2;
    QString txtBuffer3;
    QString txtBuffer4;
    QString txtDate;
    QString txtFrom;
    QString txtTo;
    QString txtRegBuffer;
    QString txtFreezeOverride;

    // The special folders.
    QString txtAppData;
    QString txtStartMenu;
    QString txtProgramsDir;
    QString txtDesktop;
    QString txtCookies;
    QString txtMyDocuments;
    QString txtFonts;
    QString txtTemp;

    QStringList lstINIFile;
    QStringList lstIgnoreListFile;
    QStringList lstURLs;
    QStringList lstBuffer;
    QStringList lstBuffer2;
    QStringList lstFileList;
};

}  // namespace state
