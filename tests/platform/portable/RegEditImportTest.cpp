// The portable regedit's own policy, stricter than regedit, which imports the lines it can
// read: a file with a malformed line is refused whole, and the message says where, so that a
// slip in a hand-written machine file is found instead of half imported.
#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "support/TestMachine.h"

namespace {

using namespace platform;

const std::string kKey = "Software\\Tallowick\\Malformed";

// The value's string, or "<error N>".
std::string value(Registry& registry, const std::string& name) {
    RegHandle key = 0;
    long result = registry.RegOpenKeyExA(hkey::CurrentUser, kKey, 0, access::KeyRead, &key);
    char data[64] = {};
    std::uint32_t size = sizeof data;
    if (result == status::Success) {
        result = registry.RegQueryValueExA(key, name, nullptr,
                                           reinterpret_cast<std::uint8_t*>(data), &size);
        registry.RegCloseKey(key);
    }
    return result == status::Success ? std::string(data) : "<error " + std::to_string(result) + ">";
}

TEST(PortableRegEdit, AMalformedLineRefusesTheWholeFileWithItsLine) {
    testing_support::TestMachine machine;
    const std::string good =
        "Windows Registry Editor Version 5.00\r\n\r\n"
        "[HKEY_CURRENT_USER\\" +
        kKey + "]\r\n\"ok\"=\"1\"\r\n";
    const std::pair<std::string, int> cases[] = {
        // the text and the line it is refused at
        {"REGEDIT5\r\n\r\n[HKEY_CURRENT_USER\\" + kKey + "]\r\n", 1},
        {"", 1},
        {good + "\"no equals\" \"x\"\r\n", 5},
        {good + "\"unterminated name=1\r\n", 5},
        {good + "\"open\"=\"string\r\n", 5},
        {good + "\"after\"=\"string\" junk\r\n", 5},
        {good + "\"bad\"=hex:01,zz\r\n", 5},
        {good + "\"three digits\"=hex:012\r\n", 5},
        {good + "\"bad\"=hex:01,\\\r\n  02,0g\r\n", 6},
        {good + "\"open end\"=hex:01,\\\r\n", 5},
        {good + "\"bad\"=dword:123456789\r\n", 5},
        {good + "\"bad\"=dword:\r\n", 5},
        {good + "\"bad\"=text\r\n", 5},
        {good + "\r\n[HKEY_CURRENT_USER\\" + kKey + "\\Other\r\n", 6},
    };
    for (const auto& [text, line] : cases) {
        // "<file>:<line>: <what>"
        const std::string message = machine.importReg(text);
        EXPECT_NE(message.find("import.reg:" + std::to_string(line) + ": "), std::string::npos)
            << message;
        EXPECT_EQ(value(machine.platform().registry, "ok"), "<error 2>") << message;
    }
    ASSERT_EQ(machine.importReg(good), "");
    EXPECT_EQ(value(machine.platform().registry, "ok"), "1");
}

}  // namespace
