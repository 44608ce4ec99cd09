// The registry's "A" calls and regedit's .reg files as Windows has them. Only the Registry and
// RegEdit interfaces are used, so that any backend can be held to these rules.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "support/TestMachine.h"

namespace {

using namespace platform;
using testing_support::readTestData;
using testing_support::TestMachine;

constexpr char kUninstall[] = "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall";

const std::uint8_t* bytesOf(const std::string& text) {
    return reinterpret_cast<const std::uint8_t*>(text.data());
}

// A literal with its terminator, as a string value stored with one reads.
template <size_t N>
std::string sz(const char (&text)[N]) {
    return std::string(text, N);
}

struct Read {
    long status = -1;
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    std::string data;  // the buffer as the call left it, bufferSize bytes
};

Read query(Registry& registry, RegHandle key, const std::string& name,
           std::uint32_t bufferSize = 1024) {
    Read read;
    read.data.assign(bufferSize, 'Z');
    read.size = bufferSize;
    read.status = registry.RegQueryValueExA(
        key, name, &read.type, reinterpret_cast<std::uint8_t*>(read.data.data()), &read.size);
    return read;
}

// The value's bytes as a successful read of a large buffer gives them.
std::string valueAt(Registry& registry, RegHandle root, const std::string& keyPath,
                    const std::string& name, std::uint32_t* type = nullptr) {
    RegHandle key = 0;
    if (registry.RegOpenKeyExA(root, keyPath, 0, access::KeyRead, &key) != status::Success) {
        return "<no key>";
    }
    const Read read = query(registry, key, name, 4096);
    registry.RegCloseKey(key);
    if (type != nullptr) {
        *type = read.type;
    }
    return read.status == status::Success ? read.data.substr(0, read.size)
                                          : "<error " + std::to_string(read.status) + ">";
}

std::vector<std::string> subkeyNames(Registry& registry, RegHandle key, long* endStatus) {
    std::vector<std::string> names;
    for (std::uint32_t index = 0;; ++index) {
        char name[256];
        std::uint32_t size = sizeof name;
        const long result = registry.RegEnumKeyExA(key, index, name, &size);
        if (result != status::Success) {
            *endStatus = result;
            return names;
        }
        names.emplace_back(name, size);
    }
}

// UTF-16LE with BOM, as regedit writes its files, to UTF-8.
std::string utf8FromRegFile(const std::string& bytes) {
    std::string out;
    for (size_t i = 2; i + 1 < bytes.size(); i += 2) {
        std::uint32_t c = std::uint8_t(bytes[i]) | (std::uint8_t(bytes[i + 1]) << 8);
        if (c >= 0xd800 && c < 0xdc00 && i + 3 < bytes.size()) {
            const std::uint32_t low =
                std::uint8_t(bytes[i + 2]) | (std::uint8_t(bytes[i + 3]) << 8);
            c = 0x10000 + ((c - 0xd800) << 10) + (low - 0xdc00);
            i += 2;
        }
        if (c < 0x80) {
            out += char(c);
        } else if (c < 0x800) {
            out += char(0xc0 | (c >> 6));
            out += char(0x80 | (c & 0x3f));
        } else if (c < 0x10000) {
            out += char(0xe0 | (c >> 12));
            out += char(0x80 | ((c >> 6) & 0x3f));
            out += char(0x80 | (c & 0x3f));
        } else {
            out += char(0xf0 | (c >> 18));
            out += char(0x80 | ((c >> 12) & 0x3f));
            out += char(0x80 | ((c >> 6) & 0x3f));
            out += char(0x80 | (c & 0x3f));
        }
    }
    return out;
}

const std::string kHeader = "Windows Registry Editor Version 5.00\r\n";

TEST(RegistryConformance, RegeditExportImportsValueForValueInEveryType) {
    TestMachine m;
    Registry& registry = m.platform().registry;
    ASSERT_EQ(m.importReg(readTestData("uninstall-sample.reg")), "");
    const std::string zip = std::string(kUninstall) + "\\7-Zip";
    const std::string types = std::string(kUninstall) + "\\Types";
    std::uint32_t type = 0;

    EXPECT_EQ(valueAt(registry, hkey::LocalMachine, zip, "DisplayIcon", &type),
              sz("C:\\Program Files\\7-Zip\\7zFM.exe"));
    EXPECT_EQ(type, regtype::Sz);
    EXPECT_EQ(valueAt(registry, hkey::LocalMachine, zip, "InstallLocation"),
              sz("C:\\Program Files\\7-Zip\\"));
    EXPECT_EQ(valueAt(registry, hkey::LocalMachine, zip, "UninstallString"),
              sz("\"C:\\Program Files\\7-Zip\\Uninstall.exe\""));
    EXPECT_EQ(valueAt(registry, hkey::LocalMachine, zip, "NoModify", &type),
              std::string("\1\0\0\0", 4));
    EXPECT_EQ(type, regtype::Dword);

    EXPECT_EQ(valueAt(registry, hkey::LocalMachine, types, "", &type), sz("default value"));
    EXPECT_EQ(valueAt(registry, hkey::LocalMachine, types, "Bin", &type),
              std::string("\x01\x02\xff\x00", 4));
    EXPECT_EQ(type, regtype::Binary);
    // Reading a REG_EXPAND_SZ with RegQueryValueExA does not expand it.
    EXPECT_EQ(valueAt(registry, hkey::LocalMachine, types, "Expand", &type),
              sz("%ProgramFiles%\\App"));
    EXPECT_EQ(type, regtype::ExpandSz);
    EXPECT_EQ(valueAt(registry, hkey::LocalMachine, types, "Long"), std::string(300, 'x') + '\0');
    EXPECT_EQ(valueAt(registry, hkey::LocalMachine, types, "Multi", &type), sz("one\0two\0"));
    EXPECT_EQ(type, regtype::MultiSz);
    EXPECT_EQ(valueAt(registry, hkey::LocalMachine, types, "Q", &type),
              "\x88\x77\x66\x55\x44\x33\x22\x11");
    EXPECT_EQ(type, regtype::Qword);
    EXPECT_EQ(valueAt(registry, hkey::LocalMachine, types, "Quoted"), sz("say \"hi\" \\ back"));
    // Code page 1252 has the Latin letters and the euro sign; the rest becomes "?".
    EXPECT_EQ(valueAt(registry, hkey::LocalMachine, types, "Unicode"), sz("Gr\xfc\xdf"
                                                                          "e \x80 ???"));
}

// regedit writes each key as a blank line and [path], values in the order they were set,
// strings escaped, dword:%08x, hex wrapped before column 80 with "\" and two blanks.
TEST(RegistryConformance, ExportWritesEachKeyAsRegeditDoes) {
    TestMachine m;
    ASSERT_EQ(m.importReg(readTestData("uninstall-sample.reg")), "");
    const std::string sample = utf8FromRegFile(readTestData("uninstall-sample.reg"));
    const std::string begin = "\r\n[HKEY_LOCAL_MACHINE\\";
    size_t blocks = 0;
    for (size_t start = sample.find(begin); start != std::string::npos; ++blocks) {
        const size_t end = sample.find(begin, start + 1);
        const std::string block = sample.substr(
            start, end == std::string::npos ? sample.size() - start - 2 : end - start);
        const size_t close = block.find(']');
        const std::string keyPath = block.substr(3, close - 3);
        if (keyPath.ends_with("Uninstall")) {  // a real machine has more below it
            start = end;
            continue;
        }
        std::string exported;
        const auto result = m.platform().regEdit.exportKey(keyPath, &exported);
        ASSERT_TRUE(result.ok) << result.message;
        EXPECT_EQ(exported, kHeader + block + "\r\n") << keyPath;
        start = end;
    }
    EXPECT_EQ(blocks, 4u);
}

TEST(RegistryConformance, ExportAndReimportGiveTheSameValues) {
    TestMachine first;
    ASSERT_EQ(first.importReg(readTestData("uninstall-sample.reg")), "");
    Registry& registry = first.platform().registry;
    RegHandle key = 0;
    ASSERT_EQ(registry.RegCreateKeyA(hkey::LocalMachine, std::string(kUninstall) + "\\Types", &key),
              status::Success);
    // What the program writes: strings without their terminator, odd names, an empty binary.
    const std::string noTerminator = "no terminator";
    registry.RegSetValueExA(key, "NoTerm", regtype::Sz, bytesOf(noTerminator),
                            std::uint32_t(noTerminator.size()));
    const std::string lines = "two\r\nlines \"quoted\" \\";
    registry.RegSetValueExA(key, "name with \"quotes\" and \\", regtype::Sz, bytesOf(lines),
                            std::uint32_t(lines.size() + 1));
    registry.RegSetValueExA(key, "Empty", regtype::Binary, nullptr, 0);
    registry.RegSetValueExA(key, "Short dword", regtype::Dword, bytesOf("ab"), 2);
    registry.RegCloseKey(key);

    std::string exported;
    ASSERT_TRUE(first.platform()
                    .regEdit.exportKey(std::string("HKEY_LOCAL_MACHINE\\") + kUninstall, &exported)
                    .ok);
    TestMachine second;
    ASSERT_EQ(second.importReg(exported), "");
    for (const char* sub : {"7-Zip", "Types", "{90160000-007E-0000-1000-0000000FF1CE}"}) {
        const std::string path = std::string(kUninstall) + "\\" + sub;
        for (const char* name :
             {"", "DisplayName", "DisplayVersion", "DisplayIcon", "UninstallString", "NoModify",
              "SystemComponent", "Bin", "Expand", "Long", "Multi", "Q", "Quoted", "Unicode",
              "NoTerm", "name with \"quotes\" and \\", "Empty", "Short dword"}) {
            std::uint32_t firstType = 0;
            std::uint32_t secondType = 0;
            EXPECT_EQ(
                valueAt(first.platform().registry, hkey::LocalMachine, path, name, &firstType),
                valueAt(second.platform().registry, hkey::LocalMachine, path, name, &secondType))
                << sub << " " << name;
            EXPECT_EQ(firstType, secondType) << sub << " " << name;
        }
    }
    EXPECT_EQ(valueAt(second.platform().registry, hkey::LocalMachine,
                      std::string(kUninstall) + "\\Types", "NoTerm"),
              noTerminator);
}

TEST(RegistryConformance, KeyAndValueNamesCompareWithoutRegardToCaseAndKeepTheirFirstCase) {
    TestMachine m;
    Registry& registry = m.platform().registry;
    RegHandle key = 0;
    ASSERT_EQ(registry.RegCreateKeyA(hkey::CurrentUser, "Software\\CaseTest", &key),
              status::Success);
    registry.RegSetValueExA(key, "Language", regtype::Sz, bytesOf("de"), 3);
    registry.RegSetValueExA(key, "LANGUAGE", regtype::Sz, bytesOf("fr"), 3);
    registry.RegCloseKey(key);
    ASSERT_EQ(registry.RegCreateKeyA(hkey::CurrentUser, "SOFTWARE\\CASETEST", &key),
              status::Success);
    registry.RegCloseKey(key);

    EXPECT_EQ(valueAt(registry, hkey::CurrentUser, "software\\casetest", "language"), sz("fr"));
    RegHandle software = 0;
    ASSERT_EQ(registry.RegOpenKeyExA(hkey::CurrentUser, "sOfTwArE", 0, access::KeyRead, &software),
              status::Success);
    long end = 0;
    const auto names = subkeyNames(registry, software, &end);
    registry.RegCloseKey(software);
    EXPECT_NE(std::find(names.begin(), names.end(), "CaseTest"), names.end());
    EXPECT_EQ(std::find(names.begin(), names.end(), "CASETEST"), names.end());
    std::string exported;
    ASSERT_TRUE(
        m.platform().regEdit.exportKey("HKEY_CURRENT_USER\\software\\casetest", &exported).ok);
    EXPECT_EQ(exported, kHeader + "\r\n[HKEY_CURRENT_USER\\Software\\CaseTest]\r\n" +
                            "\"Language\"=\"fr\"\r\n\r\n");
}

// Into a buffer of n bytes: more than n needed -> 234 with the size, and the buffer is not
// written; a string stored with its terminator fits with n-1 characters; a string stored
// without one gets it added when there is room.
TEST(RegistryConformance, QueryBufferRules) {
    TestMachine m;
    Registry& registry = m.platform().registry;
    RegHandle key = 0;
    ASSERT_EQ(registry.RegCreateKeyA(hkey::CurrentUser, "Software\\Buffers", &key),
              status::Success);
    registry.RegSetValueExA(key, "With", regtype::Sz, bytesOf("abc"), 4);
    registry.RegSetValueExA(key, "Without", regtype::Sz, bytesOf("abc"), 3);
    const std::string long254(254, 'y');
    registry.RegSetValueExA(key, "Long254", regtype::Sz, bytesOf(long254), 255);
    const std::string long255(255, 'y');
    registry.RegSetValueExA(key, "Long255", regtype::Sz, bytesOf(long255), 256);

    Read read = query(registry, key, "With", 3);
    EXPECT_EQ(read.status, status::MoreData);
    EXPECT_EQ(read.size, 4u);
    EXPECT_EQ(read.data, "ZZZ");
    read = query(registry, key, "With", 4);
    EXPECT_EQ(read.status, status::Success);
    EXPECT_EQ(read.data, sz("abc"));

    read = query(registry, key, "Without", 5);
    EXPECT_EQ(read.status, status::Success);
    EXPECT_EQ(read.size, 3u);
    EXPECT_EQ(read.data, std::string("abc\0Z", 5));
    read = query(registry, key, "Without", 3);
    EXPECT_EQ(read.status, status::Success);
    EXPECT_EQ(read.data, "abc");
    read = query(registry, key, "Without", 2);
    EXPECT_EQ(read.status, status::MoreData);
    EXPECT_EQ(read.size, 3u);

    EXPECT_EQ(query(registry, key, "Long254", 255).status, status::Success);
    read = query(registry, key, "Long255", 255);
    EXPECT_EQ(read.status, status::MoreData);
    EXPECT_EQ(read.size, 256u);
    EXPECT_EQ(read.data, std::string(255, 'Z'));

    // Without a buffer the call tells the size only; a buffer without a size is refused.
    std::uint32_t size = 0;
    std::uint32_t type = 0;
    EXPECT_EQ(registry.RegQueryValueExA(key, "Long255", &type, nullptr, &size), status::Success);
    EXPECT_EQ(size, 256u);
    EXPECT_EQ(type, regtype::Sz);
    std::uint8_t buffer[4];
    EXPECT_EQ(registry.RegQueryValueExA(key, "With", nullptr, buffer, nullptr),
              status::InvalidParameter);
    // A number read as text is its bytes; the reader's type does not matter.
    const std::string number("AB\0\0", 4);
    registry.RegSetValueExA(key, "Number", regtype::Dword, bytesOf(number), 4);
    read = query(registry, key, "Number", 255);
    EXPECT_EQ(read.data.substr(0, read.size), std::string("AB\0\0", 4));
    registry.RegCloseKey(key);
}

// With a 256-character buffer names of up to 255 characters come back, in the order Windows
// keeps subkeys (by their upper-cased names, not by creation), and 259 ends the list.
TEST(RegistryConformance, EnumerationOfSubkeys) {
    TestMachine m;
    Registry& registry = m.platform().registry;
    const std::string longest(255, 'x');
    for (const std::string& name :
         {std::string("b"), std::string("A"), longest, std::string("c")}) {
        RegHandle key = 0;
        ASSERT_EQ(registry.RegCreateKeyA(hkey::CurrentUser, "Software\\Enum\\" + name, &key),
                  status::Success);
        registry.RegCloseKey(key);
    }
    RegHandle key = 0;
    EXPECT_EQ(registry.RegCreateKeyA(hkey::CurrentUser, "Software\\Enum\\" + longest + "y", &key),
              status::InvalidParameter);
    ASSERT_EQ(registry.RegOpenKeyExA(hkey::CurrentUser, "Software\\Enum", 0, access::KeyRead, &key),
              status::Success);
    long end = 0;
    EXPECT_EQ(subkeyNames(registry, key, &end), (std::vector<std::string>{"A", "b", "c", longest}));
    EXPECT_EQ(end, status::NoMoreItems);

    char name[256] = "untouched";
    std::uint32_t size = 1;
    EXPECT_EQ(registry.RegEnumKeyExA(key, 0, name, &size), status::MoreData);
    size = 255;
    EXPECT_EQ(registry.RegEnumKeyExA(key, 3, name, &size), status::MoreData);
    size = 2;
    EXPECT_EQ(registry.RegEnumKeyExA(key, 0, name, &size), status::Success);
    EXPECT_EQ(size, 1u);
    EXPECT_STREQ(name, "A");
    registry.RegCloseKey(key);
}

TEST(RegistryConformance, OpeningKeys) {
    TestMachine m;
    Registry& registry = m.platform().registry;
    RegHandle key = 0;
    // A missing key answers 2 and creates nothing.
    EXPECT_EQ(registry.RegOpenKeyExA(hkey::CurrentUser, "Software\\Missing\\Deeper", 0,
                                     access::KeyRead, &key),
              status::FileNotFound);
    EXPECT_EQ(registry.RegOpenKeyA(hkey::CurrentUser, "Software\\Missing", &key),
              status::FileNotFound);
    // RegCreateKeyA makes the keys in between.
    ASSERT_EQ(registry.RegCreateKeyA(hkey::CurrentUser, "Software\\Made\\In\\Between", &key),
              status::Success);
    registry.RegSetValueExA(key, "v", regtype::Sz, bytesOf("1"), 2);
    registry.RegCloseKey(key);
    EXPECT_EQ(registry.RegOpenKeyA(hkey::CurrentUser, "Software\\Made\\In", &key), status::Success);
    // An empty subkey opens the same key; RegOpenKeyA gives back the very handle.
    RegHandle same = 0;
    EXPECT_EQ(registry.RegOpenKeyA(key, "", &same), status::Success);
    EXPECT_EQ(same, key);
    EXPECT_EQ(registry.RegOpenKeyExA(key, "", 0, access::KeyRead, &same), status::Success);
    EXPECT_EQ(valueAt(registry, same, "Between", "v"), sz("1"));
    registry.RegCloseKey(same);
    registry.RegCloseKey(key);
    // Trailing "\" are ignored; a subkey that starts with "\" is a bad path name (161).
    EXPECT_EQ(valueAt(registry, hkey::CurrentUser, "Software\\Made\\In\\Between\\", "v"), sz("1"));
    EXPECT_EQ(
        registry.RegOpenKeyExA(hkey::CurrentUser, "\\Software\\Made", 0, access::KeyRead, &key),
        161);
    // A closed handle is no longer valid.
    EXPECT_EQ(registry.RegCloseKey(same), status::InvalidHandle);
    EXPECT_EQ(registry.RegQueryValueExA(same, "v", nullptr, nullptr, nullptr),
              status::InvalidHandle);
}

TEST(RegistryConformance, AKeyOpenedForReadingRefusesWrites) {
    TestMachine m;
    Registry& registry = m.platform().registry;
    RegHandle key = 0;
    ASSERT_EQ(registry.RegCreateKeyA(hkey::CurrentUser, "Software\\ReadOnly", &key),
              status::Success);
    registry.RegCloseKey(key);
    ASSERT_EQ(
        registry.RegOpenKeyExA(hkey::CurrentUser, "Software\\ReadOnly", 0, access::KeyRead, &key),
        status::Success);
    EXPECT_EQ(registry.RegSetValueExA(key, "v", regtype::Sz, bytesOf("1"), 2),
              status::AccessDenied);
    registry.RegCloseKey(key);
    ASSERT_EQ(
        registry.RegOpenKeyExA(hkey::CurrentUser, "Software\\ReadOnly", 0, access::KeyWrite, &key),
        status::Success);
    EXPECT_EQ(registry.RegSetValueExA(key, "v", regtype::Sz, bytesOf("1"), 2), status::Success);
    std::uint32_t size = 0;
    EXPECT_EQ(registry.RegQueryValueExA(key, "v", nullptr, nullptr, &size), status::AccessDenied);
    registry.RegCloseKey(key);
}

TEST(RegistryConformance, DeleteValue) {
    TestMachine m;
    Registry& registry = m.platform().registry;
    RegHandle key = 0;
    ASSERT_EQ(registry.RegCreateKeyA(hkey::CurrentUser, "Software\\Delete", &key), status::Success);
    registry.RegSetValueExA(key, "Gone", regtype::Sz, bytesOf("x"), 2);
    registry.RegSetValueExA(key, "Stays", regtype::Sz, bytesOf("y"), 2);
    EXPECT_EQ(registry.RegDeleteValueA(key, "GONE"), status::Success);
    EXPECT_EQ(registry.RegDeleteValueA(key, "Gone"), status::FileNotFound);
    std::uint32_t size = 0;
    EXPECT_EQ(registry.RegQueryValueExA(key, "Gone", nullptr, nullptr, &size),
              status::FileNotFound);
    EXPECT_EQ(valueAt(registry, key, "", "Stays"), sz("y"));
    registry.RegCloseKey(key);
}

// Lines that are not key or value lines are passed over, and so are the values of a key
// line whose root regedit does not know; hex data goes on after ",\" on an indented line.
TEST(RegistryConformance, ImportPassesOverWhatRegeditPassesOver) {
    TestMachine m;
    ASSERT_EQ(m.importReg("  Windows Registry Editor Version 5.00\n"
                          "; a comment\r"
                          "not a line regedit knows\r\n"
                          "[HKEY_NOWHERE\\Software\\Lenient]\r\n"
                          "\"skipped\"=\"1\"\r\n"
                          "[hkey_current_user\\Software\\Lenient]\r\n"
                          "  \"spaced\" = \"yes\" ; why\r\n"
                          "\"escapes\"=\"a\\tb\\nc\"\r\n"
                          "\"wrapped\"=hex(2):41,00,\\\r\n"
                          "      42,00,00,00\r\n"
                          "@=dword:ABC\r\n"),
              "");
    Registry& registry = m.platform().registry;
    EXPECT_EQ(valueAt(registry, hkey::CurrentUser, "Software\\Lenient", "spaced"), sz("yes"));
    EXPECT_EQ(valueAt(registry, hkey::CurrentUser, "Software\\Lenient", "escapes"), sz("atb\nc"));
    EXPECT_EQ(valueAt(registry, hkey::CurrentUser, "Software\\Lenient", "wrapped"), sz("AB"));
    EXPECT_EQ(valueAt(registry, hkey::CurrentUser, "Software\\Lenient", ""),
              std::string("\xbc\x0a\0\0", 4));
    EXPECT_EQ(valueAt(registry, hkey::CurrentUser, "Software\\Lenient", "skipped"), "<error 2>");
}

// [-key] deletes a key with all below it, "name"=- a value; in a REGEDIT4 file the string
// types in hex are ANSI.
TEST(RegistryConformance, ImportDeletesAndReadsRegedit4) {
    TestMachine m;
    ASSERT_EQ(m.importReg("Windows Registry Editor Version 5.00\r\n\r\n"
                          "[HKEY_CURRENT_USER\\Software\\Old\\Deep]\r\n\"a\"=\"1\"\r\n"
                          "[HKEY_CURRENT_USER\\Software\\Keep]\r\n\"a\"=\"1\"\r\n\"b\"=\"2\"\r\n"),
              "");
    ASSERT_EQ(m.importReg("REGEDIT4\r\n\r\n"
                          "[-HKEY_CURRENT_USER\\Software\\Old]\r\n"
                          "\"after delete\"=\"not set\"\r\n"
                          "[HKEY_CURRENT_USER\\Software\\Keep]\r\n\"a\"=-\r\n"
                          "\"ansi\"=hex(2):e4,00\r\n"),
              "");
    Registry& registry = m.platform().registry;
    RegHandle key = 0;
    EXPECT_EQ(registry.RegOpenKeyA(hkey::CurrentUser, "Software\\Old", &key), status::FileNotFound);
    EXPECT_EQ(valueAt(registry, hkey::CurrentUser, "Software\\Keep", "a"), "<error 2>");
    EXPECT_EQ(valueAt(registry, hkey::CurrentUser, "Software\\Keep", "b"), sz("2"));
    EXPECT_EQ(valueAt(registry, hkey::CurrentUser, "Software\\Keep", "ansi"), sz("\xe4"));
}

// A malformed line refuses the whole file: the message names the file and the line, and
// nothing of the file is imported, not even the lines before it.
TEST(RegistryConformance, MalformedFilesAreRefusedWithTheirLine) {
    const std::string good =
        "Windows Registry Editor Version 5.00\r\n\r\n"
        "[HKEY_CURRENT_USER\\Software\\Malformed]\r\n\"ok\"=\"1\"\r\n";
    const struct {
        std::string text;
        int line;
    } cases[] = {
        {"REGEDIT5\r\n\r\n[HKEY_CURRENT_USER\\Software\\Malformed]\r\n", 1},
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
        {good + "\r\n[HKEY_CURRENT_USER\\Software\\Other\r\n", 6},
    };
    for (const auto& bad : cases) {
        TestMachine m;
        const std::string message = m.importReg(bad.text);
        EXPECT_NE(message.find("import.reg:" + std::to_string(bad.line) + ": "), std::string::npos)
            << message;
        RegHandle key = 0;
        EXPECT_EQ(m.platform().registry.RegOpenKeyA(hkey::CurrentUser, "Software\\Malformed", &key),
                  status::FileNotFound)
            << message;
    }
}

TEST(RegistryConformance, ExportOfAMissingKeyFails) {
    TestMachine m;
    std::string text;
    const auto result =
        m.platform().regEdit.exportKey("HKEY_CURRENT_USER\\Software\\Not There", &text);
    EXPECT_FALSE(result.ok);
    EXPECT_NE(result.message, "");
}

}  // namespace
