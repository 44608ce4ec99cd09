#pragma once
#include <QString>

#include "state/ActivityLog.h"
#include "state/lst.h"

namespace scan {

// Ignore Program on a row of the results: the line goes into the hidden ignore list only;
// the file follows at the next save and the page at the next load.
void IgnoreProgram(state::lst& lst, state::ActivityLog& log, const QString& name,
                   const QString& publisher, const QString& path, const QString& version);

}  // namespace scan
