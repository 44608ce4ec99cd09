#include <gtest/gtest.h>

#include "state/modRegistry.h"
#include "support/TestMachine.h"

namespace {

const QString kKey = "HKEY_LOCAL_MACHINE\\Software\\Tallowick";

class ModRegistryTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(registry.CreateKey(kKey), 0); }

    // Stores raw bytes of a given type, as another program or an installer would.
    void setRaw(const QString& name, std::uint32_t type, const std::string& bytes) {
        auto& raw = machine.platform().registry;
        platform::RegHandle key = 0;
        ASSERT_EQ(raw.RegOpenKeyExA(platform::hkey::LocalMachine, "Software\\Tallowick", 0,
                                    platform::access::KeyWrite, &key),
                  0);
        ASSERT_EQ(raw.RegSetValueExA(key, name.toStdString(), type,
                                     reinterpret_cast<const std::uint8_t*>(bytes.data()),
                                     std::uint32_t(bytes.size())),
                  0);
        raw.RegCloseKey(key);
    }

    testing_support::TestMachine machine;
    state::modRegistry registry{machine.platform()};
};

// Blanks are trimmed, tabs are not; names and keys match in any case; the code page carries
// the umlauts.
TEST_F(ModRegistryTest, StringsReadBackTrimmedOfBlanksOnly) {
    for (const auto& [written, read] : {std::pair<QString, QString>{"  de ", "de"},
                                        {"     ", ""},
                                        {"\tx\t", "\tx\t"},
                                        {QString::fromUtf8("Grüße"), QString::fromUtf8("Grüße")}}) {
        registry.SetStringValue(kKey, "Language", written);
        EXPECT_EQ(registry.lastStatus(), 0);
        EXPECT_EQ(registry.GetStringValue("HKEY_LOCAL_MACHINE\\SOFTWARE\\tallowick", "LANGUAGE"),
                  read);
    }
}

// The text goes without its terminator; Windows counts the NUL behind it in memory.
TEST_F(ModRegistryTest, WritesStoreTheTerminatorWindowsAdds) {
    registry.SetStringValue(kKey, "Version", "1.2.3");
    auto& raw = machine.platform().registry;
    platform::RegHandle key = 0;
    ASSERT_EQ(raw.RegOpenKeyExA(platform::hkey::LocalMachine, "Software\\Tallowick", 0,
                                platform::access::KeyRead, &key),
              0);
    std::uint32_t size = 0;
    ASSERT_EQ(raw.RegQueryValueExA(key, "Version", nullptr, nullptr, &size), 0);
    raw.RegCloseKey(key);
    EXPECT_EQ(size, 6u);
    EXPECT_EQ(registry.GetStringValue(kKey, "Version"), "1.2.3");
}

// Failures read as the word "Error"; 254 characters and the terminator fill the 255-character
// buffer, one more does not fit.
TEST_F(ModRegistryTest, FailuresAndLongValuesReadAsTheWordError) {
    EXPECT_EQ(registry.GetStringValue(kKey, "Missing"), "Error");
    EXPECT_EQ(registry.GetStringValue(kKey + "\\Missing", "Language"), "Error");
    EXPECT_EQ(registry.GetDwordValue(kKey, "Missing").toString(), "Error");
    EXPECT_EQ(registry.GetStringValue("HKEY_CLASSES_ROOT\\NoSuchClass", ""), "Error");
    registry.SetStringValue(kKey + "\\Missing", "Language", "de");
    EXPECT_NE(registry.lastStatus(), 0);

    setRaw("Fits", platform::regtype::Sz, std::string(254, 'a') + '\0');
    setRaw("TooLong", platform::regtype::Sz, std::string(255, 'a') + '\0');
    EXPECT_EQ(registry.GetStringValue(kKey, "Fits"), QString(254, 'a'));
    EXPECT_EQ(registry.GetStringValue(kKey, "TooLong"), "Error");
    registry.SetStringValue(kKey, "Written", QString(300, 'b'));
    EXPECT_EQ(registry.GetStringValue(kKey, "Written"), "Error");
    // The default value has the empty name.
    EXPECT_EQ(registry.GetStringValue("HKEY_CLASSES_ROOT\\Directory", ""), "File Folder");
}

// The readers do not look at the type: a string gets the bytes up to the first NUL, a dword
// four bytes of anything; five bytes, a string's terminator with them, do not fit.
TEST_F(ModRegistryTest, ReadersTakeTheBytesOfAnyType) {
    struct Case {
        const char* name;
        std::uint32_t type;
        std::string bytes;
        QString text;
        QVariant dword;
    };
    const Case cases[] = {
        {"Binary", platform::regtype::Binary, std::string("AB\0CD", 5), "AB", "Error"},
        {"Dword", platform::regtype::Dword, std::string("\x31\x32\x00\x00", 4), "12", 0x3231},
        {"Unterminated", platform::regtype::Binary, "xyz", "xyz", 0x7a7978},
        {"Minus", platform::regtype::Dword, "\xff\xff\xff\xff", QString(4, u'\u00ff'), -1},
        {"Short", platform::regtype::Binary, "\x05", "\x05", 5},
        {"Four", platform::regtype::Sz, std::string("abc\0", 4), "abc", 0x00636261},
        {"Five", platform::regtype::Sz, std::string("abcd\0", 5), "abcd", "Error"},
    };
    for (const Case& c : cases) {
        setRaw(c.name, c.type, c.bytes);
        EXPECT_EQ(registry.GetStringValue(kKey, c.name), c.text) << c.name;
        EXPECT_EQ(registry.GetDwordValue(kKey, c.name), c.dword) << c.name;
    }
}

// A path that does not split reuses the root of the call before, with the whole text as the sub
// key; a root name is matched exactly, and an unknown one gives nothing.
TEST_F(ModRegistryTest, RootsAndPathsThatDoNotSplit) {
    registry.CreateKey("HKEY_CURRENT_USER\\Software\\Tallowick");
    registry.SetStringValue("HKEY_CURRENT_USER\\Software\\Tallowick", "Language", "fr");
    registry.SetStringValue(kKey, "Language", "de");

    EXPECT_EQ(registry.GetStringValue(kKey + "\\", "Language"), "Error");
    EXPECT_EQ(registry.GetStringValue("Software\\Tallowick", "Language"), "de");
    registry.GetStringValue("HKEY_CURRENT_USER\\Software", "x");
    EXPECT_EQ(registry.GetStringValue("Software\\Tallowick", "Language"), "fr");
    EXPECT_EQ(registry.GetStringValue("HKEY_local_machine\\Software\\Tallowick", "Language"), "");
    EXPECT_FALSE(registry.GetDwordValue("HKEY_BOGUS\\Software", "x").isValid());
}

TEST_F(ModRegistryTest, CreateAndDelete) {
    EXPECT_EQ(registry.CreateKey(kKey + "\\A\\B\\C"), 0);
    registry.SetStringValue(kKey + "\\A\\B\\C", "V", "1");
    EXPECT_EQ(registry.GetStringValue(kKey + "\\a\\b\\c", "v"), "1");
    registry.DeleteValue(kKey + "\\A\\B\\C", "V");
    EXPECT_EQ(registry.lastStatus(), 0);
    EXPECT_EQ(registry.GetStringValue(kKey + "\\A\\B\\C", "V"), "Error");
    registry.DeleteValue(kKey + "\\Missing", "V");
    EXPECT_NE(registry.lastStatus(), 0);
}

TEST(RegistryErrorText, NamesTheLanguageVariable) {
    const auto echo = [](const QString& name) { return "<" + name + ">"; };
    EXPECT_EQ(state::modRegistry::RegistryErrorText(234, echo), "<strLoc_SH_ErrMSg_Overflow>");
    EXPECT_EQ(state::modRegistry::RegistryErrorText(1015, echo),
              "<strLoc_SH_ErrMSg_RegistryCorrupt>");
    EXPECT_EQ(state::modRegistry::RegistryErrorText(6, echo), "<strLoc_SH_ErrMSg_UndefinedErr> 6");
}

}  // namespace
