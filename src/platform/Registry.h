#pragma once
#include <cstdint>
#include <string>

#include "platform/WinTypes.h"

namespace platform {

// The registry calls the program makes, with the meaning the "A" calls have on Windows:
// names and string data cross as bytes in the machine's ANSI code page, names compare
// without regard to case, a read into a buffer that is too small answers
// status::MoreData and reports the size it needs.
class Registry {
public:
    virtual ~Registry() = default;

    virtual long RegOpenKeyExA(RegHandle key, const std::string& subKey, std::uint32_t options,
                               std::uint32_t samDesired, RegHandle* result) = 0;
    virtual long RegOpenKeyA(RegHandle key, const std::string& subKey, RegHandle* result) = 0;
    virtual long RegCreateKeyA(RegHandle key, const std::string& subKey, RegHandle* result) = 0;
    virtual long RegCloseKey(RegHandle key) = 0;

    // An empty valueName addresses the key's default value. type, data and dataSize may be
    // null, as with the Windows call.
    virtual long RegQueryValueExA(RegHandle key, const std::string& valueName, std::uint32_t* type,
                                  std::uint8_t* data, std::uint32_t* dataSize) = 0;
    // A string type's dataSize that leaves out the terminator gets it counted in when the byte
    // after the data is NUL, as on Windows NT; that byte is read.
    virtual long RegSetValueExA(RegHandle key, const std::string& valueName, std::uint32_t type,
                                const std::uint8_t* data, std::uint32_t dataSize) = 0;
    virtual long RegDeleteValueA(RegHandle key, const std::string& valueName) = 0;
    // Deletes a subkey that has no subkeys of its own; one that has answers
    // status::AccessDenied, as on Windows NT.
    virtual long RegDeleteKeyA(RegHandle key, const std::string& subKey) = 0;

    // nameSize: in, the buffer's size in characters with room for the terminator;
    // out, the name's length without it.
    virtual long RegEnumKeyExA(RegHandle key, std::uint32_t index, char* name,
                               std::uint32_t* nameSize) = 0;
};

}  // namespace platform
