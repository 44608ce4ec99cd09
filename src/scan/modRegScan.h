#pragma once
#include <QString>

#include "platform/Platform.h"
#include "scan/ScanControl.h"
#include "state/clsList.h"

namespace scan {

// The hive handle of a root name. HKEY_CURRENT_CONFIG and HKEY_DYN_DATA share one handle,
// as they always have here; anything else gives 0.
platform::RegHandle GetMainKey(const QString& hiveName);

// Lists a key and its subkeys into UninstallKeyList, one row "hiveName\keyPath" each,
// yielding to the message loop after each name so that Stop stays alive.
class modRegScan {
public:
    modRegScan(platform::Platform& platform, ScanControl& control,
               state::clsList& uninstallKeyList);

    void DoEnumSubKeys(platform::RegHandle hive, const QString& keyPath, const QString& hiveName,
                       bool recurse);

private:
    void ListEntryValues(platform::RegHandle hive, const QString& keyPath, const QString& hiveName);

    platform::Platform& platform_;
    ScanControl& control_;
    state::clsList& uninstallKeyList_;
};

}  // namespace scan
