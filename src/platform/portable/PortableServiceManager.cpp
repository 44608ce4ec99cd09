#include "platform/portable/PortableServiceManager.h"

#include <QString>

#include <signal.h>
#include <sys/wait.h>

#include <chrono>
#include <thread>

#include "platform/portable/ServiceLock.h"

namespace platform::portable {

namespace {

constexpr const char* kServicesKey = "SYSTEM\\CurrentControlSet\\Services";
// How long the service manager waits for a service to start or stop, as Windows does.
constexpr auto kControlTimeout = std::chrono::seconds(30);
constexpr auto kPollInterval = std::chrono::milliseconds(2);

bool sameName(const std::string& a, const std::string& b) {
    return QString::fromLatin1(a.data(), qsizetype(a.size()))
               .compare(QString::fromLatin1(b.data(), qsizetype(b.size())), Qt::CaseInsensitive) ==
           0;
}

// The program of an ImagePath: the quoted part, or everything up to ".exe", or all of it.
std::string programOfImagePath(const std::string& imagePath) {
    if (!imagePath.empty() && imagePath.front() == '"') {
        return imagePath.substr(1, imagePath.find('"', 1) - 1);
    }
    const QString text = QString::fromLatin1(imagePath.data(), qsizetype(imagePath.size()));
    const qsizetype exe = text.indexOf(QStringLiteral(".exe"), 0, Qt::CaseInsensitive);
    return exe < 0 ? imagePath : imagePath.substr(0, size_t(exe) + 4);
}

}  // namespace

PortableServiceManager::PortableServiceManager(std::filesystem::path machineFolder,
                                               Registry& registry, const CodePage& codePage,
                                               ProgramLauncher& launcher)
    : machineFolder_(std::move(machineFolder)),
      registry_(registry),
      codePage_(codePage),
      launcher_(launcher) {}

long PortableServiceManager::OpenSCManagerA(std::uint32_t /*access*/, ScHandle* manager) {
    if (manager == nullptr) {
        return status::InvalidParameter;
    }
    *manager = nextHandle_++;
    handles_.insert(*manager);
    return status::Success;
}

long PortableServiceManager::CloseServiceHandle(ScHandle handle) {
    return handles_.erase(handle) == 1 ? status::Success : status::InvalidHandle;
}

std::string PortableServiceManager::readString(RegHandle key, const std::string& name) const {
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    if (registry_.RegQueryValueExA(key, name, &type, nullptr, &size) != status::Success ||
        (type != regtype::Sz && type != regtype::ExpandSz)) {
        return {};
    }
    std::string data(size, '\0');
    if (registry_.RegQueryValueExA(key, name, nullptr, reinterpret_cast<std::uint8_t*>(data.data()),
                                   &size) != status::Success) {
        return {};
    }
    data.resize(std::min<size_t>(size, data.find('\0')));
    return data;
}

std::uint32_t PortableServiceManager::readDword(RegHandle key, const std::string& name,
                                                std::uint32_t fallback) const {
    std::uint32_t type = 0;
    std::uint32_t value = 0;
    std::uint32_t size = sizeof value;
    if (registry_.RegQueryValueExA(key, name, &type, reinterpret_cast<std::uint8_t*>(&value),
                                   &size) != status::Success ||
        type != regtype::Dword) {
        return fallback;
    }
    return value;
}

std::vector<PortableServiceManager::Installed> PortableServiceManager::installed() const {
    std::vector<Installed> found;
    RegHandle services = 0;
    if (registry_.RegOpenKeyExA(hkey::LocalMachine, kServicesKey, 0, access::KeyRead, &services) !=
        status::Success) {
        return found;
    }
    for (std::uint32_t index = 0;; ++index) {
        char name[256];
        std::uint32_t nameSize = sizeof name;
        if (registry_.RegEnumKeyExA(services, index, name, &nameSize) != status::Success) {
            break;
        }
        Installed service{std::string(name, nameSize), {}, servicetype::OwnProcess, {}};
        RegHandle key = 0;
        if (registry_.RegOpenKeyExA(services, service.name, 0, access::KeyRead, &key) ==
            status::Success) {
            service.displayName = readString(key, "DisplayName");
            service.imagePath = readString(key, "ImagePath");
            service.type = readDword(key, "Type", servicetype::OwnProcess);
            registry_.RegCloseKey(key);
        }
        if (service.displayName.empty()) {
            service.displayName = service.name;
        }
        found.push_back(std::move(service));
    }
    registry_.RegCloseKey(services);
    return found;
}

std::optional<PortableServiceManager::Installed> PortableServiceManager::find(
    const std::string& serviceName) const {
    for (auto& service : installed()) {
        if (sameName(service.name, serviceName)) {
            return service;
        }
    }
    return std::nullopt;
}

bool PortableServiceManager::running(const std::string& serviceName) const {
    return ServiceLock::held(ServiceLock::file(machineFolder_, serviceName));
}

long PortableServiceManager::EnumServicesStatusA(ScHandle manager, std::uint32_t serviceType,
                                                 std::uint32_t serviceState,
                                                 std::uint32_t bufferSize,
                                                 std::vector<EnumServiceStatus>* services,
                                                 std::uint32_t* bytesNeeded) {
    if (handles_.count(manager) == 0) {
        return status::InvalidHandle;
    }
    if (bytesNeeded == nullptr || serviceState == 0 || (serviceState & ~serviceenum::All) != 0) {
        return status::InvalidParameter;
    }
    std::vector<EnumServiceStatus> listed;
    std::uint32_t needed = 0;
    for (const auto& service : installed()) {
        if ((service.type & serviceType) == 0) {
            continue;
        }
        const std::uint32_t state =
            running(service.name) ? servicestate::Running : servicestate::Stopped;
        const std::uint32_t wanted =
            state == servicestate::Running ? serviceenum::Active : serviceenum::Inactive;
        if ((serviceState & wanted) == 0) {
            continue;
        }
        needed += kEnumServiceStatusSize + std::uint32_t(service.name.size() + 1) +
                  std::uint32_t(service.displayName.size() + 1);
        listed.push_back({service.name, service.displayName, service.type, state});
    }
    *bytesNeeded = needed;
    if (needed > bufferSize || services == nullptr) {
        return status::MoreData;
    }
    *bytesNeeded = 0;
    *services = std::move(listed);
    return status::Success;
}

std::optional<PortableServiceManager::Installed> PortableServiceManager::control(
    ScHandle manager, const std::string& serviceName, long* status) const {
    *status = handles_.count(manager) == 0 ? status::InvalidHandle : status::Success;
    const auto service = *status == status::Success ? find(serviceName) : std::nullopt;
    if (*status == status::Success && !service) {
        *status = servicestatus::DoesNotExist;
    }
    return service;
}

long PortableServiceManager::startService(ScHandle manager, const std::string& serviceName) {
    long status = status::Success;
    const auto service = control(manager, serviceName, &status);
    if (!service) {
        return status;
    }
    if (running(service->name)) {
        return servicestatus::AlreadyRunning;
    }
    const std::u16string program = codePage_.toWide(programOfImagePath(service->imagePath));
    const auto pid = launcher_.launch(QString::fromStdU16String(program).toStdString(), {},
                                      service->name + ".out");
    if (!pid) {
        return status::FileNotFound;
    }
    const auto deadline = std::chrono::steady_clock::now() + kControlTimeout;
    while (std::chrono::steady_clock::now() < deadline) {
        if (running(service->name)) {
            return status::Success;
        }
        int exitStatus = 0;
        if (::waitpid(*pid, &exitStatus, WNOHANG) == *pid) {
            // Another start may have won the race for the lock.
            return running(service->name) ? status::Success : servicestatus::ProcessAborted;
        }
        std::this_thread::sleep_for(kPollInterval);
    }
    return servicestatus::RequestTimeout;
}

long PortableServiceManager::stopService(ScHandle manager, const std::string& serviceName) {
    long status = status::Success;
    const auto service = control(manager, serviceName, &status);
    if (!service) {
        return status;
    }
    const auto lockFile = ServiceLock::file(machineFolder_, service->name);
    const auto deadline = std::chrono::steady_clock::now() + kControlTimeout;
    // The holder writes its id just after taking the lock, so the file may still name the
    // one before it: each new id is asked again.
    std::optional<pid_t> asked;
    while (std::chrono::steady_clock::now() < deadline) {
        if (!ServiceLock::held(lockFile)) {
            return asked ? status::Success : servicestatus::NotActive;
        }
        const auto pid = ServiceLock::holder(lockFile);
        if (pid && pid != asked && ::kill(*pid, SIGTERM) == 0) {
            asked = pid;
        }
        std::this_thread::sleep_for(kPollInterval);
    }
    return servicestatus::RequestTimeout;
}

}  // namespace platform::portable
