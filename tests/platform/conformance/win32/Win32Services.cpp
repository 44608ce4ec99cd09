// The suite's service on the Windows the test program runs on, installed with the computer's
// service manager for as long as the machine lives. Tests share that service manager, so a
// service that a test which ended early left behind is removed first.
#include "platform/win32/WindowsApi.h"

#include <winsvc.h>

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>

#include "ConformanceServices.h"
#include "platform/win32/Win32Computer.h"

namespace conformance {

namespace {

using platform::win32::Win32Computer;

// As long as Windows gives a service to stop.
constexpr auto kStopTimeout = std::chrono::seconds(30);

// The tool, which lies beside the test program wherever that was copied, as CreateServiceA
// takes it: quoted.
std::string imagePath() {
    char module[MAX_PATH] = {};
    const DWORD length = GetModuleFileNameA(nullptr, module, MAX_PATH);
    std::string path(module, length);
    path.erase(path.find_last_of('\\') + 1);
    return "\"" + path + "conformance_service.exe\"";
}

// Asks a running service to stop and waits until it has.
void stop(SC_HANDLE service) {
    SERVICE_STATUS status{};
    if (!::ControlService(service, SERVICE_CONTROL_STOP, &status)) {
        return;
    }
    const auto deadline = std::chrono::steady_clock::now() + kStopTimeout;
    while (::QueryServiceStatus(service, &status) && status.dwCurrentState != SERVICE_STOPPED &&
           std::chrono::steady_clock::now() < deadline) {
        ::Sleep(50);
    }
}

// A running service is only deleted once it has stopped, and until then no other of its name
// can be created.
void remove(SC_HANDLE manager) {
    const SC_HANDLE service =
        ::OpenServiceA(manager, kServiceName, SERVICE_STOP | SERVICE_QUERY_STATUS | DELETE);
    if (service == nullptr) {
        return;
    }
    stop(service);
    if (!::DeleteService(service)) {
        ADD_FAILURE() << kServiceName << " not deleted: error " << ::GetLastError();
    }
    ::CloseServiceHandle(service);
}

class Win32ServiceMachine final : public ServiceMachine {
public:
    explicit Win32ServiceMachine(SC_HANDLE manager) : manager_(manager) {}
    Win32ServiceMachine(const Win32ServiceMachine&) = delete;
    Win32ServiceMachine& operator=(const Win32ServiceMachine&) = delete;
    ~Win32ServiceMachine() override {
        remove(manager_);
        ::CloseServiceHandle(manager_);
    }

    platform::Platform& platform() override { return computer_.platform(); }
    platform::Platform& secondProcess() override { return second_.platform(); }

private:
    SC_HANDLE manager_;
    Win32Computer computer_;
    Win32Computer second_;
};

}  // namespace

std::unique_ptr<ServiceMachine> newServiceMachine() {
    const SC_HANDLE manager =
        ::OpenSCManagerA(nullptr, nullptr, SC_MANAGER_CONNECT | SC_MANAGER_CREATE_SERVICE);
    if (manager == nullptr) {
        const DWORD error = ::GetLastError();
        if (error != ERROR_ACCESS_DENIED) {
            ADD_FAILURE() << "no service manager: error " << error;
        }
        return nullptr;
    }
    remove(manager);
    const SC_HANDLE service =
        ::CreateServiceA(manager, kServiceName, kServiceDisplayName, SERVICE_QUERY_STATUS,
                         SERVICE_WIN32_OWN_PROCESS, SERVICE_DEMAND_START, SERVICE_ERROR_NORMAL,
                         imagePath().c_str(), nullptr, nullptr, nullptr, nullptr, nullptr);
    if (service == nullptr) {
        ADD_FAILURE() << kServiceName << " not installed: error " << ::GetLastError();
        ::CloseServiceHandle(manager);
        return nullptr;
    }
    ::CloseServiceHandle(service);
    return std::make_unique<Win32ServiceMachine>(manager);
}

}  // namespace conformance
