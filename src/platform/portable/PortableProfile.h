#pragma once
#include "platform/CodePage.h"
#include "platform/Profile.h"

namespace platform::portable {

class WinPath;

// The INI calls over the machine's files. Each call reads the file anew and a write
// replaces it whole and atomically, so another process sees either the old file or the
// new one. A file with a UTF-8 or UTF-16 byte-order mark keeps that encoding; any other
// file is ANSI in the machine's code page.
class PortableProfile final : public Profile {
public:
    PortableProfile(const WinPath& paths, const CodePage& codePage)
        : paths_(paths), codePage_(codePage) {}

    std::uint32_t GetPrivateProfileStringA(const std::string& section, const std::string& key,
                                           const std::string& defaultValue,
                                           std::uint32_t bufferSize, std::string* value,
                                           const std::string& fileName) override;
    bool WritePrivateProfileStringA(const std::string& section,
                                    const std::optional<std::string>& key,
                                    const std::optional<std::string>& value,
                                    const std::string& fileName) override;

private:
    const WinPath& paths_;
    const CodePage& codePage_;
};

}  // namespace platform::portable
