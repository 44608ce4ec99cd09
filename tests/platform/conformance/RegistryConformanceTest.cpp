// The registry's "A" calls and regedit's .reg files as Windows has them. Only the Registry and
// RegEdit interfaces are used, so that any backend can be held to these rules.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

#include "ConformanceTest.h"

namespace {

using namespace platform;
using conformance::lowerCase;
using conformance::upperCase;

// A key below the tests' own key.
std::string ownKey(const std::string& below) {
    return std::string(conformance::kKey) + "\\" + below;
}

const std::string kUninstall = ownKey("Uninstall");
const std::string kHeader = "Windows Registry Editor Version 5.00\r\n";

// ASCII text as UTF-16 code units.
std::u16string widen(const std::string& ascii) {
    return std::u16string(ascii.begin(), ascii.end());
}

// regedit's UTF-16LE file as code units, its byte-order mark included, and back.
std::u16string utf16leUnits(const std::string& bytes) {
    std::u16string units;
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
        units += char16_t(std::uint8_t(bytes[i]) | std::uint8_t(bytes[i + 1]) << 8);
    }
    return units;
}

std::string utf16leBytes(const std::u16string& units) {
    std::string bytes;
    for (char16_t unit : units) {
        bytes += {char(unit & 0xFF), char(unit >> 8)};
    }
    return bytes;
}

// An export, which comes as UTF-8, as the UTF-16LE file with its byte-order mark that regedit
// writes: regedit reads any other file in the ANSI code page.
std::string regeditFile(const std::string& utf8Text) {
    std::u16string units = u"\uFEFF";
    for (size_t i = 0; i < utf8Text.size();) {
        const auto lead = std::uint8_t(utf8Text[i]);
        const size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
        char32_t c = length == 1 ? lead : lead & (0x7F >> length);
        for (size_t k = 1; k < length && i + k < utf8Text.size(); ++k) {
            c = c << 6 | (std::uint8_t(utf8Text[i + k]) & 0x3F);
        }
        i += length;
        if (c >= 0x10000) {
            units += {char16_t(0xD800 + ((c - 0x10000) >> 10)), char16_t(0xDC00 + (c & 0x3FF))};
        } else {
            units += char16_t(c);
        }
    }
    return utf16leBytes(units);
}

// The real export of Uninstall keys, moved below the tests' own key and kept in regedit's
// encoding.
std::string uninstallSample() {
    const std::string exported =
        "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall";
    const std::string own = "HKEY_LOCAL_MACHINE\\" + kUninstall;
    const std::u16string from = widen(exported);
    const std::u16string to = widen(own);
    std::u16string text = utf16leUnits(conformance::readTestData("uninstall-sample.reg"));
    for (size_t at = text.find(from); at != std::u16string::npos;
         at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
    return utf16leBytes(text);
}

const std::uint8_t* bytesOf(const std::string& text) {
    return reinterpret_cast<const std::uint8_t*>(text.data());
}

// A literal with its terminator, as a string value stored with one reads.
template <size_t N>
std::string sz(const char (&text)[N]) {
    return std::string(text, N);
}

class RegistryConformance : public conformance::ConformanceTest {
protected:
    explicit RegistryConformance(unsigned codePage = 0) : ConformanceTest(codePage) {}

    Registry& registry() { return machine->platform().registry; }
    RegEdit& regEdit() { return machine->platform().regEdit; }

    // Creates the key and sets the value to the bytes of data, which next follows in memory: a
    // NUL unless the test asks for a string whose size leaves out a terminator that isn't there.
    long set(RegHandle root, const std::string& keyPath, const std::string& name,
             std::uint32_t type, const std::string& data, char next = '\0') {
        RegHandle key = 0;
        long result = registry().RegCreateKeyA(root, keyPath, &key);
        if (result == status::Success) {
            const std::string buffer = data + next;
            result = registry().RegSetValueExA(key, name, type, bytesOf(buffer),
                                               std::uint32_t(data.size()));
            registry().RegCloseKey(key);
        }
        return result;
    }

    // The value's bytes as a read into a large buffer gives them, or "<error N>".
    std::string value(RegHandle root, const std::string& keyPath, const std::string& name,
                      std::uint32_t* type = nullptr) {
        RegHandle key = 0;
        long result = registry().RegOpenKeyExA(root, keyPath, 0, access::KeyRead, &key);
        std::string data(4096, '\0');
        auto size = std::uint32_t(data.size());
        if (result == status::Success) {
            result = registry().RegQueryValueExA(
                key, name, type, reinterpret_cast<std::uint8_t*>(data.data()), &size);
            registry().RegCloseKey(key);
        }
        return result == status::Success ? data.substr(0, size)
                                         : "<error " + std::to_string(result) + ">";
    }
};

// Tests whose bytes are those of Western European Windows.
using RegistryConformanceIn1252 = conformance::InCodePage<RegistryConformance, 1252>;

// A real regedit export reads back value for value in every type; exporting it with what the
// program stored in ways the string forms cannot show (a string without its terminator and a
// REG_DWORD of two bytes are written in hex), deleting it and importing the export gives the
// same values again.
TEST_F(RegistryConformanceIn1252, RegeditExportImportsValueForValueAndExportsTheSameValues) {
    ASSERT_EQ(machine->importReg(uninstallSample()), "");
    const std::string types = kUninstall + "\\Types";
    const std::string odd = "name with \"quotes\" and \\";
    set(hkey::LocalMachine, types, "NoTerm", regtype::Sz, "no terminator", 'X');
    set(hkey::LocalMachine, types, odd, regtype::Sz, sz("two\r\nlines \"q\" \\"));
    set(hkey::LocalMachine, types, "Empty", regtype::Binary, "");
    set(hkey::LocalMachine, types, "Set expand", regtype::ExpandSz, sz("%TEMP%\\x"));
    set(hkey::LocalMachine, types, "Short dword", regtype::Dword, "ab");
    // Key below Uninstall, value name, type, the bytes a read gives.
    const std::tuple<std::string, std::string, std::uint32_t, std::string> values[] = {
        {"7-Zip", "InstallLocation", regtype::Sz, sz("C:\\Program Files\\7-Zip\\")},
        {"7-Zip", "NoModify", regtype::Dword, std::string("\1\0\0\0", 4)},
        {"Types", "", regtype::Sz, sz("default value")},
        {"Types", "Bin", regtype::Binary, std::string("\x01\x02\xff\x00", 4)},
        // Reading a REG_EXPAND_SZ with RegQueryValueExA does not expand it.
        {"Types", "Expand", regtype::ExpandSz, sz("%ProgramFiles%\\App")},
        {"Types", "Long", regtype::Sz, std::string(300, 'x') + '\0'},
        {"Types", "Multi", regtype::MultiSz, sz("one\0two\0")},
        {"Types", "Q", regtype::Qword, "\x88\x77\x66\x55\x44\x33\x22\x11"},
        {"Types", "Quoted", regtype::Sz, sz("say \"hi\" \\ back")},
        // Code page 1252 has the Latin letters and the euro sign; the rest becomes "?".
        {"Types", "Unicode", regtype::Sz, sz("Gr\xfc\xdf\x65 \x80 ???")},
        {"Types", "NoTerm", regtype::Sz, "no terminator"},
        {"Types", odd, regtype::Sz, sz("two\r\nlines \"q\" \\")},
        {"Types", "Empty", regtype::Binary, ""},
        {"Types", "Set expand", regtype::ExpandSz, sz("%TEMP%\\x")},
        {"Types", "Short dword", regtype::Dword, "ab"},
    };
    // All but the values named in unlike.
    const auto expectValues = [&](const char* when, std::vector<std::string> unlike = {}) {
        for (const auto& [key, name, type, data] : values) {
            if (std::find(unlike.begin(), unlike.end(), name) != unlike.end()) {
                continue;
            }
            std::uint32_t read = 0;
            EXPECT_EQ(value(hkey::LocalMachine, kUninstall + "\\" + key, name, &read), data)
                << when << " " << name;
            EXPECT_EQ(read, type) << when << " " << name;
        }
    };
    expectValues("imported");
    std::string exported;
    ASSERT_TRUE(regEdit().exportKey("HKEY_LOCAL_MACHINE\\" + kUninstall, &exported).ok);
    ASSERT_EQ(machine->importReg("REGEDIT4\r\n[-HKEY_LOCAL_MACHINE\\" + kUninstall + "]\r\n"), "");
    // The import, like the program, works in the 32-bit view.
    if (conformance::wineDiffers("reg import /reg:32 deletes a [-key] in the 64-bit view")) {
        ASSERT_EQ(value(hkey::LocalMachine, types, "Bin"), std::string("\x01\x02\xff\x00", 4));
    } else {
        ASSERT_EQ(value(hkey::LocalMachine, types, "Bin"), "<error 2>");
    }
    ASSERT_EQ(machine->importReg(regeditFile(exported)), "");
    if (conformance::wineDiffers(
            "reg export takes a REG_SZ as terminated, a REG_DWORD as 4 bytes")) {
        EXPECT_EQ(value(hkey::LocalMachine, types, "NoTerm"), sz("no terminato"));
        const std::string dword = value(hkey::LocalMachine, types, "Short dword");
        EXPECT_EQ(std::pair(dword.size(), dword.substr(0, 2)),
                  std::pair(size_t(4), std::string("ab")));
        expectValues("exported and imported again", {"NoTerm", "Short dword"});
    } else {
        expectValues("exported and imported again");
    }
}

// regedit writes each key as a blank line and [path], values in the order they were set,
// strings escaped, dword:%08x, hex wrapped before column 80 with "\" and two blanks.
TEST_F(RegistryConformance, ExportWritesEachKeyAsRegeditDoes) {
    const std::string file = uninstallSample();
    ASSERT_EQ(machine->importReg(file), "");
    const std::u16string sample = utf16leUnits(file).substr(1);
    // The export of a key as the code units of regedit's file, after the mark.
    const auto exportOf = [this](const std::u16string& keyPath) {
        std::string exported;
        EXPECT_TRUE(regEdit().exportKey(std::string(keyPath.begin(), keyPath.end()), &exported).ok);
        return utf16leUnits(regeditFile(exported)).substr(1);
    };
    const std::u16string begin = u"\r\n[HKEY_LOCAL_MACHINE\\";
    int blocks = 0;
    // Each subkey of Uninstall on its own.
    for (size_t start = sample.find(begin + widen(kUninstall) + u"\\"); start != sample.npos;
         ++blocks) {
        const size_t end = sample.find(begin, start + 1);
        const std::u16string block =
            sample.substr(start, end == sample.npos ? sample.size() - start - 2 : end - start);
        EXPECT_EQ(exportOf(block.substr(3, block.find(u']') - 3)),
                  widen(kHeader) + block + u"\r\n");
        start = end;
    }
    EXPECT_EQ(blocks, 3);
    // Uninstall itself with all below it, its subkeys in the order Windows keeps them.
    EXPECT_EQ(exportOf(u"HKEY_LOCAL_MACHINE\\" + widen(kUninstall)), sample);
    std::string none;
    EXPECT_FALSE(regEdit().exportKey("HKEY_CURRENT_USER\\" + ownKey("None"), &none).ok);
}

// Key and value names compare without regard to case and keep the case they were made with;
// values stay in the order they were made, one set again keeps its place, and deleting one
// leaves the others readable.
TEST_F(RegistryConformance, NamesIgnoreCaseAndKeepTheirFirstCase) {
    const std::string path = ownKey("CaseTest");
    set(hkey::CurrentUser, path, "Stays", regtype::Sz, sz("y"));
    set(hkey::CurrentUser, path, "Language", regtype::Sz, sz("de"));
    set(hkey::CurrentUser, upperCase(path), "LANGUAGE", regtype::Sz, sz("fr"));
    EXPECT_EQ(value(hkey::CurrentUser, lowerCase(path), "language"), sz("fr"));
    std::string exported;
    ASSERT_TRUE(regEdit().exportKey("HKEY_CURRENT_USER\\" + lowerCase(path), &exported).ok);
    std::string keyLine = "[HKEY_CURRENT_USER\\" + path + "]\r\n";
    if (conformance::wineDiffers("reg export writes the top key as typed")) {
        keyLine = "[HKEY_CURRENT_USER\\" + lowerCase(path) + "]\r\n";
    }
    std::string values = "\"Stays\"=\"y\"\r\n\"Language\"=\"fr\"\r\n";
    if (conformance::wineDiffers("values are kept sorted by name, not in the order made")) {
        values = "\"Language\"=\"fr\"\r\n\"Stays\"=\"y\"\r\n";
    }
    EXPECT_EQ(exported, kHeader + "\r\n" + keyLine + values + "\r\n");

    RegHandle key = 0;
    ASSERT_EQ(registry().RegOpenKeyA(hkey::CurrentUser, path, &key), status::Success);
    EXPECT_EQ(registry().RegDeleteValueA(key, "LANGUAGE"), status::Success);
    EXPECT_EQ(registry().RegDeleteValueA(key, "Language"), status::FileNotFound);
    EXPECT_EQ(value(key, "", "Language"), "<error 2>");
    EXPECT_EQ(value(key, "", "Stays"), sz("y"));
    registry().RegCloseKey(key);
}

// Into a buffer of n bytes: more than n needed -> 234 with the size, and the buffer is not
// written; a string stored with its terminator fits with n-1 characters; a string stored
// without one gets it added when there is room; other types are their bytes. A string set
// with a size that leaves out the terminator is stored with it when a NUL follows the data,
// as Windows NT counts it in.
TEST_F(RegistryConformance, QueryBufferRules) {
    const std::string path = ownKey("Buffers");
    set(hkey::CurrentUser, path, "With", regtype::Sz, sz("abc"));
    set(hkey::CurrentUser, path, "Counted", regtype::Sz, "abc");
    set(hkey::CurrentUser, path, "Without", regtype::Sz, "abc", 'X');
    set(hkey::CurrentUser, path, "Long255", regtype::Sz, std::string(255, 'y') + '\0');
    set(hkey::CurrentUser, path, "Number", regtype::Dword, std::string("AB\0\0", 4));
    RegHandle key = 0;
    ASSERT_EQ(registry().RegOpenKeyA(hkey::CurrentUser, path, &key), status::Success);
    // Value, buffer size; status, size and the whole buffer after the call, which began "ZZZ...".
    const std::tuple<const char*, std::uint32_t, long, std::uint32_t, std::string> cases[] = {
        {"With", 3, status::MoreData, 4, "ZZZ"},
        {"With", 4, status::Success, 4, sz("abc")},
        {"Counted", 3, status::MoreData, 4, "ZZZ"},
        {"Counted", 4, status::Success, 4, sz("abc")},
        {"Without", 5, status::Success, 3, std::string("abc\0Z", 5)},
        {"Without", 3, status::Success, 3, "abc"},
        {"Without", 2, status::MoreData, 3, "ZZ"},
        {"Long255", 255, status::MoreData, 256, std::string(255, 'Z')},
        {"Number", 5, status::Success, 4, std::string("AB\0\0Z", 5)},
    };
    for (const auto& [name, buffer, status, size, data] : cases) {
        std::string read(buffer, 'Z');
        std::uint32_t readSize = buffer;
        const long result = registry().RegQueryValueExA(
            key, name, nullptr, reinterpret_cast<std::uint8_t*>(read.data()), &readSize);
        EXPECT_EQ(std::tuple(result, readSize, read), std::tuple(status, size, data))
            << name << " into " << buffer;
    }
    // Without a buffer the call tells the size only; a buffer without a size is refused.
    std::uint32_t size = 0;
    std::uint32_t type = 0;
    EXPECT_EQ(registry().RegQueryValueExA(key, "Long255", &type, nullptr, &size), status::Success);
    EXPECT_EQ(std::pair(size, type), std::pair(256u, regtype::Sz));
    std::uint8_t buffer[4];
    EXPECT_EQ(registry().RegQueryValueExA(key, "With", nullptr, buffer, nullptr),
              status::InvalidParameter);
    registry().RegCloseKey(key);
}

// A key name has at most 255 characters (87 for a longer one). With a 256-character buffer
// the names come back in the order Windows keeps subkeys (by their upper-cased names, not by
// creation; names that differ only in case are one key), and 259 ends the list.
TEST_F(RegistryConformance, EnumerationOfSubkeys) {
    const std::string longest(255, 'x');
    RegHandle key = 0;
    ASSERT_EQ(registry().RegCreateKeyA(hkey::CurrentUser, ownKey("Enum"), &key), status::Success);
    for (const std::string& name :
         {std::string("b"), std::string("A"), longest, std::string("c"), std::string("B")}) {
        EXPECT_EQ(set(key, name, "", regtype::Sz, ""), status::Success) << name;
    }
    const long tooLong = set(key, longest + "y", "", regtype::Sz, "");
    if (conformance::wineDiffers("a key name of 256 characters is taken")) {
        EXPECT_EQ(tooLong, status::Success);
        EXPECT_EQ(registry().RegDeleteKeyA(key, longest + "y"), status::Success);
    } else {
        EXPECT_EQ(tooLong, status::InvalidParameter);
    }
    std::vector<std::string> names;
    char name[256];
    std::uint32_t size = sizeof name;
    long result = status::Success;
    for (std::uint32_t i = 0; (result = registry().RegEnumKeyExA(key, i, name, &size)) == 0; ++i) {
        names.emplace_back(name, size);
        size = sizeof name;
    }
    EXPECT_EQ(names, (std::vector<std::string>{"A", "b", "c", longest}));
    EXPECT_EQ(result, status::NoMoreItems);

    size = 1;
    EXPECT_EQ(registry().RegEnumKeyExA(key, 0, name, &size), status::MoreData);
    size = 255;
    EXPECT_EQ(registry().RegEnumKeyExA(key, 3, name, &size), status::MoreData);
    size = 2;
    EXPECT_EQ(registry().RegEnumKeyExA(key, 0, name, &size), status::Success);
    EXPECT_EQ(size, 1u);
    EXPECT_STREQ(name, "A");
    registry().RegCloseKey(key);
}

// Opening a missing key answers 2; RegCreateKeyA makes every missing key on the path; an empty
// subkey is the key itself; trailing "\" are ignored, a leading one is a bad path.
TEST_F(RegistryConformance, OpeningKeys) {
    RegHandle key = 0;
    // A missing key answers 2 and creates nothing; RegCreateKeyA makes the keys in between.
    EXPECT_EQ(
        registry().RegOpenKeyExA(hkey::CurrentUser, ownKey("Made\\In"), 0, access::KeyRead, &key),
        status::FileNotFound);
    EXPECT_EQ(registry().RegOpenKeyA(hkey::CurrentUser, ownKey("Made"), &key),
              status::FileNotFound);
    ASSERT_EQ(set(hkey::CurrentUser, ownKey("Made\\In\\Between"), "v", regtype::Sz, sz("1")),
              status::Success);
    ASSERT_EQ(registry().RegOpenKeyA(hkey::CurrentUser, ownKey("Made\\In"), &key), status::Success);
    // An empty subkey opens the same key; RegOpenKeyA gives back the very handle.
    RegHandle same = 0;
    EXPECT_EQ(registry().RegOpenKeyA(key, "", &same), status::Success);
    EXPECT_EQ(same, key);
    EXPECT_EQ(registry().RegOpenKeyExA(key, "", 0, access::KeyRead, &same), status::Success);
    EXPECT_EQ(value(same, "Between", "v"), sz("1"));
    registry().RegCloseKey(same);
    registry().RegCloseKey(key);
    // Trailing "\" are ignored; a subkey that starts with "\" is a bad path name (161).
    EXPECT_EQ(value(hkey::CurrentUser, ownKey("Made\\In\\Between\\"), "v"), sz("1"));
    EXPECT_EQ(registry().RegOpenKeyExA(hkey::CurrentUser, "\\" + ownKey("Made"), 0, access::KeyRead,
                                       &key),
              161);
    // A closed handle is no longer valid.
    EXPECT_EQ(registry().RegCloseKey(same), status::InvalidHandle);
    EXPECT_EQ(registry().RegQueryValueExA(same, "v", nullptr, nullptr, nullptr),
              status::InvalidHandle);
}

// A key opened for reading refuses changes with 5, one opened for writing refuses reads.
TEST_F(RegistryConformance, AnOpenKeyGrantsOnlyTheAccessAskedFor) {
    set(hkey::CurrentUser, ownKey("Rights"), "v", regtype::Sz, sz("1"));
    RegHandle reader = 0;
    RegHandle writer = 0;
    registry().RegOpenKeyExA(hkey::CurrentUser, ownKey("Rights"), 0, access::KeyRead, &reader);
    registry().RegOpenKeyExA(hkey::CurrentUser, ownKey("Rights"), 0, access::KeyWrite, &writer);
    EXPECT_EQ(registry().RegSetValueExA(reader, "v", regtype::Sz, bytesOf("2"), 2),
              status::AccessDenied);
    EXPECT_EQ(registry().RegDeleteValueA(reader, "v"), status::AccessDenied);
    EXPECT_EQ(registry().RegSetValueExA(writer, "v", regtype::Sz, bytesOf("2"), 2),
              status::Success);
    EXPECT_EQ(registry().RegQueryValueExA(writer, "v", nullptr, nullptr, nullptr),
              status::AccessDenied);
    registry().RegCloseKey(reader);
    registry().RegCloseKey(writer);
}

// regedit passes over lines that are not key or value lines, and the values of a key line
// whose root it does not know; hex data goes on after ",\" on an indented line; [-key]
// deletes a key with all below it, "name"=- a value; in REGEDIT4 the string types in hex are
// ANSI.
TEST_F(RegistryConformanceIn1252, ImportDoesWhatRegeditDoes) {
    const std::string key = ownKey("Lenient");
    set(hkey::CurrentUser, ownKey("Old\\Deep"), "a", regtype::Sz, sz("1"));
    set(hkey::CurrentUser, key, "a", regtype::Sz, sz("1"));
    ASSERT_EQ(machine->importReg("  REGEDIT4\n"
                                 "; a comment\r"
                                 "not a line regedit knows\r\n"
                                 "[HKEY_NOWHERE\\" +
                                 key + "]\r\n" +
                                 "\"skipped\"=\"1\"\r\n"
                                 "[-HKEY_CURRENT_USER\\" +
                                 ownKey("Old") + "]\r\n" +
                                 "\"after delete\"=\"not set\"\r\n"
                                 "[hkey_current_user\\" +
                                 key + "]\r\n" +
                                 "  \"spaced\" = \"yes\" ; why\r\n"
                                 "\"escapes\"=\"a\\tb\\nc\"\r\n"
                                 "\"wrapped\"=hex:41,\\\r\n"
                                 "      42\r\n"
                                 "@=dword:ABC\r\n"
                                 "\"a\"=-\r\n"
                                 "\"ansi\"=hex(2):e4,00\r\n"),
              "");
    EXPECT_EQ(value(hkey::CurrentUser, key, "spaced"), sz("yes"));
    EXPECT_EQ(value(hkey::CurrentUser, key, "escapes"), sz("atb\nc"));
    EXPECT_EQ(value(hkey::CurrentUser, key, "wrapped"), "AB");
    EXPECT_EQ(value(hkey::CurrentUser, key, ""), std::string("\xbc\x0a\0\0", 4));
    EXPECT_EQ(value(hkey::CurrentUser, key, "ansi"), sz("\xe4"));
    EXPECT_EQ(value(hkey::CurrentUser, key, "a"), "<error 2>");
    EXPECT_EQ(value(hkey::CurrentUser, key, "skipped"), "<error 2>");
    RegHandle old = 0;
    EXPECT_EQ(registry().RegOpenKeyA(hkey::CurrentUser, ownKey("Old"), &old), status::FileNotFound);
}

// A file that does not begin with regedit's header line imports nothing.
TEST_F(RegistryConformance, FilesWithoutTheHeaderImportNothing) {
    const std::string key = "[HKEY_CURRENT_USER\\" + ownKey("Headless") + "]\r\n\"ok\"=\"1\"\r\n";
    for (const std::string& text :
         {"REGEDIT5\r\n\r\n" + key, "Windows Registry Editor Version 5.0\r\n" + key,
          "windows registry editor version 5.00\r\n" + key, "\r\n" + key, key, std::string()}) {
        machine->importReg(text);
        EXPECT_EQ(value(hkey::CurrentUser, ownKey("Headless"), "ok"), "<error 2>") << text;
    }
}

// A key goes only when it has no subkeys of its own; a handle open on it then finds it gone.
TEST_F(RegistryConformance, DeleteKeyRefusesAKeyWithSubkeys) {
    set(hkey::LocalMachine, ownKey("Doomed\\Child"), "v", regtype::Sz, sz("x"));
    RegHandle child = 0;
    ASSERT_EQ(registry().RegOpenKeyA(hkey::LocalMachine, ownKey("Doomed\\Child"), &child),
              status::Success);
    EXPECT_EQ(registry().RegDeleteKeyA(hkey::LocalMachine, ownKey("Doomed")), status::AccessDenied);
    EXPECT_EQ(registry().RegDeleteKeyA(hkey::LocalMachine, lowerCase(ownKey("Doomed")) + "\\CHILD"),
              status::Success);
    EXPECT_NE(registry().RegQueryValueExA(child, "v", nullptr, nullptr, nullptr), status::Success);
    registry().RegCloseKey(child);
    EXPECT_EQ(registry().RegDeleteKeyA(hkey::LocalMachine, ownKey("Doomed\\Child")),
              status::FileNotFound);
    EXPECT_EQ(registry().RegDeleteKeyA(hkey::LocalMachine, ownKey("Doomed")), status::Success);
    EXPECT_EQ(value(hkey::LocalMachine, ownKey("Doomed"), "v"), "<error 2>");
}

}  // namespace
