#pragma once
#include <QString>

#include <utility>
#include <vector>

#include "platform/Platform.h"
#include "setup/Report.h"

namespace setup {

// The product's traces in the registry: its service, its own key and its uninstall entry.
// Writes leave other values of the keys as they are.

bool registerService(platform::Platform& platform, const Report& report);
// Makes the product key and stores each value as REG_SZ.
bool writeProductValues(platform::Platform& platform,
                        const std::vector<std::pair<QString, QString>>& values,
                        const Report& report);
bool writeUninstallEntry(platform::Platform& platform, const Report& report);

// Deletes the three keys with everything below them; reports each one that was there.
bool removeRegistration(platform::Platform& platform, const Report& report);

}  // namespace setup
