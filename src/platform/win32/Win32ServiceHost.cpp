#include "platform/win32/Win32ServiceHost.h"

#include "platform/win32/WindowsApi.h"

#include <winsvc.h>

#include <mutex>

#include "platform/WinTypes.h"
#include "platform/win32/StopEvent.h"

namespace platform::win32 {

namespace {

constexpr DWORD kStopWaitHint = 5000;

// The dispatcher calls back without a context of ours; a process runs one service at a time.
// It lives as long as the process, so that a control that comes late still finds it.
struct RunningService {
    std::string name;
    const std::function<void(const std::atomic<bool>&)>* body = nullptr;
    std::atomic<bool> stopRequested{false};
    SERVICE_STATUS_HANDLE statusHandle = nullptr;
    // The handler's thread and the body's both report; the last report must be the stop.
    std::mutex reporting;
    SERVICE_STATUS status{};
};
RunningService* running = nullptr;

RunningService& runningService() {
    static RunningService service;
    return service;
}

// Called with the reporting lock held.
void report(RunningService& service, DWORD state, DWORD waitHint = 0) {
    service.status.dwServiceType = SERVICE_WIN32_OWN_PROCESS;
    service.status.dwCurrentState = state;
    service.status.dwControlsAccepted =
        state == SERVICE_RUNNING ? SERVICE_ACCEPT_STOP | SERVICE_ACCEPT_SHUTDOWN : 0;
    service.status.dwWin32ExitCode = NO_ERROR;
    service.status.dwWaitHint = waitHint;
    // Only a pending state counts its progress.
    const bool pending = state != SERVICE_RUNNING && state != SERVICE_STOPPED;
    service.status.dwCheckPoint = pending ? service.status.dwCheckPoint + 1 : 0;
    ::SetServiceStatus(service.statusHandle, &service.status);
}

DWORD WINAPI handleControl(DWORD control, DWORD, void*, void* context) {
    auto& service = *static_cast<RunningService*>(context);
    switch (control) {
        case SERVICE_CONTROL_STOP:
        case SERVICE_CONTROL_SHUTDOWN: {
            // Pending is told before the body can see the request and report the stop.
            const std::lock_guard lock(service.reporting);
            if (service.status.dwCurrentState == SERVICE_RUNNING) {
                report(service, SERVICE_STOP_PENDING, kStopWaitHint);
            }
            service.stopRequested = true;
            ::SetEvent(stopEvent());
            return NO_ERROR;
        }
        case SERVICE_CONTROL_INTERROGATE:
            return NO_ERROR;
        default:
            return ERROR_CALL_NOT_IMPLEMENTED;
    }
}

void WINAPI serviceMain(DWORD, char**) {
    RunningService& service = *running;
    service.statusHandle =
        ::RegisterServiceCtrlHandlerExA(service.name.c_str(), handleControl, &service);
    if (service.statusHandle == nullptr) {
        return;
    }
    {
        const std::lock_guard lock(service.reporting);
        report(service, SERVICE_RUNNING);
    }
    (*service.body)(service.stopRequested);
    const std::lock_guard lock(service.reporting);
    report(service, SERVICE_STOPPED);
}

// Mutex names are compared with case, service names without.
std::string mutexName(const std::string& serviceName) {
    std::string upper = serviceName;
    ::CharUpperBuffA(upper.data(), DWORD(upper.size()));
    for (char& c : upper) {
        if (c == '\\') {
            c = '/';
        }
    }
    return "Global\\Service " + upper;
}

}  // namespace

long Win32ServiceHost::runService(
    const std::string& serviceName,
    const std::function<void(const std::atomic<bool>& stopRequested)>& body) {
    const HANDLE mutex = ::CreateMutexA(nullptr, FALSE, mutexName(serviceName).c_str());
    const DWORD error = ::GetLastError();
    // Another process made it, possibly as a user this one may not open it as.
    if (mutex == nullptr || error == ERROR_ALREADY_EXISTS) {
        if (mutex != nullptr) {
            ::CloseHandle(mutex);
        }
        return error == ERROR_ALREADY_EXISTS || error == ERROR_ACCESS_DENIED
                   ? servicestatus::AlreadyRunning
                   : long(error);
    }
    RunningService& service = runningService();
    service.name = serviceName;
    service.body = &body;
    service.stopRequested = false;
    service.statusHandle = nullptr;
    service.status = SERVICE_STATUS{};
    running = &service;
    ::ResetEvent(stopEvent());
    SERVICE_TABLE_ENTRYA table[] = {{service.name.data(), serviceMain}, {nullptr, nullptr}};
    const long result =
        ::StartServiceCtrlDispatcherA(table) ? status::Success : long(::GetLastError());
    running = nullptr;
    ::CloseHandle(mutex);
    return result;
}

}  // namespace platform::win32
