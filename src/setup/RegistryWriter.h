#pragma once
#include <QString>

#include <cstdint>
#include <string>

#include "platform/Platform.h"

namespace setup {

// The registry writes an installer makes, on keys given as whole paths
// ("HKEY_LOCAL_MACHINE\Software\..."). Each call answers the registry's status.
class RegistryWriter {
public:
    explicit RegistryWriter(platform::Platform& platform);

    long createKey(const QString& key);
    // Stores the text with its terminator, as installers do; the key is made when missing.
    long setString(const QString& key, const QString& name, const QString& data,
                   std::uint32_t type = platform::regtype::Sz);
    long setDword(const QString& key, const QString& name, std::uint32_t data);

    bool exists(const QString& key);
    // Deletes the key with everything below it, deepest keys first.
    long deleteTree(const QString& key);

private:
    // The root handle and the ANSI path below it; root 0 for an unknown root.
    struct KeyPath {
        platform::RegHandle root = 0;
        std::string subKey;
    };
    KeyPath split(const QString& key) const;
    long setValue(const QString& key, const QString& name, std::uint32_t type,
                  const std::string& bytes);
    long deleteTree(platform::RegHandle parent, const std::string& subKey);

    platform::Registry& registry_;
    const platform::CodePage& codePage_;
};

}  // namespace setup
