#pragma once
#include "setup/Report.h"
#include "setup/SetupOptions.h"

namespace setup {

// Puts the product on the machine of options.machineFolder, laying the machine out first
// when there is none: data files, program mappings, service, product values, uninstall entry,
// the data folder with the folder of the service's command file and, when asked, the start of
// the service. Stops at the first step that fails.
bool install(const SetupOptions& options, const Report& report);

// Takes off the machine what install put there, after stopping the service; the user's data
// folder stays. Nothing installed is not a failure.
bool uninstall(const SetupOptions& options, const Report& report);

}  // namespace setup
