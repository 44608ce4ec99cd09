#include "demo/DemoPrograms.h"

#include <algorithm>
#include <cstdio>
#include <optional>
#include <random>
#include <set>
#include <utility>

#include "demo/DemoNames.h"

namespace demo {

namespace {

constexpr std::size_t kPlainPrograms = 330;
constexpr std::size_t kOddPrograms = 10;
constexpr int kDriverPackages = 5;
constexpr const char* kMachineHive = "HKEY_LOCAL_MACHINE";
constexpr const char* kUserHive = "HKEY_CURRENT_USER";
constexpr const char* kUninstall = "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall";

// mt19937's output is fixed by the standard, the distributions are not: the reductions
// here are our own so that a seed means the same machine everywhere.
class Random {
public:
    explicit Random(unsigned seed) : engine_(seed) {}

    // 0 to n - 1, each equally likely: outputs below 2^32 mod n are drawn again.
    std::uint32_t below(std::uint32_t n) {
        const std::uint32_t rejected = std::uint32_t(0u - n) % n;
        for (;;) {
            const std::uint32_t x = std::uint32_t(engine_());
            if (x >= rejected) {
                return x % n;
            }
        }
    }
    bool percent(std::uint32_t chance) { return below(100) < chance; }

    template <typename T>
    void shuffle(std::vector<T>& items) {
        for (std::size_t i = items.size(); i > 1; --i) {
            std::swap(items[i - 1], items[below(std::uint32_t(i))]);
        }
    }

    std::string hex(int digits) {
        std::string text;
        for (int i = 0; i < digits; ++i) {
            text += "0123456789ABCDEF"[below(16)];
        }
        return text;
    }
    std::string guid() {
        return "{" + hex(8) + "-" + hex(4) + "-" + hex(4) + "-" + hex(4) + "-" + hex(12) + "}";
    }

private:
    std::mt19937 engine_;
};

struct Value {
    std::string name;
    std::string text;
    std::optional<std::uint32_t> dword;
};

struct Key {
    std::string hive;
    std::string name;
    std::vector<Value> values = {};

    void set(std::string valueName, std::string text) {
        values.push_back({std::move(valueName), std::move(text), std::nullopt});
    }
    void set(std::string valueName, std::uint32_t number) {
        values.push_back({std::move(valueName), {}, number});
    }
};

// A .reg string: backslash and quote escaped; control characters, which no installer
// writes, become blanks.
std::string regString(std::string_view text) {
    std::string out = "\"";
    for (char c : text) {
        if (c == '\\' || c == '"') {
            out += '\\';
        }
        out += std::uint8_t(c) < 0x20 ? ' ' : c;
    }
    return out + "\"";
}

std::string regText(const std::vector<Key>& keys) {
    std::string text = "Windows Registry Editor Version 5.00\r\n";
    for (const Key& key : keys) {
        text += "\r\n[" + key.hive + "\\" + kUninstall + "\\" + key.name + "]\r\n";
        for (const Value& value : key.values) {
            text += regString(value.name) + "=";
            if (value.dword) {
                char number[16];
                std::snprintf(number, sizeof number, "dword:%08x", unsigned(*value.dword));
                text += number;
            } else {
                text += regString(value.text);
            }
            text += "\r\n";
        }
    }
    return text + "\r\n";
}

bool isPlainKeyName(std::string_view name) {
    return !name.empty() && std::all_of(name.begin(), name.end(),
                                        [](char c) { return c >= 0x20 && c < 0x7F && c != '\\'; });
}

std::string lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; });
    return text;
}

class Planner {
public:
    Planner(unsigned seed, std::string userName) : random_(seed), user_(std::move(userName)) {}

    Random& random() { return random_; }
    void addProgram(const CatalogEntry& entry, bool oddVersion);
    void addDriverPackage();
    DemoPlan finish() {
        plan_.regText = regText(keys_);
        plan_.counts.keys = int(keys_.size());
        return std::move(plan_);
    }

private:
    // The preferred name unless the hive has it already; then a product code.
    std::string keyName(const std::string& hive, const std::string& preferred) {
        std::string name = preferred;
        while (!usedKeys_.insert(lower(hive + "\\" + name)).second) {
            name = random_.guid();
        }
        return name;
    }
    // A folder no other program has, with a trailing backslash.
    std::string folder(const std::string& parent, const std::string& name,
                       const std::string& product) {
        std::string path = parent + name;
        for (int n = 2; !usedFolders_.insert(lower(path)).second; ++n) {
            path = parent + name + " " + product + (n > 2 ? " " + std::to_string(n) : "");
        }
        return path + "\\";
    }

    Random random_;
    std::string user_;
    std::set<std::string> usedKeys_;
    std::set<std::string> usedFolders_;
    std::vector<std::pair<std::string, std::string>> installed_;  // publisher, product
    std::vector<Key> keys_;
    DemoPlan plan_;
};

void Planner::addProgram(const CatalogEntry& entry, bool oddVersion) {
    const std::string handle = entry.packageId.substr(0, entry.packageId.find('.'));
    const std::string product = entry.packageId.substr(entry.packageId.rfind('.') + 1);
    const std::string publisher = demo::companyName(handle);
    const std::string productFile = demo::asciiFileName(product).empty()
                                        ? std::string("program")
                                        : demo::asciiFileName(product);
    std::string folderName = demo::asciiFileName(entry.name);
    if (folderName.size() < 2) {
        folderName = productFile;
    }
    const std::string publisherFolder =
        demo::asciiFileName(handle).empty() ? std::string("Common") : demo::asciiFileName(handle);

    DemoCounts& counts = plan_.counts;
    const bool perUser = random_.percent(15);
    const bool x86 = !perUser && random_.percent(25);
    const std::string parent =
        perUser ? "C:\\Users\\" + user_ + "\\AppData\\Local\\Programs\\"
                : std::string(x86 ? "C:\\Program Files (x86)\\" : "C:\\Program Files\\") +
                      publisherFolder + "\\";
    const std::string location = folder(parent, folderName, productFile);
    const std::string exe = location + productFile + ".exe";
    const std::string hive = perUser ? kUserHive : kMachineHive;

    // The installer decides the key's name and how the program is removed.
    enum class Installer { WindowsInstaller, Inno, Nsis } installer = Installer::Nsis;
    if (const std::uint32_t pick = random_.below(4); pick == 0) {
        installer = Installer::WindowsInstaller;
    } else if (pick == 1) {
        installer = Installer::Inno;
    }
    const std::string productCode = random_.guid();
    const std::string plainName = isPlainKeyName(entry.name) ? entry.name : productCode;
    Key key{hive, ""};
    std::string uninstall;
    std::string quietUninstall;
    switch (installer) {
        case Installer::WindowsInstaller:
            key.name = keyName(hive, productCode);
            uninstall = "MsiExec.exe /X" + productCode;
            ++counts.productCodeKeys;
            break;
        case Installer::Inno:
            key.name = keyName(hive, plainName + "_is1");
            uninstall = "\"" + location + "unins000.exe\"";
            quietUninstall = uninstall + " /SILENT";
            ++counts.innoKeys;
            break;
        case Installer::Nsis:
            key.name = keyName(hive, plainName);
            uninstall = perUser
                            ? "\"" + location + "Uninstall " + folderName + ".exe\" /currentuser"
                            : "\"" + location + "uninstall.exe\" /S";
            quietUninstall = perUser ? uninstall + " /S" : uninstall;
            break;
    }

    const std::uint32_t nameForm = random_.below(10);
    key.set("DisplayName", nameForm == 0 && !x86 ? entry.name + " (x64)"
                           : nameForm == 1       ? entry.name + " " + entry.version
                                                 : entry.name);
    if (random_.percent(4)) {
        ++counts.withoutVersion;
    } else {
        key.set("DisplayVersion", entry.version);
    }
    if (random_.percent(4)) {
        ++counts.withoutPublisher;
    } else {
        key.set("Publisher", publisher);
    }
    key.set("InstallLocation", location);
    if (installer != Installer::WindowsInstaller || !random_.percent(30)) {
        const std::uint32_t iconForm = random_.below(20);
        const std::string path = iconForm >= 14 ? "\"" + exe + "\"" : exe;
        key.set("DisplayIcon", iconForm % 2 == 1 ? path + ",0" : path);
    }
    key.set("UninstallString", uninstall);
    if (!quietUninstall.empty()) {
        key.set("QuietUninstallString", quietUninstall);
    }
    if (installer == Installer::WindowsInstaller) {
        key.set("ModifyPath", "MsiExec.exe /I" + productCode);
        key.set("WindowsInstaller", 1u);
    }
    if (entry.lastUpdate.size() >= 10) {
        key.set("InstallDate", entry.lastUpdate.substr(0, 4) + entry.lastUpdate.substr(5, 2) +
                                   entry.lastUpdate.substr(8, 2));
    }
    key.set("EstimatedSize", 500 + random_.below(400000));
    key.set("NoModify", 1u);
    if (random_.percent(50)) {
        key.set("NoRepair", 1u);
    }
    if (random_.percent(4)) {
        key.set("SystemComponent", 1u);
        ++counts.systemComponents;
    }
    keys_.push_back(key);

    // Installed for everyone and once more for the user, as a repair or second setup does.
    if (!perUser && random_.percent(2)) {
        Key copy = key;
        copy.hive = kUserHive;
        copy.name = keyName(kUserHive, key.name);
        keys_.push_back(copy);
        ++counts.inBothHives;
    }
    // A bootstrapper and the package it runs both register the program.
    if (random_.percent(2)) {
        Key package{hive, keyName(hive, random_.guid())};
        for (const Value& value : key.values) {
            if (value.name == "DisplayName" || value.name == "DisplayVersion" ||
                value.name == "Publisher" || value.name == "InstallLocation" ||
                value.name == "DisplayIcon") {
                package.values.push_back(value);
            }
        }
        package.set("UninstallString", "MsiExec.exe /X" + package.name);
        package.set("WindowsInstaller", 1u);
        keys_.push_back(package);
        ++counts.twiceInOneFolder;
    }

    PeVersionInfo version;
    version.fileVersion = entry.version;
    version.productVersion = entry.version;
    version.companyName = publisher;
    version.fileDescription = entry.name;
    if (demo::hasCjk(entry.name)) {
        version.language = 0x0804;
    } else if (random_.percent(15)) {
        version.codePage = 0x04E4;
    }
    version.fixedFileVersion = demo::fixedVersionOf(entry.version);
    version.fixedProductVersion = version.fixedFileVersion;
    version.pe32Plus = !x86;
    plan_.files.push_back({exe, version});

    installed_.emplace_back(publisher, product);
    ++counts.programs;
    counts.perUser += perUser ? 1 : 0;
    counts.x86 += x86 ? 1 : 0;
    counts.oddVersions += oddVersion ? 1 : 0;
}

void Planner::addDriverPackage() {
    constexpr const char* kClasses[] = {"Net", "USB", "System", "HIDClass", "Ports", "Image"};
    const auto& [publisher, product] = installed_[random_.below(std::uint32_t(installed_.size()))];
    char date[32];
    std::snprintf(date, sizeof date, "%02u/%02u/%u %u.%u.%u.%u", 1 + random_.below(12),
                  1 + random_.below(28), 2015 + random_.below(10), 1 + random_.below(30),
                  random_.below(10), random_.below(100), random_.below(10000));
    const std::string inf = lower(demo::asciiFileName(product).substr(0, 8));
    Key key{kMachineHive, keyName(kMachineHive, random_.hex(40))};
    key.set("DisplayName", "Windows Driver Package - " + publisher + " (" + inf + ") " +
                               kClasses[random_.below(std::size(kClasses))] + "  (" + date + ")");
    key.set("DisplayVersion", date);
    key.set("Publisher", publisher);
    key.set("UninstallString", "C:\\PROGRA~1\\DIFX\\" + random_.hex(16) + "\\dpinst.exe /u " +
                                   "C:\\Windows\\System32\\DriverStore\\FileRepository\\" + inf +
                                   ".inf_amd64_" + lower(random_.hex(16)) + "\\" + inf + ".inf");
    key.set("NoModify", 1u);
    key.set("NoRepair", 1u);
    keys_.push_back(key);
    ++plan_.counts.driverPackages;
}

}  // namespace

DemoPlan planDemoPrograms(const std::vector<CatalogEntry>& catalog, unsigned seed,
                          const std::string& userName) {
    Planner planner(seed, userName);
    std::vector<const CatalogEntry*> plain;
    std::vector<const CatalogEntry*> odd;
    for (const CatalogEntry& entry : catalog) {
        if (entry.name.empty() || entry.packageId.find('.') == std::string::npos) {
            continue;
        }
        if (demo::isPlainVersion(entry.version)) {
            plain.push_back(&entry);
        } else if (std::any_of(entry.version.begin(), entry.version.end(),
                               [](char c) { return c >= '0' && c <= '9'; })) {
            odd.push_back(&entry);
        }
    }
    planner.random().shuffle(plain);
    planner.random().shuffle(odd);
    plain.resize(std::min(plain.size(), kPlainPrograms));
    odd.resize(std::min(odd.size(), kOddPrograms));
    for (const CatalogEntry* entry : plain) {
        planner.addProgram(*entry, false);
    }
    for (const CatalogEntry* entry : odd) {
        planner.addProgram(*entry, true);
    }
    for (int i = 0; i < kDriverPackages && !(plain.empty() && odd.empty()); ++i) {
        planner.addDriverPackage();
    }
    return planner.finish();
}

}  // namespace demo
