#pragma once
#include "platform/ServiceManager.h"

namespace platform::win32 {

// The service control manager of Windows. ScHandle is the SC_HANDLE itself.
class Win32ServiceManager final : public ServiceManager {
public:
    long OpenSCManagerA(std::uint32_t access, ScHandle* manager) override;
    // Windows' own records are 64-bit ones here; the room is counted for the 32-bit records
    // of the interface, from the names of the real list.
    long EnumServicesStatusA(ScHandle manager, std::uint32_t serviceType,
                             std::uint32_t serviceState, std::uint32_t bufferSize,
                             std::vector<EnumServiceStatus>* services,
                             std::uint32_t* bytesNeeded) override;
    long CloseServiceHandle(ScHandle handle) override;
    long startService(ScHandle manager, const std::string& serviceName) override;
    long stopService(ScHandle manager, const std::string& serviceName) override;
};

}  // namespace platform::win32
