// registry_writer <registryFolder> <keyPath> <prefix> <count>
// Sets <count> REG_SZ values named <prefix><i> below HKEY_LOCAL_MACHINE\<keyPath>, one
// RegSetValueExA each, as a second process writing into the same store does.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "platform/portable/PortableCodePage.h"
#include "platform/portable/PortableRegistry.h"

int main(int argc, char** argv) {
    using namespace platform;
    if (argc != 5) {
        std::fprintf(stderr,
                     "usage: registry_writer <registryFolder> <keyPath> <prefix> <count>\n");
        return 2;
    }
    const portable::PortableCodePage codePage(1252);
    portable::PortableRegistry registry(argv[1], codePage);
    RegHandle key = 0;
    long result = registry.RegCreateKeyA(hkey::LocalMachine, argv[2], &key);
    const int count = std::atoi(argv[4]);
    for (int i = 0; i < count && result == status::Success; ++i) {
        const std::string name = argv[3] + std::to_string(i);
        const std::string data = "value " + std::to_string(i);
        result = registry.RegSetValueExA(key, name, regtype::Sz,
                                         reinterpret_cast<const std::uint8_t*>(data.c_str()),
                                         std::uint32_t(data.size() + 1));
    }
    if (result != status::Success) {
        std::fprintf(stderr, "registry_writer: error %ld\n", result);
        return 1;
    }
    registry.RegCloseKey(key);
    return 0;
}
