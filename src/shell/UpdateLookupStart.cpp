#include "shell/UpdateLookupStart.h"

#include "state/DataFolders.h"

namespace shell {

void PrepareUpdateLookup(scan::modUpdateCOmponent& lookup, const ProcessState& state,
                         platform::Platform& platform) {
    lookup.setAccessKey(QLatin1String(scan::modUpdateCOmponent::kAccessKey));
    lookup.setDataFolder(state::GetFolderPath(platform, platform::csidl::CommonAppData));
    lookup.setTestFlag(state.testModeA5291);
}

}  // namespace shell
