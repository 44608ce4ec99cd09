#pragma once
#include "platform/Installation.h"
#include "platform/Platform.h"
#include "setup/Report.h"
#include "setup/SetupOptions.h"

namespace setup {

// Puts the product on the computer: data files, program mappings, service, product values,
// uninstall entry, the data folder with the folder of the service's command file and, when
// asked, the start of the service. Stops at the first step that fails.
bool install(platform::Platform& platform, platform::Installation& installation,
             const SetupOptions& options, const Report& report);

// Takes off the computer what install put there, after stopping the service; the user's data
// folder stays. Nothing installed is not a failure.
bool uninstall(platform::Platform& platform, platform::Installation& installation,
               const Report& report);

}  // namespace setup
