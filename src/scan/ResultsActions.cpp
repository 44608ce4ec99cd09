#include "scan/ResultsActions.h"

namespace scan {

void IgnoreProgram(state::lst& lst, state::ActivityLog& log, const QString& name,
                   const QString& publisher, const QString& path, const QString& version) {
    lst.lstIgnoreListFile << QStringLiteral("   ") + version + u'|' + name + u'|' + publisher +
                                 u'|' + path;
    log.write(QStringLiteral("Program added to Ignore List: ") + name + QStringLiteral(" (") +
              publisher + QStringLiteral(") ") + version + QStringLiteral(", ") + path);
}

}  // namespace scan
