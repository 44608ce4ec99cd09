#pragma once
#include <string>

namespace platform {

// What regedit does with .reg files: import one into the registry, export a key with
// everything below it.
class RegEdit {
public:
    virtual ~RegEdit() = default;

    struct Result {
        bool ok = false;
        std::string message;  // on failure: "<file>:<line>: <what>", or what else went wrong
    };

    // hostFile is a file of the computer the program runs on. A file that is no .reg file
    // imports nothing. With a malformed line, the portable machine imports nothing and names
    // the line; Windows' own tool imports the lines it can read.
    virtual Result importFile(const std::string& hostFile) = 0;

    // The key and its subkeys as regedit writes them, as UTF-8 text with CRLF line ends.
    // keyPath is a full path such as "HKEY_LOCAL_MACHINE\Software".
    virtual Result exportKey(const std::string& keyPath, std::string* text) = 0;
};

}  // namespace platform
