#include "setup/RegistryWriter.h"

#include "core/AnsiText.h"
#include "state/modRegistry.h"

namespace setup {

using namespace platform;

RegistryWriter::RegistryWriter(Platform& platform)
    : registry_(platform.registry), codePage_(platform.codePage) {}

RegistryWriter::KeyPath RegistryWriter::split(const QString& key) const {
    const qsizetype separator = key.indexOf('\\');
    const QString root = separator < 0 ? key : key.left(separator);
    const QString below = separator < 0 ? QString() : key.mid(separator + 1);
    return {state::modRegistry::GetMainKeyHandle(root), core::toAnsi(codePage_, below)};
}

long RegistryWriter::createKey(const QString& key) {
    const KeyPath path = split(key);
    if (path.root == 0) {
        return status::InvalidHandle;
    }
    RegHandle handle = 0;
    const long result = registry_.RegCreateKeyA(path.root, path.subKey, &handle);
    if (result == status::Success) {
        registry_.RegCloseKey(handle);
    }
    return result;
}

long RegistryWriter::setValue(const QString& key, const QString& name, std::uint32_t type,
                              const std::string& bytes) {
    const KeyPath path = split(key);
    if (path.root == 0) {
        return status::InvalidHandle;
    }
    RegHandle handle = 0;
    long result = registry_.RegCreateKeyA(path.root, path.subKey, &handle);
    if (result != status::Success) {
        return result;
    }
    result = registry_.RegSetValueExA(handle, core::toAnsi(codePage_, name), type,
                                      reinterpret_cast<const std::uint8_t*>(bytes.data()),
                                      std::uint32_t(bytes.size()));
    registry_.RegCloseKey(handle);
    return result;
}

long RegistryWriter::setString(const QString& key, const QString& name, const QString& data,
                               std::uint32_t type) {
    return setValue(key, name, type, core::toAnsi(codePage_, data) + '\0');
}

long RegistryWriter::setDword(const QString& key, const QString& name, std::uint32_t data) {
    const std::string bytes{char(data & 0xff), char(data >> 8 & 0xff), char(data >> 16 & 0xff),
                            char(data >> 24 & 0xff)};
    return setValue(key, name, regtype::Dword, bytes);
}

bool RegistryWriter::exists(const QString& key) {
    const KeyPath path = split(key);
    RegHandle handle = 0;
    if (path.root == 0 || registry_.RegOpenKeyExA(path.root, path.subKey, 0, access::KeyRead,
                                                  &handle) != status::Success) {
        return false;
    }
    registry_.RegCloseKey(handle);
    return true;
}

long RegistryWriter::deleteTree(const QString& key) {
    const KeyPath path = split(key);
    return path.root == 0 ? status::InvalidHandle : deleteTree(path.root, path.subKey);
}

long RegistryWriter::deleteTree(RegHandle parent, const std::string& subKey) {
    RegHandle key = 0;
    long result = registry_.RegOpenKeyExA(parent, subKey, 0, access::KeyRead, &key);
    if (result != status::Success) {
        return result;
    }
    // Always the first subkey: each one deleted moves the rest up.
    for (;;) {
        char name[256];
        std::uint32_t size = sizeof name;
        if (registry_.RegEnumKeyExA(key, 0, name, &size) != status::Success) {
            break;
        }
        result = deleteTree(key, std::string(name, size));
        if (result != status::Success) {
            registry_.RegCloseKey(key);
            return result;
        }
    }
    registry_.RegCloseKey(key);
    return registry_.RegDeleteKeyA(parent, subKey);
}

}  // namespace setup
