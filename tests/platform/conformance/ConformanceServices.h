#pragma once
#include <memory>

#include "platform/Platform.h"

namespace conformance {

// The suite's own service. Its program is the conformance_service tool of the backend, which
// runs as this service until it is asked to stop.
inline constexpr const char* kServiceName = "Tallowick Conformance Service";
inline constexpr const char* kServiceDisplayName = "Tallowick Conformance (test service)";

// A computer on which the suite's service is installed and stopped. The service goes with the
// machine, stopped first when it runs; on Windows, where the tests share the computer's
// service manager, one left by an earlier test is removed before it is installed again.
class ServiceMachine {
public:
    virtual ~ServiceMachine() = default;

    virtual platform::Platform& platform() = 0;
    // The same computer as a second process sees it.
    virtual platform::Platform& secondProcess() = 0;
};

// Nothing when this user may not install a service.
std::unique_ptr<ServiceMachine> newServiceMachine();

}  // namespace conformance
