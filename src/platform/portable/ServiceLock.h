#pragma once
#include <sys/types.h>

#include <filesystem>
#include <optional>

namespace platform::portable {

// run/<service name>.lock: a service runs while its process holds a write lock on it. The
// lock is an open-file-description lock, so the kernel drops it when the process ends however
// it ends, and a process may look at a lock it holds itself. The file holds the process id.
class ServiceLock {
public:
    static std::filesystem::path file(const std::filesystem::path& machineFolder,
                                      const std::string& serviceName);

    // True while some process holds the lock.
    static bool held(const std::filesystem::path& lockFile);
    // The process id written by the holder; nothing when the lock is free.
    static std::optional<pid_t> holder(const std::filesystem::path& lockFile);

    // Takes the lock for this process; false when another holds it.
    bool take(const std::filesystem::path& lockFile);
    void release();
    ~ServiceLock() { release(); }

private:
    int descriptor_ = -1;
};

}  // namespace platform::portable
