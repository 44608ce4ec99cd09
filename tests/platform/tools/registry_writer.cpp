// registry_writer <registryFolder> <keyPath> <prefix> <count>
// Sets <count> REG_SZ values named <prefix><i> to "value <i>" below
// HKEY_LOCAL_MACHINE\<keyPath>, one RegSetValueExA each, as a second process writing into the
// same store does. Exit status 0, 1 on the first error, 2 for wrong arguments.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "platform/portable/PortableCodePage.h"
#include "platform/portable/PortableRegistry.h"

int main(int argc, char** argv) {
    using namespace platform;
    if (argc != 5) {
        return 2;
    }
    const portable::PortableCodePage codePage(1252);
    portable::PortableRegistry registry(argv[1], codePage);
    RegHandle key = 0;
    long result = registry.RegCreateKeyA(hkey::LocalMachine, argv[2], &key);
    for (int i = 0; i < std::atoi(argv[4]) && result == status::Success; ++i) {
        const std::string data = "value " + std::to_string(i);
        result = registry.RegSetValueExA(key, argv[3] + std::to_string(i), regtype::Sz,
                                         reinterpret_cast<const std::uint8_t*>(data.c_str()),
                                         std::uint32_t(data.size() + 1));
    }
    if (result != status::Success) {
        std::fprintf(stderr, "registry_writer: error %ld\n", result);
    }
    return result == status::Success ? 0 : 1;
}
