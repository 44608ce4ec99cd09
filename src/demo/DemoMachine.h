#pragma once
#include <filesystem>
#include <string>

#include "demo/DemoPrograms.h"

namespace platform::portable {
class Machine;
}

namespace demo {

// Installs a few hundred programs of a package catalog (see CatalogCsv.h) on a fresh machine,
// chosen and shaped by the seed: their uninstall keys in both hives and, in their folders,
// executables whose version blocks match the keys. False, with the reason in *problems, when
// the catalog is missing or malformed or the machine cannot be written; what was installed
// by then is left. counts, when given, receives what was installed.
bool populateDemoMachine(platform::portable::Machine& machine,
                         const std::filesystem::path& catalogCsv, unsigned seed,
                         std::string* problems, DemoCounts* counts = nullptr);

}  // namespace demo
