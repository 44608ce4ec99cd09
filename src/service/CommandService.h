#pragma once
#include <atomic>
#include <string>

#include "platform/Platform.h"
#include "service/CommandPolicy.h"

namespace service {

// The service's work: it watches <data folder>Service\ and takes the command file whenever it
// appears, a file left from before its start included, until it is asked to stop. When made, it
// makes that folder if the data folder is there, so that the program's sends find it; it
// never makes the data folder: the program's first run knows itself by that folder's absence.
class CommandService {
public:
    // Changes in the watched folder wake the service at once; without a watch, and as a
    // fallback, it looks this often.
    static constexpr int kPollMilliseconds = 100;

    explicit CommandService(platform::Platform& platform);

    const ServiceScope& scope() const { return scope_; }
    void run(const std::atomic<bool>& stopRequested);

private:
    std::string serviceFolder() const;

    platform::Platform& platform_;
    ServiceScope scope_;
};

}  // namespace service
