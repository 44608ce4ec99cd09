#pragma once
#include "platform/Clock.h"
#include "platform/CodePage.h"
#include "platform/Environment.h"
#include "platform/FileSystem.h"
#include "platform/MessageBox.h"
#include "platform/Profile.h"
#include "platform/RegEdit.h"
#include "platform/Registry.h"
#include "platform/ServiceManager.h"
#include "platform/Shell.h"
#include "platform/VersionInfo.h"

namespace platform {

// The operating system as the logic sees it. A backend owns the objects; code receives
// this bundle by reference.
struct Platform {
    Registry& registry;
    RegEdit& regEdit;
    VersionInfo& versionInfo;
    FileSystem& files;
    Environment& environment;
    CodePage& codePage;
    MessageBox& messageBox;
    Clock& clock;
    ServiceManager& services;
    ServiceHost& serviceHost;
    Profile& profile;
    Shell& shell;
};

}  // namespace platform
