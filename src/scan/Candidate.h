#pragma once
#include <QString>

namespace scan {

// One program as read from its uninstall key, before filtering.
struct Candidate {
    QString name;
    QString publisher;
    QString exePath;
    QString exeName;
    QString folder;
    QString version;      // the product version the update server is asked about
    QString fileVersion;  // a.b.c.d of the executable's fixed version block
};

}  // namespace scan
