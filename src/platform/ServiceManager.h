#pragma once
#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace platform {

using ScHandle = std::uintptr_t;

// SERVICE_STATUS.dwCurrentState.
namespace servicestate {
inline constexpr std::uint32_t Stopped = 1;
inline constexpr std::uint32_t StartPending = 2;
inline constexpr std::uint32_t StopPending = 3;
inline constexpr std::uint32_t Running = 4;
inline constexpr std::uint32_t ContinuePending = 5;
inline constexpr std::uint32_t PausePending = 6;
inline constexpr std::uint32_t Paused = 7;
}  // namespace servicestate

namespace servicetype {
inline constexpr std::uint32_t OwnProcess = 0x10;
inline constexpr std::uint32_t ShareProcess = 0x20;
inline constexpr std::uint32_t Win32 = 0x30;  // both of the above
}  // namespace servicetype

// Which services EnumServicesStatusA lists.
namespace serviceenum {
inline constexpr std::uint32_t Active = 1;
inline constexpr std::uint32_t Inactive = 2;
inline constexpr std::uint32_t All = 3;
}  // namespace serviceenum

namespace scmaccess {
inline constexpr std::uint32_t Connect = 0x1;
inline constexpr std::uint32_t EnumerateService = 0x4;
}  // namespace scmaccess

// Win32 error codes of the service manager.
namespace servicestatus {
inline constexpr long RequestTimeout = 1053;  // ERROR_SERVICE_REQUEST_TIMEOUT
inline constexpr long AlreadyRunning = 1056;  // ERROR_SERVICE_ALREADY_RUNNING
inline constexpr long DoesNotExist = 1060;    // ERROR_SERVICE_DOES_NOT_EXIST
inline constexpr long NotActive = 1062;       // ERROR_SERVICE_NOT_ACTIVE
inline constexpr long ProcessAborted = 1067;  // ERROR_PROCESS_ABORTED
}  // namespace servicestatus

// One record of EnumServicesStatusA: ENUM_SERVICE_STATUSA with the parts the program reads.
// Names are ANSI.
struct EnumServiceStatus {
    std::string serviceName;
    std::string displayName;
    std::uint32_t serviceType = 0;
    std::uint32_t currentState = 0;
};

// What one record takes of the caller's buffer, without its names: ENUM_SERVICE_STATUSA as
// 32-bit Windows lays it out.
inline constexpr std::uint32_t kEnumServiceStatusSize = 36;

// The service control manager as a client sees it. The calls return a Win32 error code, 0
// for success.
class ServiceManager {
public:
    virtual ~ServiceManager() = default;

    virtual long OpenSCManagerA(std::uint32_t access, ScHandle* manager) = 0;
    // Lists the services of a type in a state. bufferSize is the room the caller offers in
    // bytes: each record takes kEnumServiceStatusSize and its two names with terminators.
    // When the list does not fit, status::MoreData and *bytesNeeded, and nothing is listed.
    virtual long EnumServicesStatusA(ScHandle manager, std::uint32_t serviceType,
                                     std::uint32_t serviceState, std::uint32_t bufferSize,
                                     std::vector<EnumServiceStatus>* services,
                                     std::uint32_t* bytesNeeded) = 0;
    virtual long CloseServiceHandle(ScHandle handle) = 0;

    // Starts an installed service and returns when it runs (OpenServiceA, StartServiceA and
    // a wait on its status).
    virtual long startService(ScHandle manager, const std::string& serviceName) = 0;
    // Asks a running service to stop and returns when it has (ControlService with
    // SERVICE_CONTROL_STOP and a wait on its status).
    virtual long stopService(ScHandle manager, const std::string& serviceName) = 0;
};

// The other side: the process of a service.
class ServiceHost {
public:
    virtual ~ServiceHost() = default;

    // Runs body as the service serviceName: the service counts as running from the call of
    // body until it returns. The flag turns true when the service manager asks the service
    // to stop; body tests it at least every 100 ms. servicestatus::AlreadyRunning when
    // another process runs the service, and body is not called.
    virtual long runService(
        const std::string& serviceName,
        const std::function<void(const std::atomic<bool>& stopRequested)>& body) = 0;
};

}  // namespace platform
