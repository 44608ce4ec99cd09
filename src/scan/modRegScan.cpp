#include "scan/modRegScan.h"

#include <QStringList>

#include <array>
#include <cstring>

#include "core/AnsiText.h"
#include "state/modRegistry.h"

namespace scan {

namespace {
constexpr std::uint32_t kNameBuffer = 256;
}  // namespace

platform::RegHandle GetMainKey(const QString& hiveName) {
    if (hiveName == QLatin1String("HKEY_DYN_DATA")) {
        return platform::hkey::CurrentConfig;
    }
    return state::modRegistry::GetMainKeyHandle(hiveName);
}

modRegScan::modRegScan(platform::Platform& platform, ScanControl& control,
                       state::clsList& uninstallKeyList)
    : platform_(platform), control_(control), uninstallKeyList_(uninstallKeyList) {}

void modRegScan::ListEntryValues(platform::RegHandle hive, const QString& keyPath,
                                 const QString& hiveName) {
    auto& registry = platform_.registry;
    platform::RegHandle key = 0;
    if (registry.RegOpenKeyExA(hive, core::toAnsi(platform_.codePage, keyPath), 0,
                               platform::access::KeyRead, &key) == platform::status::Success) {
        uninstallKeyList_.ItemAdd(hiveName + "\\" + keyPath);
        registry.RegCloseKey(key);
    }
}

void modRegScan::DoEnumSubKeys(platform::RegHandle hive, const QString& keyPath,
                               const QString& hiveName, bool recurse) {
    auto& registry = platform_.registry;
    platform::RegHandle key = 0;
    if (registry.RegOpenKeyExA(hive, core::toAnsi(platform_.codePage, keyPath), 0,
                               platform::access::KeyRead, &key) != platform::status::Success) {
        return;
    }
    if (!control_.bInProcess) {
        registry.RegCloseKey(key);
        return;
    }
    // The key itself is the first row; it has no program values and filtering drops it.
    ListEntryValues(hive, keyPath, hiveName);

    QStringList names;
    for (std::uint32_t index = 0;; ++index) {
        std::array<char, kNameBuffer> name{};
        std::uint32_t size = kNameBuffer;
        const long result = registry.RegEnumKeyExA(key, index, name.data(), &size);
        if (result != platform::status::Success && result != platform::status::MoreData) {
            break;
        }
        names.append(core::fromAnsi(platform_.codePage,
                                    std::string(name.data(), strnlen(name.data(), name.size()))));
        control_.pumpEvents();
    }
    registry.RegCloseKey(key);

    for (const QString& name : names) {
        if (recurse) {
            DoEnumSubKeys(hive, keyPath + "\\" + name, hiveName, true);
        } else {
            ListEntryValues(hive, keyPath + "\\" + name, hiveName);
        }
        control_.pumpEvents();
    }
}

}  // namespace scan
