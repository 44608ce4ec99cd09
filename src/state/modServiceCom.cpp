#include "state/modServiceCom.h"

#include <QStringList>

#include "core/AnsiText.h"
#include "state/FileHelpers.h"
#include "state/MessageLoop.h"
#include "state/ProductNames.h"
#include "state/RuntimeErrors.h"

namespace state {

QString ServiceStateText(std::uint32_t state) {
    static const QStringList kTexts = {"stopped",  "startpend", "stoppend", "running",
                                       "contpend", "pausepend", "paused"};
    return state >= 1 && state <= 7 ? kTexts[int(state) - 1] : QString();
}

modServiceCom::modServiceCom(platform::Platform& platform, modRegistry& registry,
                             const DataFolders& folders, ServiceGate& gate)
    : platform_(platform), registry_(registry), folders_(folders), gate_(gate) {}

void modServiceCom::showDebugFailure(const QString& text) {
    if (debugMode_) {
        platform_.messageBox.show(text.toStdU16String(), product::name().toStdU16String(), 0);
    }
}

bool modServiceCom::EnumSystemServices(std::uint32_t state, bool& found) {
    using namespace platform;
    const std::string name = core::toAnsi(platform_.codePage, product::serviceName());
    ServiceManager& services = platform_.services;
    ScHandle manager = 0;
    long result = services.OpenSCManagerA(scmaccess::EnumerateService, &manager);
    if (result != status::Success) {
        showDebugFailure(QStringLiteral("OpenSCManager failed; error = %1").arg(result));
        return false;
    }
    std::uint32_t bytesNeeded = 0;
    result =
        services.EnumServicesStatusA(manager, servicetype::Win32, state, 0, nullptr, &bytesNeeded);
    if (result != status::MoreData) {
        showDebugFailure(QStringLiteral("ERROR_MORE_DATA not returned; error %1").arg(result));
        services.CloseServiceHandle(manager);
        return false;
    }
    const std::uint32_t bufferSize =
        (bytesNeeded / kEnumServiceStatusSize + 1) * kEnumServiceStatusSize;
    std::vector<EnumServiceStatus> records;
    result = services.EnumServicesStatusA(manager, servicetype::Win32, state, bufferSize, &records,
                                          &bytesNeeded);
    if (result != status::Success) {
        showDebugFailure(QStringLiteral("EnumServicesStatus; error %1").arg(result));
        services.CloseServiceHandle(manager);
        return false;
    }
    bool running = false;
    for (const auto& record : records) {
        if (record.serviceName == name && record.displayName == name) {
            found = true;
            running = ServiceStateText(record.currentState) == QLatin1String("running");
        }
    }
    services.CloseServiceHandle(manager);
    return running;
}

bool modServiceCom::productValueExists(const QString& name) {
    return !IsFailureWord(registry_.GetStringValue(product::key(), name));
}

void modServiceCom::waitWhileCommandFileExists(const std::string& commandFile) {
    while (platform_.files.FileExists(commandFile)) {
        pumpEvents();
        platform_.clock.Sleep(1);
    }
}

int modServiceCom::WriteServiceFile(const QString& path, const QString& text) {
    const std::string file = core::toAnsi(platform_.codePage, path);
    platform_.files.SetAttr(file, platform::fileattr::Normal);
    platform_.files.Kill(file);
    // Written in one step: the service takes the file the moment it appears.
    const int error = FileHelpers(platform_).WriteTextFile(path, text);
    pumpEvents();
    return error;
}

bool modServiceCom::SendToService(const QString& commandText) {
    if (serviceGone_) {
        return false;
    }
    if (!productValueExists(QStringLiteral("Uninstall")) &&
        !productValueExists(QStringLiteral("Install"))) {
        bool found = false;
        if (!EnumSystemServices(platform::serviceenum::All, found)) {
            gate_.ServiceRecovery(found);
            if (serviceGone_) {
                return false;
            }
        }
    }
    const QString path = folders_.dataFolder() + product::commandFile();
    const std::string commandFile = core::toAnsi(platform_.codePage, path);
    waitWhileCommandFileExists(commandFile);
    if (const int error = WriteServiceFile(path, commandText); error != 0) {
        platform_.messageBox.show(
            HandlerErrorLine(BasicFault(error), QStringLiteral("SendToService"), CodeUnit::Module,
                             QStringLiteral("modServiceCom"))
                .toStdU16String(),
            product::name().toStdU16String(), platform::mbstyle::Ok);
        return false;
    }
    waitWhileCommandFileExists(commandFile);
    return true;
}

}  // namespace state
