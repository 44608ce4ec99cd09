#pragma once
#include <filesystem>

#include "platform/portable/Machine.h"
#include "setup/Report.h"

namespace setup {

// Makes the install folder and copies every file below dataFolder into it, sub-folders
// kept and files there replaced. A missing data folder only leaves the install folder empty.
bool copyDataFiles(platform::portable::Machine& machine, const std::filesystem::path& dataFolder,
                   const Report& report);

}  // namespace setup
