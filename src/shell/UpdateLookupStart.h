#pragma once
#include "platform/Platform.h"
#include "scan/modUpdateCOmponent.h"
#include "shell/ProcessState.h"

namespace shell {

// The start-up's part of the update lookup, set once: its fixed access key, the all-users
// application data folder below which it keeps its log, and the server's test path when the
// switch A5291 was given. The server's address is the caller's.
void PrepareUpdateLookup(scan::modUpdateCOmponent& lookup, const ProcessState& state,
                         platform::Platform& platform);

}  // namespace shell
