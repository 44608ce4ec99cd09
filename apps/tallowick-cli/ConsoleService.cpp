#include "ConsoleService.h"

#include <cstdlib>

#include "Cli.h"
#include "core/AnsiText.h"
#include "service/ServiceControl.h"
#include "state/ProductNames.h"

namespace cli {

void ConsoleServiceGate::ServiceRecovery(bool found) {
    const long status =
        found ? service::startProductService(platform_) : platform::servicestatus::DoesNotExist;
    if (status == platform::status::Success) {
        return;
    }
    Context::err("the service does not run: " + service::controlStatusText(status));
    std::exit(kFailed);
}

ConsoleService::ConsoleService(platform::Platform& platform)
    : registry(platform),
      folders(platform, core::fromAnsi(platform.codePage, platform.environment.programFolder()),
              state::product::name()),
      gate(platform),
      channel(platform, registry, folders, gate) {
    folders.UpdateFileLocations(channel);
}

}  // namespace cli
