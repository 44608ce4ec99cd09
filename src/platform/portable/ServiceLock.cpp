#include "platform/portable/ServiceLock.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace platform::portable {

namespace {

int openLockFile(const std::filesystem::path& lockFile) {
    return ::open(lockFile.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
}

flock wholeFile(short type) {
    flock lock{};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    return lock;
}

}  // namespace

std::filesystem::path ServiceLock::file(const std::filesystem::path& machineFolder,
                                        const std::string& serviceName) {
    std::string name = serviceName;
    for (char& c : name) {
        if (c == '/' || c == '\\') {
            c = '_';
        }
    }
    return machineFolder / "run" / (name + ".lock");
}

bool ServiceLock::held(const std::filesystem::path& lockFile) {
    const int descriptor = openLockFile(lockFile);
    if (descriptor < 0) {
        return false;
    }
    flock probe = wholeFile(F_WRLCK);
    const bool taken = ::fcntl(descriptor, F_OFD_GETLK, &probe) == 0 && probe.l_type != F_UNLCK;
    ::close(descriptor);
    return taken;
}

std::optional<pid_t> ServiceLock::holder(const std::filesystem::path& lockFile) {
    if (!held(lockFile)) {
        return std::nullopt;
    }
    const int descriptor = ::open(lockFile.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) {
        return std::nullopt;
    }
    char text[32] = {};
    const ssize_t size = ::read(descriptor, text, sizeof text - 1);
    ::close(descriptor);
    const long pid = size > 0 ? std::strtol(text, nullptr, 10) : 0;
    return pid > 0 ? std::optional<pid_t>(pid_t(pid)) : std::nullopt;
}

bool ServiceLock::take(const std::filesystem::path& lockFile) {
    release();
    const int descriptor = openLockFile(lockFile);
    if (descriptor < 0) {
        return false;
    }
    flock lock = wholeFile(F_WRLCK);
    if (::fcntl(descriptor, F_OFD_SETLK, &lock) != 0) {
        ::close(descriptor);
        return false;
    }
    const std::string pid = std::to_string(::getpid()) + "\n";
    if (::ftruncate(descriptor, 0) != 0 ||
        ::pwrite(descriptor, pid.data(), pid.size(), 0) != ssize_t(pid.size())) {
        ::close(descriptor);
        return false;
    }
    descriptor_ = descriptor;
    return true;
}

void ServiceLock::release() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
        descriptor_ = -1;
    }
}

}  // namespace platform::portable
