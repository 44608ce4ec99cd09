#pragma once
#include <QString>

#include "platform/Platform.h"

namespace service {

// The product's service through the service manager, for Starter, the installer and the
// console. Each returns the manager's status; AlreadyRunning and NotActive count as success.
long startProductService(platform::Platform& platform);
long stopProductService(platform::Platform& platform);

enum class ServiceState { NotInstalled, Stopped, Running };
ServiceState productServiceState(platform::Platform& platform);

// A status of the calls above in words: "not installed", "no program to run", ...
QString controlStatusText(long status);

}  // namespace service
