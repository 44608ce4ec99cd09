#include "platform/win32/Win32ServiceManager.h"

#include "platform/win32/WindowsApi.h"

#include <winsvc.h>

#include <algorithm>
#include <chrono>
#include <vector>

#include "platform/WinTypes.h"

namespace platform::win32 {

namespace {

// How long a start or stop may take, as the service manager itself allows a service.
constexpr auto kControlTimeout = std::chrono::seconds(30);
constexpr DWORD kPollMilliseconds = 50;

SC_HANDLE scHandle(ScHandle handle) {
    return reinterpret_cast<SC_HANDLE>(handle);
}

long lastError() {
    return long(::GetLastError());
}

// Waits until the service leaves the pending state: 0 when it reached the wanted state,
// ProcessAborted when it stopped instead of running, RequestTimeout when it took too long.
long waitForState(SC_HANDLE service, DWORD wanted) {
    const auto deadline = std::chrono::steady_clock::now() + kControlTimeout;
    for (;;) {
        SERVICE_STATUS current{};
        if (!::QueryServiceStatus(service, &current)) {
            return lastError();
        }
        if (current.dwCurrentState == wanted) {
            return status::Success;
        }
        if (current.dwCurrentState == SERVICE_STOPPED) {
            return servicestatus::ProcessAborted;
        }
        if (std::chrono::steady_clock::now() >= deadline) {
            return servicestatus::RequestTimeout;
        }
        ::Sleep(kPollMilliseconds);
    }
}

// A name of a record; a record without one, which a broken answer can hold, has an empty name.
std::string text(const char* name) {
    return name == nullptr ? std::string() : std::string(name);
}

// OpenServiceA for some rights; the error when there is no such service.
SC_HANDLE openService(ScHandle manager, const std::string& serviceName, DWORD rights, long* error) {
    const SC_HANDLE service = ::OpenServiceA(scHandle(manager), serviceName.c_str(), rights);
    *error = service == nullptr ? lastError() : status::Success;
    return service;
}

// Opens the service with the right to do something and to watch its state, does it, closes.
template <class Action>
long withService(ScHandle manager, const std::string& serviceName, DWORD right, Action action) {
    long result = status::Success;
    const SC_HANDLE service =
        openService(manager, serviceName, right | SERVICE_QUERY_STATUS, &result);
    if (service == nullptr) {
        return result;
    }
    result = action(service);
    ::CloseServiceHandle(service);
    return result;
}

}  // namespace

long Win32ServiceManager::OpenSCManagerA(std::uint32_t access, ScHandle* manager) {
    if (manager == nullptr) {
        return status::InvalidParameter;
    }
    const SC_HANDLE opened = ::OpenSCManagerA(nullptr, nullptr, access);
    *manager = reinterpret_cast<ScHandle>(opened);
    return opened == nullptr ? lastError() : status::Success;
}

long Win32ServiceManager::EnumServicesStatusA(ScHandle manager, std::uint32_t serviceType,
                                              std::uint32_t serviceState, std::uint32_t bufferSize,
                                              std::vector<EnumServiceStatus>* services,
                                              std::uint32_t* bytesNeeded) {
    if (bytesNeeded == nullptr) {
        return status::InvalidParameter;
    }
    // A partial answer is thrown away and the whole list asked for again in a larger buffer:
    // Wine counts records of a partial answer that it never wrote.
    constexpr size_t kLargestBuffer = 16 * 1024 * 1024;
    std::vector<EnumServiceStatus> listed;
    std::vector<BYTE> buffer(16 * 1024);
    for (;;) {
        DWORD needed = 0;
        DWORD count = 0;
        DWORD resume = 0;
        if (::EnumServicesStatusA(scHandle(manager), serviceType, serviceState,
                                  reinterpret_cast<ENUM_SERVICE_STATUSA*>(buffer.data()),
                                  DWORD(buffer.size()), &needed, &count, &resume)) {
            const auto* records = reinterpret_cast<const ENUM_SERVICE_STATUSA*>(buffer.data());
            for (DWORD i = 0; i < count; ++i) {
                listed.push_back({text(records[i].lpServiceName), text(records[i].lpDisplayName),
                                  records[i].ServiceStatus.dwServiceType,
                                  records[i].ServiceStatus.dwCurrentState});
            }
            break;
        }
        const long error = lastError();
        if ((error != status::MoreData && error != ERROR_INSUFFICIENT_BUFFER) ||
            buffer.size() >= kLargestBuffer) {
            return error;
        }
        buffer.resize(std::max<size_t>(buffer.size() + needed, buffer.size() * 2));
    }
    std::uint32_t needed = 0;
    for (const auto& service : listed) {
        needed += kEnumServiceStatusSize + std::uint32_t(service.serviceName.size() + 1) +
                  std::uint32_t(service.displayName.size() + 1);
    }
    if (needed > bufferSize || services == nullptr) {
        *bytesNeeded = needed;
        return status::MoreData;
    }
    *bytesNeeded = 0;
    *services = std::move(listed);
    return status::Success;
}

long Win32ServiceManager::CloseServiceHandle(ScHandle handle) {
    return ::CloseServiceHandle(scHandle(handle)) ? status::Success : lastError();
}

long Win32ServiceManager::startService(ScHandle manager, const std::string& serviceName) {
    return withService(manager, serviceName, SERVICE_START, [](SC_HANDLE service) {
        return ::StartServiceA(service, 0, nullptr) ? waitForState(service, SERVICE_RUNNING)
                                                    : lastError();
    });
}

long Win32ServiceManager::stopService(ScHandle manager, const std::string& serviceName) {
    return withService(manager, serviceName, SERVICE_STOP, [](SC_HANDLE service) {
        SERVICE_STATUS reported{};
        return ::ControlService(service, SERVICE_CONTROL_STOP, &reported)
                   ? waitForState(service, SERVICE_STOPPED)
                   : lastError();
    });
}

}  // namespace platform::win32
