#pragma once
#include <QString>

namespace state {

// The only way writes reach the privileged service: one command text, whose lines are
// "Command|argument|..." separated by CR LF.
class ServiceChannel {
public:
    virtual ~ServiceChannel() = default;
    virtual void SendToService(const QString& commandText) = 0;
};

}  // namespace state
