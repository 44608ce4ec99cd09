#include "scan/Discovery.h"

#include "scan/UninstallKeyReader.h"
#include "scan/modRegScan.h"

namespace scan {

namespace {
const QString kUninstallKey =
    QStringLiteral("Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall");
}  // namespace

Discovery::Discovery(platform::Platform& platform, state::modRegistry& registry,
                     ScanControl& control, StringLookup getStrLocValue,
                     state::clsList& uninstallKeyList, ProgramFilter& filter)
    : platform_(platform),
      registry_(registry),
      control_(control),
      getStrLocValue_(std::move(getStrLocValue)),
      uninstallKeyList_(uninstallKeyList),
      filter_(filter) {}

void Discovery::run(const std::function<void(const QString&, const QString&)>& verdict) {
    VersionInfoReader versionReader(platform_.versionInfo, platform_.codePage);
    UninstallKeyReader reader(platform_, registry_, versionReader, getStrLocValue_);
    modRegScan walk(platform_, control_, uninstallKeyList_);

    for (const char* hiveName : {"HKEY_LOCAL_MACHINE", "HKEY_CURRENT_USER"}) {
        const QString hive = QLatin1String(hiveName);
        uninstallKeyList_.Clear();
        control_.pumpEvents();
        walk.DoEnumSubKeys(GetMainKey(hive), kUninstallKey, hive, false);
        control_.pumpEvents();
        for (int row = 0; row < uninstallKeyList_.Count(); ++row) {
            if (!control_.bInProcess) {
                break;
            }
            const QString key = uninstallKeyList_.ItemText(row);
            const auto candidate = reader.read(key);
            const QString said =
                candidate ? filter_.test(*candidate) : QStringLiteral("SystemComponent");
            if (verdict) {
                verdict(key, said);
            }
        }
    }
}

}  // namespace scan
