#pragma once
#include <cstdint>
#include <optional>
#include <string>

namespace platform {

// The INI calls of Windows on a file given by its Windows path; a name without a folder is a
// file of the Windows folder. Texts are ANSI bytes; the file itself keeps the encoding it has
// (a UTF-8 or UTF-16 file stays so), and a new file is ANSI. No call caches anything: a change
// by another process is seen at the next call.
class Profile {
public:
    virtual ~Profile() = default;

    // GetPrivateProfileStringA with a buffer of bufferSize characters: the value, or the
    // default when the file, section or key is missing; at most bufferSize - 1 characters.
    // Returns the number of characters copied.
    virtual std::uint32_t GetPrivateProfileStringA(const std::string& section,
                                                   const std::string& key,
                                                   const std::string& defaultValue,
                                                   std::uint32_t bufferSize, std::string* value,
                                                   const std::string& fileName) = 0;

    // WritePrivateProfileStringA: no key deletes the section, no value deletes the key. False
    // when the file can't be written.
    virtual bool WritePrivateProfileStringA(const std::string& section,
                                            const std::optional<std::string>& key,
                                            const std::optional<std::string>& value,
                                            const std::string& fileName) = 0;
};

}  // namespace platform
