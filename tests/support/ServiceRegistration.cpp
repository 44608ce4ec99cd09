#include "support/ServiceRegistration.h"

#include "platform/ServiceManager.h"
#include "platform/WinTypes.h"

namespace testing_support {

long registerService(platform::Registry& registry, const std::string& name,
                     const std::string& displayName, std::uint32_t imageType,
                     const std::string& imagePath) {
    platform::RegHandle key = 0;
    long result = registry.RegCreateKeyA(platform::hkey::LocalMachine,
                                         "SYSTEM\\CurrentControlSet\\Services\\" + name, &key);
    if (result != platform::status::Success) {
        return result;
    }
    const auto setString = [&](const std::string& value, std::uint32_t type,
                               const std::string& data) {
        return registry.RegSetValueExA(key, value, type,
                                       reinterpret_cast<const std::uint8_t*>(data.c_str()),
                                       std::uint32_t(data.size() + 1));
    };
    const std::uint32_t type = platform::servicetype::OwnProcess;
    result = setString("DisplayName", platform::regtype::Sz, displayName);
    if (result == platform::status::Success) {
        result = setString("ImagePath", imageType, imagePath);
    }
    if (result == platform::status::Success) {
        result = registry.RegSetValueExA(key, "Type", platform::regtype::Dword,
                                         reinterpret_cast<const std::uint8_t*>(&type), sizeof type);
    }
    registry.RegCloseKey(key);
    return result;
}

}  // namespace testing_support
