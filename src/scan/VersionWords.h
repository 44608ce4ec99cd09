#pragma once
#include <QString>

#include <functional>

#include "scan/VersionInfoReader.h"

namespace scan {

// Looks up a language variable; the languages come from the language files.
using StringLookup = std::function<QString(const QString& name)>;

// A version string as discovery reads it: "" for a file without a block, the language's
// word for none when the string is empty, for unavailable when it is missing.
QString GetVersionString(VersionInfoReader& reader, const QString& path, const QString& name,
                         const StringLookup& getStrLocValue);

inline QString GetCompanyName(VersionInfoReader& reader, const QString& path,
                              const StringLookup& getStrLocValue) {
    return GetVersionString(reader, path, QStringLiteral("CompanyName"), getStrLocValue);
}

}  // namespace scan
