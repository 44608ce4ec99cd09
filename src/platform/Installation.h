#pragma once
#include <string>

namespace platform {

// What only an installer does to a computer: it brings the product's files from the host into
// the computer and says which host program runs for each of the product's executables. On
// Windows the host is the computer: files are copied and executables run as they are. Windows
// paths are ANSI, host paths UTF-8.
class Installation {
public:
    enum class Mapped { Yes, NoHostProgram, NotWritten };

    virtual ~Installation() = default;

    // Copies every file below hostFolder into winFolder, sub-folders kept and files there
    // replaced; the number of files copied, or -1 with the reason in *problem. A missing host
    // folder copies nothing.
    virtual long copyFolderIn(const std::string& hostFolder, const std::string& winFolder,
                              std::string* problem) = 0;
    // Has hostProgram run for winProgram from now on, replacing an earlier mapping of it.
    virtual Mapped mapProgram(const std::string& winProgram, const std::string& hostProgram) = 0;
    // Forgets the mapping of every program below winFolder: how many there were, or -1 when
    // the change can't be kept.
    virtual long unmapProgramsBelow(const std::string& winFolder) = 0;
    // True when something runs for winProgram.
    virtual bool runs(const std::string& winProgram) const = 0;
};

}  // namespace platform
