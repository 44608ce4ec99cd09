#pragma once

namespace state {

// What the start-up forms do when a send finds the service not running.
class ServiceGate {
public:
    virtual ~ServiceGate() = default;
    // found: the service is installed. Returns with the service running, or ends the process.
    virtual void ServiceRecovery(bool found) = 0;
};

}  // namespace state
