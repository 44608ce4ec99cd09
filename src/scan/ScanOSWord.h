#pragma once
#include <QString>

#include "platform/Environment.h"

namespace scan {

// The code word of the Windows version that a lookup sends as "win": the version as the
// number major + minor / 100, named for the versions the update server knows ("Win7" for
// 6.1) and written as the number otherwise ("10").
QString ScanOSWord(const platform::OsVersion& version);

}  // namespace scan
