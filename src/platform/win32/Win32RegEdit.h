#pragma once
#include "platform/RegEdit.h"

namespace platform::win32 {

// Imports and exports .reg files with the reg tool of Windows, in the 32-bit view of the
// registry that Win32Registry uses; regedit itself always works in the view of its own
// bitness.
class Win32RegEdit final : public RegEdit {
public:
    Result importFile(const std::string& hostFile) override;
    Result exportKey(const std::string& keyPath, std::string* text) override;
};

}  // namespace platform::win32
