#pragma once
#include <QString>

namespace scan {

// One program with an update, as the results list and ResultsList hold it.
struct ScanResult {
    QString name;
    QString publisher;
    // The product version, or "version (file version)" when only the file version is behind.
    QString installedText;
    QString availableText;
    QString downloadAddress;
    // The program's file, or its folder when the uninstall key names no file.
    QString path;
    QString comment;
};

}  // namespace scan
