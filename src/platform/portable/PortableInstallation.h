#pragma once
#include <filesystem>

#include "platform/Installation.h"
#include "platform/portable/MachineFacts.h"
#include "platform/portable/WinPath.h"

namespace platform::portable {

// Installing on the portable machine: files come from the host into drive C, and machine.ini's
// [Programs] names the host program of each executable. A mapping takes effect at once for the
// machine's launcher, which reads the same facts.
class PortableInstallation final : public Installation {
public:
    PortableInstallation(std::filesystem::path machineFolder, MachineFacts& facts,
                         const WinPath& paths, const CodePage& codePage)
        : machineFolder_(std::move(machineFolder)),
          facts_(facts),
          paths_(paths),
          codePage_(codePage) {}

    long copyFolderIn(const std::string& hostFolder, const std::string& winFolder,
                      std::string* problem) override;
    Mapped mapProgram(const std::string& winProgram, const std::string& hostProgram) override;
    long unmapProgramsBelow(const std::string& winFolder) override;
    bool runs(const std::string& winProgram) const override;

private:
    // Drops the mappings of winPath itself, or with `below` of every entry under it; how many.
    int removeMappings(MachineFacts& facts, const WinPath::Parsed& path, bool below) const;
    bool keep(MachineFacts facts);

    std::filesystem::path machineFolder_;
    MachineFacts& facts_;
    const WinPath& paths_;
    const CodePage& codePage_;
};

}  // namespace platform::portable
