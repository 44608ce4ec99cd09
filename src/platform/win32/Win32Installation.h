#pragma once
#include "platform/Installation.h"

namespace platform::win32 {

// On Windows the host is the computer: the files are copied with the file system's own calls
// and every executable runs as it is, so there is nothing to map.
class Win32Installation final : public Installation {
public:
    long copyFolderIn(const std::string& hostFolder, const std::string& winFolder,
                      std::string* problem) override;
    Mapped mapProgram(const std::string& winProgram, const std::string& hostProgram) override;
    long unmapProgramsBelow(const std::string&) override { return 0; }
    bool runs(const std::string& winProgram) const override;
};

}  // namespace platform::win32
