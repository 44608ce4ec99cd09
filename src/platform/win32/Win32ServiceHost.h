#pragma once
#include "platform/ServiceManager.h"

namespace platform::win32 {

// The service side: the control dispatcher of Windows runs body as the process's one service.
// A named mutex per service tells whether another process already runs it; a process that
// the service manager did not start gets the dispatcher's error (1063) and body is not run.
class Win32ServiceHost final : public ServiceHost {
public:
    long runService(
        const std::string& serviceName,
        const std::function<void(const std::atomic<bool>& stopRequested)>& body) override;
};

}  // namespace platform::win32
