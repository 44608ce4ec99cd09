#pragma once
#include <memory>
#include <string>

#include "platform/FileSystem.h"

namespace platform::win32 {

// FindFirstChangeNotificationA on one folder for entries made, renamed, deleted, resized,
// written or given other attributes; nothing when the folder can't be watched.
std::unique_ptr<ChangeNotification> watchFolderChanges(const std::string& folder);

}  // namespace platform::win32
