#pragma once
#include <cstdint>
#include <string>

#include "platform/Registry.h"

namespace testing_support {

// Registers a service as an installer does, under
// HKEY_LOCAL_MACHINE\SYSTEM\CurrentControlSet\Services\<name>: DisplayName, ImagePath of
// imageType, and Type own process. The first status that is not success, or success.
long registerService(platform::Registry& registry, const std::string& name,
                     const std::string& displayName, std::uint32_t imageType,
                     const std::string& imagePath);

}  // namespace testing_support
