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

TEST_F(ModRegistryTest, StringsReadBackTrimmedOfBlanksOnly) {
    registry.SetStringValue(kKey, "Language", "  de ");
    EXPECT_EQ(registry.lastStatus(), 0);
    EXPECT_EQ(registry.GetStringValue(kKey, "Language"), "de");
    EXPECT_EQ(registry.GetStringValue("HKEY_LOCAL_MACHINE\\SOFTWARE\\tallowick", "LANGUAGE"), "de");
    registry.SetStringValue(kKey, "Blanks", "     ");
    EXPECT_EQ(registry.GetStringValue(kKey, "Blanks"), "");
    registry.SetStringValue(kKey, "Tab", "\tx\t");
    EXPECT_EQ(registry.GetStringValue(kKey, "Tab"), "\tx\t");
    registry.SetStringValue(kKey, "Umlaut", QString::fromUtf8("Grüße"));
    EXPECT_EQ(registry.GetStringValue(kKey, "Umlaut"), QString::fromUtf8("Grüße"));
}

// The program's writes carry no terminator, and its reads must not need one.
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

TEST_F(ModRegistryTest, FailuresReadAsTheWordError) {
    EXPECT_EQ(registry.GetStringValue(kKey, "Missing"), "Error");
    EXPECT_EQ(registry.GetStringValue(kKey + "\\Missing", "Language"), "Error");
    EXPECT_EQ(registry.GetDwordValue(kKey, "Missing").toString(), "Error");
    registry.SetStringValue(kKey + "\\Missing", "Language", "de");
    EXPECT_NE(registry.lastStatus(), 0);
}

// 254 characters and the terminator fill the 255-character buffer; one more does not fit.
TEST_F(ModRegistryTest, ReadBufferHoldsAtMost254Characters) {
    setRaw("Fits", platform::regtype::Sz, std::string(254, 'a') + '\0');
    setRaw("TooLong", platform::regtype::Sz, std::string(255, 'a') + '\0');
    EXPECT_EQ(registry.GetStringValue(kKey, "Fits"), QString(254, 'a'));
    EXPECT_EQ(registry.GetStringValue(kKey, "TooLong"), "Error");
    registry.SetStringValue(kKey, "Written", QString(300, 'b'));
    EXPECT_EQ(registry.GetStringValue(kKey, "Written"), "Error");
}

// The reader does not look at the type: it gets the bytes, up to the first NUL.
TEST_F(ModRegistryTest, OtherTypesReadAsTheirBytes) {
    setRaw("Binary", platform::regtype::Binary, std::string("AB\0CD", 5));
    setRaw("Dword", platform::regtype::Dword, std::string("\x31\x32\x00\x00", 4));
    setRaw("Unterminated", platform::regtype::Binary, "xyz");
    EXPECT_EQ(registry.GetStringValue(kKey, "Binary"), "AB");
    EXPECT_EQ(registry.GetStringValue(kKey, "Dword"), "12");
    EXPECT_EQ(registry.GetStringValue(kKey, "Unterminated"), "xyz");
}

TEST_F(ModRegistryTest, DwordReadsTakeFourBytesOfAnyType) {
    setRaw("Count", platform::regtype::Dword, std::string("\x2a\x00\x00\x00", 4));
    setRaw("Minus", platform::regtype::Dword, std::string("\xff\xff\xff\xff", 4));
    setRaw("Short", platform::regtype::Binary, std::string("\x05", 1));
    registry.SetStringValue(kKey, "Four", "abc");
    EXPECT_EQ(registry.GetDwordValue(kKey, "Count"), QVariant(42));
    EXPECT_EQ(registry.GetDwordValue(kKey, "Minus"), QVariant(-1));
    EXPECT_EQ(registry.GetDwordValue(kKey, "Short"), QVariant(5));
    EXPECT_EQ(registry.GetDwordValue(kKey, "Four"), QVariant(0x00636261));
    // Five bytes, the terminator with them, do not fit the four-byte buffer.
    registry.SetStringValue(kKey, "Five", "abcd");
    EXPECT_EQ(registry.GetDwordValue(kKey, "Five").toString(), "Error");
}

TEST_F(ModRegistryTest, DefaultValueHasTheEmptyName) {
    EXPECT_EQ(registry.GetStringValue("HKEY_CLASSES_ROOT\\Directory", ""), "File Folder");
    EXPECT_EQ(registry.GetStringValue("HKEY_CLASSES_ROOT\\NoSuchClass", ""), "Error");
}

// A root name is matched exactly; an unknown one gives nothing, not the failure word.
TEST_F(ModRegistryTest, UnknownRootGivesEmptyText) {
    registry.SetStringValue(kKey, "Language", "de");
    EXPECT_EQ(registry.GetStringValue("HKEY_local_machine\\Software\\Tallowick", "Language"), "");
    EXPECT_FALSE(registry.GetDwordValue("HKEY_BOGUS\\Software", "x").isValid());
}

// A path that does not split reuses the root of the call before, with the whole text as
// the sub key.
TEST_F(ModRegistryTest, MalformedPathKeepsThePreviousRoot) {
    registry.CreateKey("HKEY_CURRENT_USER\\Software\\Tallowick");
    registry.SetStringValue("HKEY_CURRENT_USER\\Software\\Tallowick", "Language", "fr");
    registry.SetStringValue(kKey, "Language", "de");

    EXPECT_EQ(registry.GetStringValue(kKey + "\\", "Language"), "Error");
    EXPECT_EQ(registry.GetStringValue("Software\\Tallowick", "Language"), "de");
    registry.GetStringValue("HKEY_CURRENT_USER\\Software", "x");
    EXPECT_EQ(registry.GetStringValue("Software\\Tallowick", "Language"), "fr");
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
