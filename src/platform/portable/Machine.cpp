#include "platform/portable/Machine.h"

#include <QString>

#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <system_error>

#include "platform/portable/ConsoleMessageBox.h"
#include "platform/portable/HostClock.h"
#include "platform/portable/PortableCodePage.h"
#include "platform/portable/PortableEnvironment.h"
#include "platform/portable/PortableFileSystem.h"
#include "platform/portable/PortableInstallation.h"
#include "platform/portable/PortableProfile.h"
#include "platform/portable/PortableRegistry.h"
#include "platform/portable/PortableServiceHost.h"
#include "platform/portable/PortableServiceManager.h"
#include "platform/portable/PortableShell.h"
#include "platform/portable/PortableVersionInfo.h"
#include "platform/portable/ProgramLauncher.h"
#include "platform/portable/WinPath.h"
#include "platform/portable/WindowsFolders.h"

namespace platform::portable {

namespace fs = std::filesystem;

namespace {

constexpr const char* kFactsFile = "machine.ini";

struct BaseValue {
    RegHandle root;
    const char* key;
    const char* name;  // "" is the default value
    const char* data;
};

// What every Windows computer has that the program reads: the uninstall and Run keys of
// both hives, the services key, the shell's classes and the system's own description.
constexpr BaseValue kBaseValues[] = {
    {hkey::LocalMachine, "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall", nullptr,
     nullptr},
    {hkey::LocalMachine, "Software\\Microsoft\\Windows\\CurrentVersion\\Run", nullptr, nullptr},
    {hkey::LocalMachine, "SYSTEM\\CurrentControlSet\\Services", nullptr, nullptr},
    {hkey::LocalMachine, "Software\\Microsoft\\Windows NT\\CurrentVersion", "ProductName",
     "Windows 7 Professional"},
    {hkey::CurrentUser, "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall", nullptr,
     nullptr},
    {hkey::CurrentUser, "Software\\Microsoft\\Windows\\CurrentVersion\\Run", nullptr, nullptr},
    {hkey::ClassesRoot, "Directory", "", "File Folder"},
    {hkey::ClassesRoot, "htmlfile\\shell\\print\\command", "",
     "\"C:\\Windows\\System32\\rundll32.exe\" \"C:\\Windows\\System32\\mshtml.dll\",PrintHTML "
     "\"%1\""},
};

bool writeBaseKeys(Registry& registry) {
    for (const auto& base : kBaseValues) {
        RegHandle key = 0;
        if (registry.RegCreateKeyA(base.root, base.key, &key) != status::Success) {
            return false;
        }
        long result = status::Success;
        if (base.name != nullptr) {
            const std::string data = base.data;
            result = registry.RegSetValueExA(key, base.name, regtype::Sz,
                                             reinterpret_cast<const std::uint8_t*>(data.c_str()),
                                             std::uint32_t(data.size() + 1));
        }
        registry.RegCloseKey(key);
        if (result != status::Success) {
            return false;
        }
    }
    return true;
}

}  // namespace

class Machine::MessageBoxSlot final : public MessageBox {
public:
    explicit MessageBoxSlot(MessageBox& box) : target(&box) {}
    int show(const std::u16string& text, const std::u16string& caption,
             std::uint32_t style) override {
        return target->show(text, caption, style);
    }

    MessageBox* target;
};

Machine::Machine(fs::path folder, MachineFacts facts)
    : folder_(std::move(folder)), facts_(std::move(facts)) {
    codePage_ = std::make_unique<PortableCodePage>(facts_.ansiCodePage);
    paths_ = std::make_unique<WinPath>(folder_, *codePage_);
    registry_ = std::make_unique<PortableRegistry>(folder_ / "registry", *codePage_);
    versionInfo_ = std::make_unique<PortableVersionInfo>(*paths_, *codePage_);
    files_ = std::make_unique<PortableFileSystem>(*paths_);
    environment_ = std::make_unique<PortableEnvironment>(facts_, *paths_, *codePage_);
    consoleBox_ = std::make_unique<ConsoleMessageBox>();
    messageBox_ = std::make_unique<MessageBoxSlot>(*consoleBox_);
    clock_ = std::make_unique<HostClock>();
    launcher_ = std::make_unique<ProgramLauncher>(folder_, facts_);
    services_ =
        std::make_unique<PortableServiceManager>(folder_, *registry_, *codePage_, *launcher_);
    serviceHost_ = std::make_unique<PortableServiceHost>(folder_);
    profile_ = std::make_unique<PortableProfile>(*paths_, *codePage_);
    shell_ = std::make_unique<PortableShell>(*launcher_);
    installation_ = std::make_unique<PortableInstallation>(folder_, facts_, *paths_, *codePage_);
    platform_.reset(new Platform{*registry_, *registry_, *versionInfo_, *files_, *environment_,
                                 *codePage_, *messageBox_, *clock_, *services_, *serviceHost_,
                                 *profile_, *shell_});
}

Installation& Machine::installation() {
    return *installation_;
}

Machine::~Machine() = default;

void Machine::setMessageBox(MessageBox& box) {
    messageBox_->target = &box;
}

fs::path Machine::defaultFolder() {
    if (const char* chosen = std::getenv("TALLOWICK_MACHINE"); chosen != nullptr && *chosen != 0) {
        return chosen;
    }
    fs::path data;
    if (const char* xdg = std::getenv("XDG_DATA_HOME"); xdg != nullptr && *xdg != 0) {
        data = xdg;
    } else if (const char* home = std::getenv("HOME"); home != nullptr) {
        data = fs::path(home) / ".local" / "share";
    } else {
        data = fs::current_path();
    }
    return data / "tallowick" / "machine";
}

std::unique_ptr<Machine> Machine::open(const fs::path& folder, std::string* problems) {
    std::error_code error;
    if (!fs::is_directory(folder / "drive_c", error) || !fs::exists(folder / kFactsFile, error)) {
        if (problems != nullptr) {
            *problems +=
                folder.string() + ": not a machine folder (run 'tallowick-cli machine init')\n";
        }
        return nullptr;
    }
    MachineFacts facts = MachineFacts::read(folder / kFactsFile, problems);
    PortableCodePage probe(facts.ansiCodePage);
    if (!probe.known() && problems != nullptr) {
        *problems += "machine.ini: code page " + std::to_string(facts.ansiCodePage) +
                     " is not known here, using 1252\n";
    }
    return std::unique_ptr<Machine>(new Machine(folder, std::move(facts)));
}

std::unique_ptr<Machine> Machine::openForProgram(const char* programName) {
    std::string problems;
    auto machine = open(defaultFolder(), &problems);
    std::istringstream lines(problems);
    for (std::string line; std::getline(lines, line);) {
        std::fprintf(stderr, "%s: %s\n", programName, line.c_str());
    }
    return machine;
}

std::unique_ptr<Machine> Machine::create(const fs::path& folder, const MachineFacts& facts,
                                         std::string* problems) {
    const auto fail = [problems](const std::string& text) {
        if (problems != nullptr) {
            *problems += text + "\n";
        }
        return std::unique_ptr<Machine>();
    };
    std::error_code error;
    if (fs::exists(folder / kFactsFile, error)) {
        return fail(folder.string() + ": a machine is already there");
    }
    for (const char* sub : {"drive_c", "registry", "run"}) {
        fs::create_directories(folder / sub, error);
        if (error) {
            return fail((folder / sub).string() + ": " + error.message());
        }
    }
    MachineFacts complete = facts;
    if (complete.environment.empty()) {
        complete.setStandardEnvironment();
    }
    if (!complete.write(folder / kFactsFile)) {
        return fail((folder / kFactsFile).string() + ": cannot be written");
    }
    std::unique_ptr<Machine> machine(new Machine(folder, std::move(complete)));
    for (const auto& path : standardFolders(machine->facts_.userName)) {
        if (!machine->paths_->createFolders(
                machine->codePage_->toAnsi(QString::fromStdString(path).toStdU16String()))) {
            return fail(path + ": cannot be made");
        }
    }
    if (!writeBaseKeys(*machine->registry_)) {
        return fail((folder / "registry").string() + ": the base keys cannot be written");
    }
    return machine;
}

void Machine::setArguments(const std::vector<std::string>& arguments) {
    environment_->setArguments(arguments);
}

}  // namespace platform::portable
