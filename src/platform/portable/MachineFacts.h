#pragma once
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "platform/Environment.h"

namespace platform::portable {

// The facts of the Windows computer that a machine folder stands for, kept in its
// machine.ini (UTF-8). Texts are held as UTF-8 and converted to ANSI at the interfaces.
struct MachineFacts {
    std::string userName = "User";
    std::string computerName = "TALLOWICK-PC";
    OsVersion os;
    std::string localeAbbreviation = "ENU";  // LOCALE_SABBREVLANGNAME
    unsigned ansiCodePage = 1252;
    std::string shortDateFormat = "M/d/yyyy";
    std::string timeFormat = "h:mm:ss tt";
    int twipsPerPixelX = 15;
    int twipsPerPixelY = 15;
    std::vector<std::string> fonts = {"Arial",  "Courier New",     "MS Sans Serif", "Segoe UI",
                                      "Tahoma", "Times New Roman", "Verdana"};
    // Environment variables of the machine; TEMP, TMP and the folder variables.
    std::map<std::string, std::string> environment;
    // Windows executable (full path, as written) -> host program that stands for it.
    std::map<std::string, std::string> programs;

    // The environment a fresh machine of these facts has.
    void setStandardEnvironment();

    // Reads machine.ini. A missing file, a line that is not understood or a value that is
    // not a number leaves the default and adds a line "machine.ini:<line>: ..." to problems.
    static MachineFacts read(const std::filesystem::path& file, std::string* problems);
    bool write(const std::filesystem::path& file) const;
};

}  // namespace platform::portable
