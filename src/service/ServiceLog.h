#pragma once
#include <QString>

#include "platform/Platform.h"

namespace service {

// The service's own log, <data folder>Service\Service.log: one line for each command it
// refused or could not carry out, and for its start and stop, each with the local time.
class ServiceLog {
public:
    ServiceLog(platform::Platform& platform, QString path);

    void write(const QString& line);

private:
    platform::Platform& platform_;
    const QString path_;
};

}  // namespace service
