#pragma once
#include <memory>

#include "platform/Installation.h"
#include "platform/Platform.h"

namespace platform::win32 {

class Win32Clock;
class Win32CodePage;
class Win32Environment;
class Win32FileSystem;
class Win32Installation;
class Win32MessageBox;
class Win32Profile;
class Win32RegEdit;
class Win32Registry;
class Win32ServiceHost;
class Win32ServiceManager;
class Win32Shell;
class Win32VersionInfo;

// The Windows computer the process runs on, through the platform interfaces. Each object
// keeps its own handles, so two computers in one process stand for two processes.
class Win32Computer {
public:
    Win32Computer();
    Win32Computer(const Win32Computer&) = delete;
    Win32Computer& operator=(const Win32Computer&) = delete;
    ~Win32Computer();

    Platform& platform() { return *platform_; }
    Installation& installation();

private:
    std::unique_ptr<Win32Registry> registry_;
    std::unique_ptr<Win32RegEdit> regEdit_;
    std::unique_ptr<Win32VersionInfo> versionInfo_;
    std::unique_ptr<Win32FileSystem> files_;
    std::unique_ptr<Win32Environment> environment_;
    std::unique_ptr<Win32CodePage> codePage_;
    std::unique_ptr<Win32MessageBox> messageBox_;
    std::unique_ptr<Win32Clock> clock_;
    std::unique_ptr<Win32ServiceManager> services_;
    std::unique_ptr<Win32ServiceHost> serviceHost_;
    std::unique_ptr<Win32Profile> profile_;
    std::unique_ptr<Win32Shell> shell_;
    std::unique_ptr<Win32Installation> installation_;
    std::unique_ptr<Platform> platform_;
};

}  // namespace platform::win32
