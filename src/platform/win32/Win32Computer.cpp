#include "platform/win32/Win32Computer.h"

#include "platform/win32/Win32Clock.h"
#include "platform/win32/Win32CodePage.h"
#include "platform/win32/Win32Environment.h"
#include "platform/win32/Win32FileSystem.h"
#include "platform/win32/Win32Installation.h"
#include "platform/win32/Win32MessageBox.h"
#include "platform/win32/Win32Profile.h"
#include "platform/win32/Win32RegEdit.h"
#include "platform/win32/Win32Registry.h"
#include "platform/win32/Win32ServiceHost.h"
#include "platform/win32/Win32ServiceManager.h"
#include "platform/win32/Win32Shell.h"
#include "platform/win32/Win32VersionInfo.h"

namespace platform::win32 {

Win32Computer::Win32Computer()
    : registry_(std::make_unique<Win32Registry>()),
      regEdit_(std::make_unique<Win32RegEdit>()),
      versionInfo_(std::make_unique<Win32VersionInfo>()),
      files_(std::make_unique<Win32FileSystem>()),
      environment_(std::make_unique<Win32Environment>()),
      codePage_(std::make_unique<Win32CodePage>()),
      messageBox_(std::make_unique<Win32MessageBox>()),
      clock_(std::make_unique<Win32Clock>()),
      services_(std::make_unique<Win32ServiceManager>()),
      serviceHost_(std::make_unique<Win32ServiceHost>()),
      profile_(std::make_unique<Win32Profile>()),
      shell_(std::make_unique<Win32Shell>()),
      installation_(std::make_unique<Win32Installation>()),
      platform_(new Platform{*registry_, *regEdit_, *versionInfo_, *files_, *environment_,
                             *codePage_, *messageBox_, *clock_, *services_, *serviceHost_,
                             *profile_, *shell_}) {}

Win32Computer::~Win32Computer() = default;

Installation& Win32Computer::installation() {
    return *installation_;
}

}  // namespace platform::win32
