#pragma once
#include <QString>

namespace state {

// The only way writes reach the privileged service: one command text, whose lines are
// "Command|argument|..." separated by CR LF.
class ServiceChannel {
public:
    virtual ~ServiceChannel() = default;
    // True when the service has taken the text; false when it could not be handed over, which
    // the channel has told.
    virtual bool SendToService(const QString& commandText) = 0;
};

}  // namespace state
