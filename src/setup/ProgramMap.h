#pragma once
#include <filesystem>

#include "platform/portable/Machine.h"
#include "setup/Report.h"

namespace setup {

// The product's executables in machine.ini's [Programs]. Both write machine.ini; the
// machine has to be opened again to run what they mapped.

// Maps each executable of the install folder to the host program of the same name in
// programsFolder, where there is one, replacing an earlier mapping of it.
bool mapPrograms(platform::portable::Machine& machine, const std::filesystem::path& programsFolder,
                 const Report& report);
// Removes the mappings of every program in the install folder; reports only when there were.
bool unmapPrograms(platform::portable::Machine& machine, const Report& report);

}  // namespace setup
