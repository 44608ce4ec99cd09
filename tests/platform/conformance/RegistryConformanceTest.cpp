// The registry's "A" calls and regedit's .reg files as Windows has them. Only the Registry and
// RegEdit interfaces are used, so that any backend can be held to these rules.
#include <span>

#include "ConformanceTest.h"

namespace {

using namespace conformance;
using namespace platform;
using namespace platform::hkey;

const std::string kHeader = "Windows Registry Editor Version 5.00\r\n";

// A key below the tests' own key.
std::string own(const std::string& below) {
    return std::string(kKey) + "\\" + below;
}

const std::string kUninstall = own("Uninstall");

// ASCII text as regedit's UTF-16LE.
std::string le(const std::string& ascii) {
    return utf16(std::u16string(ascii.begin(), ascii.end()));
}

// An export, which comes as UTF-8, as the UTF-16LE file with its byte-order mark that regedit
// writes: regedit reads any other file in the ANSI code page. The exports here hold no
// character beyond U+FFFF.
std::string regeditFile(const std::string& utf8) {
    std::u16string text = u"\uFEFF";
    for (size_t i = 0; i < utf8.size(); ++i) {
        const auto lead = std::uint8_t(utf8[i]);
        int more = lead < 0x80 ? 0 : lead < 0xE0 ? 1 : 2;
        auto unit = char16_t(lead & (0x7F >> more));
        for (; more > 0; --more) {
            unit = char16_t(unit << 6 | (std::uint8_t(utf8[++i]) & 0x3F));
        }
        text += unit;
    }
    return utf16(text);
}

// The real export of Uninstall keys, moved below the tests' own key and kept in regedit's
// encoding.
std::string uninstallSample() {
    const std::string from =
        le("HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall");
    const std::string to = le("HKEY_LOCAL_MACHINE\\" + kUninstall);
    std::string text = readTestData("uninstall-sample.reg");
    for (size_t at = text.find(from); at != text.npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
    return text;
}

// The bytes of a buffer as the registry calls take them.
std::uint8_t* bytesOf(std::string& buffer) {
    return reinterpret_cast<std::uint8_t*>(buffer.data());
}

// A literal with its terminator, as a string value stored with one reads.
template <size_t N>
std::string sz(const char (&text)[N]) {
    return std::string(text, N);
}

class RegistryConformance : public ConformanceTest {
protected:
    explicit RegistryConformance(unsigned codePage = 0) : ConformanceTest(codePage) {}

    Registry& reg() { return os().registry; }

    long open(RegHandle root, const std::string& path, RegHandle* key,
              std::uint32_t rights = access::KeyRead) {
        return reg().RegOpenKeyExA(root, path, 0, rights, key);
    }

    // Creates the key and sets the value to the bytes of data, which next follows in memory: a
    // NUL unless the test asks for a string whose size leaves out a terminator that isn't there.
    long set(RegHandle root, const std::string& path, const std::string& name, std::uint32_t type,
             const std::string& data, char next = '\0') {
        RegHandle key = 0;
        std::string buffer = data + next;
        long result = reg().RegCreateKeyA(root, path, &key);
        if (result == status::Success) {
            result =
                reg().RegSetValueExA(key, name, type, bytesOf(buffer), std::uint32_t(data.size()));
            reg().RegCloseKey(key);
        }
        return result;
    }

    // The value's bytes as a read into a large buffer gives them, or "<error N>".
    std::string value(RegHandle root, const std::string& path, const std::string& name,
                      std::uint32_t* type = nullptr) {
        RegHandle key = 0;
        std::string data(4096, '\0');
        auto size = std::uint32_t(data.size());
        long result = open(root, path, &key);
        if (result == status::Success) {
            result = reg().RegQueryValueExA(key, name, type, bytesOf(data), &size);
            reg().RegCloseKey(key);
        }
        return answer(result, data.substr(0, size));
    }

    std::string exportOf(const std::string& keyPath) {
        std::string text;
        EXPECT_TRUE(os().regEdit.exportKey(keyPath, &text).ok) << keyPath;
        return text;
    }
};

// Tests whose bytes are those of Western European Windows.
using RegistryConformanceIn1252 = InCodePage<RegistryConformance, 1252>;

// A real regedit export reads back value for value in every type; exporting it with what the
// program stored in ways the string forms cannot show (a string without its terminator and a
// REG_DWORD of two bytes are written in hex), deleting it and importing the export gives the
// same values again. regedit writes each key as a blank line and [path], values in the order
// they were set, strings escaped, dword:%08x, hex wrapped before column 80 with "\" and two
// blanks; Uninstall itself with all below it has its subkeys in the order Windows keeps them.
TEST_F(RegistryConformanceIn1252, RegeditExportsImportValueForValueAndAsRegeditWritesThem) {
    const std::string sample = uninstallSample();
    const std::string root = "HKEY_LOCAL_MACHINE\\" + kUninstall;
    ASSERT_EQ(machine->importReg(sample), "");
    const size_t types = sample.find(le("\r\n[" + root + "\\Types]"));
    const size_t end = sample.find(le("\r\n\r\n"), types) + le("\r\n\r\n").size();
    EXPECT_EQ(regeditFile(exportOf(root + "\\Types")),
              "\xFF\xFE" + le(kHeader) + sample.substr(types, end - types));
    EXPECT_EQ(regeditFile(exportOf(root)), sample);

    // Key below Uninstall, value name, type, the bytes a read gives; the last five the program
    // sets, NoTerm without a terminator.
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
        {"Set", "NoTerm", regtype::Sz, "no terminator"},
        {"Set", "name with \"quotes\" and \\", regtype::Sz, sz("two\r\nlines \"q\" \\")},
        {"Set", "Empty", regtype::Binary, ""},
        {"Set", "Set expand", regtype::ExpandSz, sz("%TEMP%\\x")},
        {"Set", "Short dword", regtype::Dword, "ab"}};
    for (const auto& [key, name, type, data] : std::span(values).last(5)) {
        set(LocalMachine, kUninstall + "\\Set", name, type, data, 'X');
    }
    // All values, or all but the two Wine widens.
    const auto expectValues = [&](bool widened) {
        for (const auto& [key, name, type, data] : values) {
            std::uint32_t read = 0;
            const std::string got = value(LocalMachine, kUninstall + "\\" + key, name, &read);
            if (!widened || (name != "NoTerm" && name != "Short dword")) {
                EXPECT_EQ(std::pair(got, read), std::pair(data, type)) << name;
            }
        }
    };
    expectValues(false);
    const std::string exported = exportOf(root);
    ASSERT_EQ(machine->importReg("REGEDIT4\r\n[-" + root + "]\r\n"), "");
    // The import, like the program, works in the 32-bit view.
    const bool view64 = wineDiffers("reg import /reg:32 deletes a [-key] in the 64-bit view");
    ASSERT_EQ(value(LocalMachine, kUninstall + "\\Types", "Bin"),
              view64 ? std::string("\x01\x02\xff\x00", 4) : "<error 2>");
    ASSERT_EQ(machine->importReg(regeditFile(exported)), "");
    const bool widened =
        wineDiffers("reg export takes a REG_SZ as terminated, a REG_DWORD as 4 bytes");
    SCOPED_TRACE("exported and imported again");
    expectValues(widened);
    if (widened) {
        EXPECT_EQ(value(LocalMachine, kUninstall + "\\Set", "NoTerm"), sz("no terminato"));
        const std::string dword = value(LocalMachine, kUninstall + "\\Set", "Short dword");
        EXPECT_EQ(std::pair(dword.size(), dword.substr(0, 2)),
                  std::pair(size_t(4), std::string("ab")));
    }
}

// Key and value names compare without regard to case and keep the case they were made with;
// values stay in the order they were made, one set again keeps its place, and deleting one
// leaves the others readable. A key that is not there exports nothing.
TEST_F(RegistryConformance, NamesIgnoreCaseAndKeepTheirFirstCase) {
    const std::string path = own("CaseTest");
    set(CurrentUser, path, "Stays", regtype::Sz, sz("y"));
    set(CurrentUser, path, "Language", regtype::Sz, sz("de"));
    set(CurrentUser, inCase(path, true), "LANGUAGE", regtype::Sz, sz("fr"));
    EXPECT_EQ(value(CurrentUser, inCase(path, false), "language"), sz("fr"));
    const bool asTyped = wineDiffers("reg export writes the top key as typed");
    const bool sorted = wineDiffers("values are kept sorted by name, not in the order made");
    const std::string values[] = {"\"Stays\"=\"y\"\r\n", "\"Language\"=\"fr\"\r\n"};
    EXPECT_EQ(exportOf("HKEY_CURRENT_USER\\" + inCase(path, false)),
              kHeader + "\r\n[HKEY_CURRENT_USER\\" + (asTyped ? inCase(path, false) : path) +
                  "]\r\n" + (sorted ? values[1] + values[0] : values[0] + values[1]) + "\r\n");
    std::string none;
    EXPECT_FALSE(os().regEdit.exportKey("HKEY_CURRENT_USER\\" + own("None"), &none).ok);

    RegHandle key = 0;
    ASSERT_EQ(reg().RegOpenKeyA(CurrentUser, path, &key), status::Success);
    EXPECT_EQ(reg().RegDeleteValueA(key, "LANGUAGE"), status::Success);
    EXPECT_EQ(reg().RegDeleteValueA(key, "Language"), status::FileNotFound);
    EXPECT_EQ(value(key, "", "Stays"), sz("y"));
    reg().RegCloseKey(key);
}

// Into a buffer of n bytes: more than n needed -> 234 with the size, and the buffer is not
// written; a string stored with its terminator fits with n-1 characters; a string stored
// without one gets it added when there is room; other types are their bytes. A string set
// with a size that leaves out the terminator is stored with it when a NUL follows the data,
// as Windows NT counts it in. Without a buffer the call tells the size only; a buffer without
// a size is refused.
TEST_F(RegistryConformance, QueryBufferRules) {
    const std::string path = own("Buffers");
    set(CurrentUser, path, "With", regtype::Sz, sz("abc"));
    set(CurrentUser, path, "Counted", regtype::Sz, "abc");
    set(CurrentUser, path, "Without", regtype::Sz, "abc", 'X');
    set(CurrentUser, path, "Long255", regtype::Sz, std::string(255, 'y') + '\0');
    set(CurrentUser, path, "Number", regtype::Dword, std::string("AB\0\0", 4));
    RegHandle key = 0;
    ASSERT_EQ(open(CurrentUser, path, &key), status::Success);
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
        {"Number", 5, status::Success, 4, std::string("AB\0\0Z", 5)}};
    for (const auto& [name, buffer, status, size, data] : cases) {
        std::string read(buffer, 'Z');
        std::uint32_t readSize = buffer;
        const long result = reg().RegQueryValueExA(key, name, nullptr, bytesOf(read), &readSize);
        EXPECT_EQ(std::tuple(result, readSize, read), std::tuple(status, size, data))
            << name << " into " << buffer;
    }
    std::uint32_t size = 0, type = 0;
    std::string buffer(4, 'Z');
    EXPECT_EQ(reg().RegQueryValueExA(key, "Long255", &type, nullptr, &size), status::Success);
    EXPECT_EQ(std::pair(size, type), std::pair(256u, regtype::Sz));
    EXPECT_EQ(reg().RegQueryValueExA(key, "With", nullptr, bytesOf(buffer), nullptr),
              status::InvalidParameter);
    reg().RegCloseKey(key);
}

// A key name has at most 255 characters (87 for a longer one). With a 256-character buffer
// the names come back in the order Windows keeps subkeys (by their upper-cased names, not by
// creation; names that differ only in case are one key), and 259 ends the list.
TEST_F(RegistryConformance, EnumerationOfSubkeys) {
    const std::string longest(255, 'x');
    RegHandle key = 0;
    ASSERT_EQ(reg().RegCreateKeyA(CurrentUser, own("Enum"), &key), status::Success);
    for (const std::string name : {"b", "A", longest.c_str(), "c", "B"}) {
        EXPECT_EQ(set(key, name, "", regtype::Sz, ""), status::Success) << name;
    }
    const bool taken = wineDiffers("a key name of 256 characters is taken");
    EXPECT_EQ(set(key, longest + "y", "", regtype::Sz, ""),
              taken ? status::Success : status::InvalidParameter);
    if (taken) {
        EXPECT_EQ(reg().RegDeleteKeyA(key, longest + "y"), status::Success);
    }
    // The name at index into a buffer of size characters.
    const auto entry = [&](std::uint32_t index, std::uint32_t size) {
        char name[256] = {};
        const long result = reg().RegEnumKeyExA(key, index, name, &size);
        return answer(result, result == status::Success ? std::string(name, size) : "");
    };
    const std::string names[] = {"A", "b", "c", longest, "<error 259>"};
    for (std::uint32_t i = 0; i < 5; ++i) {
        EXPECT_EQ(entry(i, 256), names[i]);
    }
    EXPECT_EQ(entry(0, 1) + entry(3, 255) + entry(0, 2), "<error 234><error 234>A");
    reg().RegCloseKey(key);
}

// Opening a missing key answers 2 and creates nothing; RegCreateKeyA makes every missing key
// on the path; an empty subkey is the key itself, RegOpenKeyA gives back the very handle;
// trailing "\" are ignored, a leading one is a bad path (161); a closed handle is no longer
// valid. A key opened for reading refuses changes with 5, one opened for writing refuses
// reads. A key goes only when it has no subkeys of its own; a handle open on it then finds it
// gone.
TEST_F(RegistryConformance, KeysOpenGrantAndGoAsWindowsHasThem) {
    RegHandle key = 0, same = 0, reader = 0, writer = 0;
    EXPECT_EQ(open(CurrentUser, own("Made\\In"), &key), status::FileNotFound);
    EXPECT_EQ(reg().RegOpenKeyA(CurrentUser, own("Made"), &key), status::FileNotFound);
    ASSERT_EQ(set(CurrentUser, own("Made\\In\\Between"), "v", regtype::Sz, sz("1")), 0);
    ASSERT_EQ(reg().RegOpenKeyA(CurrentUser, own("Made\\In"), &key), status::Success);
    EXPECT_EQ(reg().RegOpenKeyA(key, "", &same), status::Success);
    EXPECT_EQ(same, key);
    EXPECT_EQ(open(key, "", &same), status::Success);
    EXPECT_EQ(value(same, "Between", "v"), sz("1"));
    reg().RegCloseKey(same);
    reg().RegCloseKey(key);
    EXPECT_EQ(value(CurrentUser, own("Made\\In\\Between\\"), "v"), sz("1"));
    EXPECT_EQ(open(CurrentUser, "\\" + own("Made"), &key), 161);
    EXPECT_EQ(reg().RegCloseKey(same), status::InvalidHandle);
    EXPECT_EQ(reg().RegQueryValueExA(same, "v", nullptr, nullptr, nullptr), status::InvalidHandle);

    std::string two = "2";
    open(CurrentUser, own("Made"), &reader);
    open(CurrentUser, own("Made"), &writer, access::KeyWrite);
    EXPECT_EQ(reg().RegSetValueExA(reader, "v", regtype::Sz, bytesOf(two), 2),
              status::AccessDenied);
    EXPECT_EQ(reg().RegDeleteValueA(reader, "v"), status::AccessDenied);
    EXPECT_EQ(reg().RegSetValueExA(writer, "v", regtype::Sz, bytesOf(two), 2), status::Success);
    EXPECT_EQ(reg().RegQueryValueExA(writer, "v", nullptr, nullptr, nullptr), status::AccessDenied);
    reg().RegCloseKey(reader);
    reg().RegCloseKey(writer);

    ASSERT_EQ(open(CurrentUser, own("Made\\In\\Between"), &key), status::Success);
    EXPECT_EQ(reg().RegDeleteKeyA(CurrentUser, own("Made\\In")), status::AccessDenied);
    EXPECT_EQ(reg().RegDeleteKeyA(CurrentUser, inCase(own("Made\\In"), false) + "\\BETWEEN"), 0);
    EXPECT_NE(reg().RegQueryValueExA(key, "v", nullptr, nullptr, nullptr), status::Success);
    reg().RegCloseKey(key);
    EXPECT_EQ(reg().RegDeleteKeyA(CurrentUser, own("Made\\In\\Between")), status::FileNotFound);
    EXPECT_EQ(reg().RegDeleteKeyA(CurrentUser, own("Made\\In")), status::Success);
    EXPECT_EQ(value(CurrentUser, own("Made\\In"), ""), "<error 2>");
}

// regedit passes over lines that are not key or value lines, and the values of a key line
// whose root it does not know; hex data goes on after ",\" on an indented line; [-key]
// deletes a key with all below it, "name"=- a value; in REGEDIT4 the string types in hex are
// ANSI. A file that does not begin with regedit's header line imports nothing.
TEST_F(RegistryConformanceIn1252, ImportDoesWhatRegeditDoes) {
    const std::string key = own("Lenient");
    set(CurrentUser, own("Old\\Deep"), "a", regtype::Sz, sz("1"));
    set(CurrentUser, key, "a", regtype::Sz, sz("1"));
    ASSERT_EQ(
        machine->importReg("  REGEDIT4\n; a comment\rnot a line regedit knows\r\n[HKEY_NOWHERE\\" +
                           key + "]\r\n\"skipped\"=\"1\"\r\n[-HKEY_CURRENT_USER\\" + own("Old") +
                           "]\r\n\"after delete\"=\"not set\"\r\n[hkey_current_user\\" + key +
                           "]\r\n  \"spaced\" = \"yes\" ; why\r\n\"escapes\"=\"a\\tb\\nc\"\r\n"
                           "\"wrapped\"=hex:41,\\\r\n      42\r\n@=dword:ABC\r\n\"a\"=-\r\n"
                           "\"ansi\"=hex(2):e4,00\r\n"),
        "");
    const std::pair<const char*, std::string> values[] = {
        {"spaced", sz("yes")},   {"escapes", sz("atb\nc")},
        {"wrapped", "AB"},       {"", std::string("\xbc\x0a\0\0", 4)},
        {"ansi", sz("\xe4")},    {"a", "<error 2>"},
        {"skipped", "<error 2>"}};
    for (const auto& [name, data] : values) {
        EXPECT_EQ(value(CurrentUser, key, name), data) << name;
    }
    EXPECT_EQ(value(CurrentUser, own("Old"), ""), "<error 2>");

    const std::string headless = "[HKEY_CURRENT_USER\\" + own("Headless") + "]\r\n\"ok\"=\"1\"\r\n";
    for (const std::string& text :
         {"REGEDIT5\r\n\r\n" + headless, "Windows Registry Editor Version 5.0\r\n" + headless,
          "windows registry editor version 5.00\r\n" + headless, "\r\n" + headless, headless,
          std::string()}) {
        machine->importReg(text);
        EXPECT_EQ(value(CurrentUser, own("Headless"), "ok"), "<error 2>") << text;
    }
}

}  // namespace
