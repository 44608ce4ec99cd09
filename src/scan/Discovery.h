#pragma once
#include <functional>

#include "platform/Platform.h"
#include "scan/ProgramFilter.h"
#include "scan/ScanControl.h"
#include "scan/VersionWords.h"
#include "state/clsList.h"
#include "state/modRegistry.h"

namespace scan {

// Walks the uninstall keys of HKEY_LOCAL_MACHINE, then HKEY_CURRENT_USER, and filters each
// candidate the moment it is read, so that a machine-wide entry wins over a per-user one.
class Discovery {
public:
    Discovery(platform::Platform& platform, state::modRegistry& registry, ScanControl& control,
              StringLookup getStrLocValue, state::clsList& uninstallKeyList, ProgramFilter& filter);

    // verdict, when set, hears every key row with "SystemComponent" or the filter's verdict.
    void run(
        const std::function<void(const QString& keyRow, const QString& verdict)>& verdict = {});

private:
    platform::Platform& platform_;
    state::modRegistry& registry_;
    ScanControl& control_;
    StringLookup getStrLocValue_;
    state::clsList& uninstallKeyList_;
    ProgramFilter& filter_;
};

}  // namespace scan
