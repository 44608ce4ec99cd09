#pragma once
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/CodePage.h"
#include "platform/RegEdit.h"
#include "platform/Registry.h"
#include "platform/portable/RegistryStore.h"

namespace platform::portable {

// The registry calls of the machine on its store files under registry/.
//
// Handles come from a table; the predefined roots are valid without opening. A handle holds
// the path of its key, so a key that another process deletes while it is open answers
// ERROR_KEY_DELETED. Key paths are split as splitKeyPath says. A key opened with an access
// mask refuses the operations the mask does not grant (ERROR_ACCESS_DENIED), as on Windows.
class PortableRegistry final : public Registry, public RegEdit {
public:
    PortableRegistry(std::filesystem::path registryFolder, const CodePage& codePage);
    ~PortableRegistry() override;

    long RegOpenKeyExA(RegHandle key, const std::string& subKey, std::uint32_t options,
                       std::uint32_t samDesired, RegHandle* result) override;
    long RegOpenKeyA(RegHandle key, const std::string& subKey, RegHandle* result) override;
    long RegCreateKeyA(RegHandle key, const std::string& subKey, RegHandle* result) override;
    long RegCloseKey(RegHandle key) override;
    long RegQueryValueExA(RegHandle key, const std::string& valueName, std::uint32_t* type,
                          std::uint8_t* data, std::uint32_t* dataSize) override;
    long RegSetValueExA(RegHandle key, const std::string& valueName, std::uint32_t type,
                        const std::uint8_t* data, std::uint32_t dataSize) override;
    long RegDeleteValueA(RegHandle key, const std::string& valueName) override;
    long RegDeleteKeyA(RegHandle key, const std::string& subKey) override;
    long RegEnumKeyExA(RegHandle key, std::uint32_t index, char* name,
                       std::uint32_t* nameSize) override;

    Result importFile(const std::string& hostFile) override;
    Result exportKey(const std::string& keyPath, std::string* text) override;

    // "<file>:<line>: <what>" of the last store file that did not parse; empty when none did.
    const std::string& lastProblem() const { return store_.lastProblem(); }

private:
    struct OpenKey {
        RegRoot root = RegRoot::LocalMachine;
        std::vector<std::u16string> path;  // folded names below the root
        std::uint32_t access = 0;
    };

    bool lookup(RegHandle handle, OpenKey* key) const;
    // The key behind a handle as the store holds it now; null with the status when there is
    // none, or when the handle lacks the access.
    const RegKey* resolve(RegHandle handle, std::uint32_t access, OpenKey* open, long* status,
                          RegistryStore::Freshness freshness = RegistryStore::Freshness::Recent);
    long openKey(RegHandle parent, const std::string& subKey, std::uint32_t access, bool create,
                 RegHandle* result);
    // Runs change on the key of an open handle with its root's file locked.
    long updateKey(const OpenKey& open, const std::function<long(RegKey&, bool*)>& change);
    std::u16string wide(const std::string& ansi) const;

    const CodePage& codePage_;
    RegistryStore store_;
    std::unordered_map<RegHandle, OpenKey> handles_;
    RegHandle nextHandle_ = 0x100;
};

}  // namespace platform::portable
