#pragma once
#include "platform/Platform.h"
#include "state/DataFolders.h"
#include "state/ServiceGate.h"
#include "state/modRegistry.h"
#include "state/modServiceCom.h"

namespace cli {

// The console's way to the service: when a send finds it stopped, it is started, as the
// service handler form would; when it can't be, the console says why and ends.
class ConsoleServiceGate final : public state::ServiceGate {
public:
    explicit ConsoleServiceGate(platform::Platform& platform) : platform_(platform) {}
    void ServiceRecovery(bool found) override;

private:
    platform::Platform& platform_;
};

// The data folder, found as the program finds it, and the channel to the service.
struct ConsoleService {
    explicit ConsoleService(platform::Platform& platform);

    state::modRegistry registry;
    state::DataFolders folders;
    ConsoleServiceGate gate;
    state::modServiceCom channel;
};

}  // namespace cli
