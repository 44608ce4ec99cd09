#include "setup/ProductRegistration.h"

#include <initializer_list>

#include "setup/RegistryWriter.h"
#include "state/ProductNames.h"

namespace setup {

using namespace platform;
namespace product = state::product;

namespace {

const QString kPublisher = QStringLiteral("Brenmoor");
const QString kUninstaller = QStringLiteral("uninst.exe");
constexpr std::uint32_t kAutoStart = 2;  // SERVICE_AUTO_START

QString installed(const QString& file) {
    return product::installFolder() + '\\' + file;
}

QString quoted(const QString& text) {
    return '"' + text + '"';
}

// True when every write of the key succeeded; otherwise reports the first failure.
bool allWritten(std::initializer_list<long> statuses, const QString& key, const Report& report) {
    for (const long status : statuses) {
        if (status != status::Success) {
            report.problem(key + QStringLiteral(": cannot be written (status %1)").arg(status));
            return false;
        }
    }
    return true;
}

}  // namespace

bool registerService(Platform& platform, const Report& report) {
    RegistryWriter registry(platform);
    const QString key = product::servicesKey();
    if (!allWritten({registry.setString(key, "DisplayName", product::serviceName()),
                     registry.setString(key, "ImagePath", quoted(installed(product::serviceFile())),
                                        regtype::ExpandSz),
                     registry.setDword(key, "Type", servicetype::OwnProcess),
                     registry.setDword(key, "Start", kAutoStart),
                     registry.setString(key, "ObjectName", "LocalSystem")},
                    key, report)) {
        return false;
    }
    report.done("registered service " + product::serviceName());
    return true;
}

bool writeProductValues(Platform& platform, const std::vector<std::pair<QString, QString>>& values,
                        const Report& report) {
    RegistryWriter registry(platform);
    const QString key = product::key();
    if (!allWritten({registry.createKey(key)}, key, report)) {
        return false;
    }
    report.done("created product key " + key);
    for (const auto& [name, data] : values) {
        if (!allWritten({registry.setString(key, name, data)}, key, report)) {
            return false;
        }
        report.done("set " + name + "=" + data);
    }
    return true;
}

bool writeUninstallEntry(Platform& platform, const Report& report) {
    RegistryWriter registry(platform);
    const QString key = product::uninstallKey();
    if (!allWritten({registry.setString(key, "DisplayName", product::name()),
                     registry.setString(key, "DisplayVersion", QStringLiteral(TALLOWICK_VERSION)),
                     registry.setString(key, "Publisher", kPublisher),
                     registry.setString(key, "InstallLocation", product::installFolder()),
                     registry.setString(key, "UninstallString", quoted(installed(kUninstaller))),
                     registry.setString(key, "DisplayIcon", installed(product::programFile()))},
                    key, report)) {
        return false;
    }
    report.done("wrote uninstall entry " + key);
    return true;
}

bool removeRegistration(Platform& platform, const Report& report) {
    RegistryWriter registry(platform);
    const std::pair<QString, const char*> keys[] = {
        {product::servicesKey(), "removed service key "},
        {product::key(), "removed product key "},
        {product::uninstallKey(), "removed uninstall entry "},
    };
    for (const auto& [key, what] : keys) {
        if (!registry.exists(key)) {
            continue;
        }
        const long status = registry.deleteTree(key);
        if (status != status::Success) {
            report.problem(key + QStringLiteral(": cannot be deleted (status %1)").arg(status));
            return false;
        }
        report.done(what + key);
    }
    return true;
}

}  // namespace setup
