#include "service/ServiceControl.h"

#include "core/AnsiText.h"
#include "state/ProductNames.h"

namespace service {

namespace {

using namespace platform;

long control(Platform& platform, long (ServiceManager::*call)(ScHandle, const std::string&),
             long alreadyThere) {
    ScHandle manager = 0;
    long status = platform.services.OpenSCManagerA(scmaccess::Connect, &manager);
    if (status != status::Success) {
        return status;
    }
    status = (platform.services.*call)(
        manager, core::toAnsi(platform.codePage, state::product::serviceName()));
    platform.services.CloseServiceHandle(manager);
    return status == alreadyThere ? status::Success : status;
}

}  // namespace

long startProductService(Platform& platform) {
    return control(platform, &ServiceManager::startService, servicestatus::AlreadyRunning);
}

long stopProductService(Platform& platform) {
    return control(platform, &ServiceManager::stopService, servicestatus::NotActive);
}

ServiceState productServiceState(Platform& platform) {
    ScHandle manager = 0;
    if (platform.services.OpenSCManagerA(scmaccess::EnumerateService, &manager) !=
        status::Success) {
        return ServiceState::NotInstalled;
    }
    const std::string name = core::toAnsi(platform.codePage, state::product::serviceName());
    std::uint32_t needed = 0;
    std::vector<EnumServiceStatus> records;
    platform.services.EnumServicesStatusA(manager, servicetype::Win32, serviceenum::All, 0, nullptr,
                                          &needed);
    platform.services.EnumServicesStatusA(manager, servicetype::Win32, serviceenum::All, needed,
                                          &records, &needed);
    platform.services.CloseServiceHandle(manager);
    for (const auto& record : records) {
        if (record.serviceName == name) {
            return record.currentState == servicestate::Running ? ServiceState::Running
                                                                : ServiceState::Stopped;
        }
    }
    return ServiceState::NotInstalled;
}

QString controlStatusText(long status) {
    switch (status) {
        case status::Success:
            return QStringLiteral("done");
        case status::FileNotFound:
            return QStringLiteral("no program stands for the service's ImagePath");
        case servicestatus::DoesNotExist:
            return QStringLiteral("the service is not installed");
        case servicestatus::ProcessAborted:
            return QStringLiteral("the service's program ended before it ran");
        case servicestatus::RequestTimeout:
            return QStringLiteral("the service did not answer in time");
        default:
            return QStringLiteral("service manager status %1").arg(status);
    }
}

}  // namespace service
