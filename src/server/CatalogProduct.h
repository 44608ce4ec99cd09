#pragma once
#include <QString>
#include <QStringList>

#include "demo/CatalogCsv.h"

namespace server {

// One product the server knows, with what a reply tells about it.
struct CatalogProduct {
    QString packageId;       // "Mozilla.Firefox.ESR"
    QString name;            // "Firefox ESR"
    QString publisher;       // the identifier's first element: "Mozilla"; may be empty
    QString productVersion;  // the latest version, as the catalog writes it
    QString fileVersion;     // the same in four numeric parts, or empty
    QString downloadUrl;     // empty: the desktop program then searches the web
    QString comment;         // "Latest release 128.1.0 of 2026-08-12"
    QStringList aliases;     // further names to match: "firefox esr"
    QString lastUpdate;      // "2026-08-12 20:44:35Z", or empty
};

// The product of a catalog entry: publisher the identifier's first element; the file version
// the version padded to four parts when it is plain dotted numbers of at most four parts,
// each at most 65535; the comment from the version and the date of the last update; the
// alias the identifier's product part in words ("Microsoft.VisualStudioCode" -> "visual
// studio code"). An identifier without a point is all product part.
CatalogProduct productFromEntry(const demo::CatalogEntry& entry);

// "1.2.13" -> "1.2.13.0"; "7" -> "7.0.0.0"; empty for "1.2.3.4.5", "1.0-beta", "70000".
QString paddedFileVersion(const QString& version);

}  // namespace server
