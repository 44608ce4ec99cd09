#pragma once
#include <filesystem>

#include "platform/ServiceManager.h"

namespace platform::portable {

// A service process of the machine: it runs while it holds run/<name>.lock, and SIGTERM,
// SIGINT or SIGHUP ask it to stop, and so does the loss of its machine folder.
class PortableServiceHost final : public ServiceHost {
public:
    explicit PortableServiceHost(std::filesystem::path machineFolder)
        : machineFolder_(std::move(machineFolder)) {}

    long runService(const std::string& serviceName,
                    const std::function<void(const std::atomic<bool>&)>& body) override;

private:
    std::filesystem::path machineFolder_;
};

}  // namespace platform::portable
