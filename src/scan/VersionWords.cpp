#include "scan/VersionWords.h"

namespace scan {

QString GetVersionString(VersionInfoReader& reader, const QString& path, const QString& name,
                         const StringLookup& getStrLocValue) {
    if (!reader.LoadVersionInfo(path)) {
        return {};
    }
    const auto text = reader.GetVersionInfoString(name);
    if (!text) {
        return getStrLocValue(QStringLiteral("strLoc_TW_UnavailableCapital"));
    }
    return text->isEmpty() ? getStrLocValue(QStringLiteral("strLoc_SH_Action_None")) : *text;
}

}  // namespace scan
