#pragma once
#include <string>
#include <vector>

#include "demo/CatalogCsv.h"
#include "demo/PeWriter.h"

namespace demo {

// What a demo machine holds, by kind. A key or program may be of several kinds.
struct DemoCounts {
    int programs = 0;          // catalog programs installed, each with its executable
    int keys = 0;              // uninstall keys in both hives
    int perUser = 0;           // programs registered in HKEY_CURRENT_USER only
    int x86 = 0;               // 32-bit programs under Program Files (x86)
    int productCodeKeys = 0;   // keys named by a {GUID}, as Windows Installer names them
    int innoKeys = 0;          // keys named "<name>_is1"
    int oddVersions = 0;       // versions that are not plain dotted numbers
    int systemComponents = 0;  // SystemComponent=1
    int withoutPublisher = 0;
    int withoutVersion = 0;
    int inBothHives = 0;       // programs with a second, equal key in HKEY_CURRENT_USER
    int twiceInOneFolder = 0;  // programs with a second key of their own folder
    int driverPackages = 0;    // "Windows Driver Package - ..." keys
};

// An executable to place on the machine.
struct DemoFile {
    std::string winPath;  // UTF-8
    PeVersionInfo version;
};

struct DemoPlan {
    std::string regText;  // the uninstall keys of both hives, as a UTF-8 .reg file
    std::vector<DemoFile> files;
    DemoCounts counts;
};

// Chooses programs of the catalog and describes them as their installers would have left
// them on a computer of that user. The same catalog and seed give the same plan on every
// standard library.
DemoPlan planDemoPrograms(const std::vector<CatalogEntry>& catalog, unsigned seed,
                          const std::string& userName);

}  // namespace demo
