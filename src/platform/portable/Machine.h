#pragma once
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "platform/Installation.h"
#include "platform/Platform.h"
#include "platform/portable/MachineFacts.h"

namespace platform::portable {

class ConsoleMessageBox;
class HostClock;
class PortableCodePage;
class PortableEnvironment;
class PortableFileSystem;
class PortableInstallation;
class PortableProfile;
class PortableRegistry;
class PortableServiceHost;
class PortableServiceManager;
class PortableShell;
class ProgramLauncher;
class PortableVersionInfo;
class WinPath;

// One Windows computer in a folder: machine.ini, drive_c/, registry/, run/.
class Machine {
public:
    ~Machine();

    // The folder that TALLOWICK_MACHINE names, or $XDG_DATA_HOME/tallowick/machine.
    static std::filesystem::path defaultFolder();

    // Opens an existing machine. Problems with machine.ini are reported in *problems and
    // the defaults are used; nothing when the folder is not a machine.
    static std::unique_ptr<Machine> open(const std::filesystem::path& folder,
                                         std::string* problems);
    // The machine of defaultFolder() for a program: problems go to standard error behind the
    // program's name; nothing when there is no machine.
    static std::unique_ptr<Machine> openForProgram(const char* programName);
    // Lays out a fresh machine: machine.ini, the standard folders of drive C and the
    // registry's base keys. Refuses a folder that already holds a machine.
    static std::unique_ptr<Machine> create(const std::filesystem::path& folder,
                                           const MachineFacts& facts, std::string* problems);

    // The arguments the process was started with, behind its own name (UTF-8).
    void setArguments(const std::vector<std::string>& arguments);

    Platform& platform() { return *platform_; }
    // Shows the platform's boxes through another message box from now on: the Qt one in a
    // program with windows, the console's, a recording one in tests.
    void setMessageBox(MessageBox& box);
    const MachineFacts& facts() const { return facts_; }
    const std::filesystem::path& folder() const { return folder_; }
    const WinPath& paths() const { return *paths_; }
    ProgramLauncher& launcher() { return *launcher_; }
    // The installer's side: files from the host, and the host programs in machine.ini.
    Installation& installation();

private:
    Machine(std::filesystem::path folder, MachineFacts facts);

    std::filesystem::path folder_;
    MachineFacts facts_;
    std::unique_ptr<PortableCodePage> codePage_;
    std::unique_ptr<WinPath> paths_;
    std::unique_ptr<PortableRegistry> registry_;
    std::unique_ptr<PortableVersionInfo> versionInfo_;
    std::unique_ptr<PortableFileSystem> files_;
    std::unique_ptr<PortableEnvironment> environment_;
    std::unique_ptr<ConsoleMessageBox> consoleBox_;
    // The platform's box, which shows through the one set.
    class MessageBoxSlot;
    std::unique_ptr<MessageBoxSlot> messageBox_;
    std::unique_ptr<HostClock> clock_;
    std::unique_ptr<ProgramLauncher> launcher_;
    std::unique_ptr<PortableServiceManager> services_;
    std::unique_ptr<PortableServiceHost> serviceHost_;
    std::unique_ptr<PortableProfile> profile_;
    std::unique_ptr<PortableShell> shell_;
    std::unique_ptr<PortableInstallation> installation_;
    std::unique_ptr<Platform> platform_;
};

}  // namespace platform::portable
