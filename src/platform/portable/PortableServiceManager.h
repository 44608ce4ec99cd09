#pragma once
#include <filesystem>
#include <optional>
#include <set>
#include <string>

#include "platform/CodePage.h"
#include "platform/Registry.h"
#include "platform/ServiceManager.h"
#include "platform/portable/ProgramLauncher.h"

namespace platform::portable {

// The services of the machine: a service is installed when its key exists under
// HKEY_LOCAL_MACHINE\SYSTEM\CurrentControlSet\Services, and runs while its process holds
// run/<name>.lock. Starting one runs the host program that machine.ini maps to its
// ImagePath; stopping one sends its process SIGTERM.
class PortableServiceManager final : public ServiceManager {
public:
    PortableServiceManager(std::filesystem::path machineFolder, Registry& registry,
                           const CodePage& codePage, ProgramLauncher& launcher);

    long OpenSCManagerA(std::uint32_t access, ScHandle* manager) override;
    long EnumServicesStatusA(ScHandle manager, std::uint32_t serviceType,
                             std::uint32_t serviceState, std::uint32_t bufferSize,
                             std::vector<EnumServiceStatus>* services,
                             std::uint32_t* bytesNeeded) override;
    long CloseServiceHandle(ScHandle handle) override;
    long startService(ScHandle manager, const std::string& serviceName) override;
    long stopService(ScHandle manager, const std::string& serviceName) override;

private:
    struct Installed {
        std::string name;  // as the key is spelled
        std::string displayName;
        std::uint32_t type = servicetype::OwnProcess;
        std::string imagePath;
    };
    std::vector<Installed> installed() const;
    std::optional<Installed> find(const std::string& serviceName) const;
    // The service a start or stop is for; nothing with the status when there is none.
    std::optional<Installed> control(ScHandle manager, const std::string& serviceName,
                                     long* status) const;
    bool running(const std::string& serviceName) const;
    std::string readString(RegHandle key, const std::string& name) const;
    std::uint32_t readDword(RegHandle key, const std::string& name, std::uint32_t fallback) const;

    std::filesystem::path machineFolder_;
    Registry& registry_;
    const CodePage& codePage_;
    ProgramLauncher& launcher_;
    std::set<ScHandle> handles_;
    ScHandle nextHandle_ = 0x1000;
};

}  // namespace platform::portable
