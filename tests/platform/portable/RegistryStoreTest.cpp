// The store files behind the portable registry: what is on disk, damaged files, and several
// processes using one store. Each store object stands for a process of its own.
#include <gtest/gtest.h>

#include <QProcess>
#include <QTemporaryDir>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>

#include "platform/portable/PortableCodePage.h"
#include "platform/portable/PortableRegistry.h"

namespace {

using namespace platform;
using platform::portable::PortableRegistry;
namespace fs = std::filesystem;

std::string readFile(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

void writeFile(const fs::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary) << bytes;
}

long setString(Registry& registry, const std::string& name, const std::string& data) {
    RegHandle key = 0;
    long result = registry.RegCreateKeyA(hkey::CurrentUser, "Software\\App", &key);
    if (result == status::Success) {
        result = registry.RegSetValueExA(key, name, regtype::Sz,
                                         reinterpret_cast<const std::uint8_t*>(data.c_str()),
                                         std::uint32_t(data.size() + 1));
        registry.RegCloseKey(key);
    }
    return result;
}

// The string, or "<error N>".
std::string getString(Registry& registry, const std::string& name,
                      RegHandle root = hkey::CurrentUser,
                      const std::string& path = "Software\\App") {
    RegHandle key = 0;
    long result = registry.RegOpenKeyExA(root, path, 0, access::KeyRead, &key);
    char buffer[256];
    std::uint32_t size = sizeof buffer;
    if (result == status::Success) {
        result = registry.RegQueryValueExA(key, name, nullptr,
                                           reinterpret_cast<std::uint8_t*>(buffer), &size);
        registry.RegCloseKey(key);
    }
    return result == status::Success ? buffer : "<error " + std::to_string(result) + ">";
}

class RegistryStoreTest : public ::testing::Test {
protected:
    QTemporaryDir dir;
    const fs::path temp = dir.path().toStdString();
    const fs::path folder = temp / "registry";
    const fs::path userFile = folder / "HKEY_CURRENT_USER.reg";
    platform::portable::PortableCodePage codePage{1252};
};

// A root is kept in <ROOT>.reg as regedit exports it; a missing file is an empty root, and
// reading writes nothing.
TEST_F(RegistryStoreTest, StoreFilesAreRegeditExportsAndAMissingOneIsAnEmptyRoot) {
    PortableRegistry registry(folder, codePage);
    EXPECT_EQ(getString(registry, "x"), "<error 2>");
    EXPECT_FALSE(fs::exists(folder));
    ASSERT_EQ(setString(registry, "Name", "Gr\xfc\xdf\x65"), status::Success);
    const std::string bytes = readFile(userFile);
    EXPECT_EQ(bytes.substr(0, 2), "\xff\xfe");
    EXPECT_EQ(
        std::u16string(reinterpret_cast<const char16_t*>(bytes.data() + 2), (bytes.size() - 2) / 2),
        u"Windows Registry Editor Version 5.00\r\n\r\n[HKEY_CURRENT_USER]\r\n\r\n"
        u"[HKEY_CURRENT_USER\\Software]\r\n\r\n[HKEY_CURRENT_USER\\Software\\App]\r\n"
        u"\"Name\"=\"Grüße\"\r\n\r\n");
    EXPECT_FALSE(fs::exists(folder / "HKEY_LOCAL_MACHINE.reg"));
    EXPECT_FALSE(fs::exists(folder / "HKEY_CURRENT_USER.reg.tmp"));
}

// A file that does not parse, or that holds keys of another root (saving would drop them), is
// reported with its name and line once per process and version; every call on its root
// answers 1009, even an import that also touches other roots imports nothing, and the file is
// left byte for byte until it is repaired.
TEST_F(RegistryStoreTest, ADamagedFileAnswers1009AndIsNeverOverwritten) {
    const std::string head =
        "Windows Registry Editor Version 5.00\r\n\r\n"
        "[HKEY_CURRENT_USER\\Software\\App]\r\n\"a\"=\"1\"\r\n";
    const fs::path import = temp / "both.reg";
    writeFile(import,
              "REGEDIT4\r\n[HKEY_LOCAL_MACHINE\\Software\\Both]\r\n\"v\"=\"1\"\r\n"
              "[HKEY_CURRENT_USER\\Software\\Both]\r\n\"v\"=\"1\"\r\n");
    for (const std::string& damaged :
         {head + "\"b\"=hex:zz\r\n", head + "[HKEY_LOCAL_MACHINE\\Software\\Misplaced]\r\n"}) {
        SCOPED_TRACE(damaged);
        fs::remove_all(folder);
        PortableRegistry registry(folder, codePage);
        ASSERT_EQ(setString(registry, "a", "0"), status::Success);
        RegHandle open = 0, key = 0;
        ASSERT_EQ(registry.RegOpenKeyA(hkey::CurrentUser, "Software\\App", &open), status::Success);
        writeFile(userFile, damaged);

        testing::internal::CaptureStderr();
        char name[256];
        std::uint32_t size = sizeof name;
        std::string text;
        const long corrupt = status::RegistryCorrupt;
        EXPECT_EQ(registry.RegOpenKeyA(hkey::CurrentUser, "Software\\App", &key), corrupt);
        EXPECT_EQ(registry.RegCreateKeyA(hkey::CurrentUser, "Software\\New", &key), corrupt);
        EXPECT_EQ(registry.RegSetValueExA(open, "c", regtype::Sz, nullptr, 0), corrupt);
        EXPECT_EQ(registry.RegQueryValueExA(open, "a", nullptr, nullptr, &size), corrupt);
        EXPECT_EQ(registry.RegDeleteValueA(open, "a"), corrupt);
        EXPECT_EQ(registry.RegEnumKeyExA(hkey::CurrentUser, 0, name, &size), corrupt);
        EXPECT_FALSE(registry.exportKey("HKEY_CURRENT_USER\\Software", &text).ok);
        const auto imported = registry.importFile(import.string());
        EXPECT_NE(imported.message.find("HKEY_CURRENT_USER.reg:5: "), std::string::npos)
            << imported.message;
        EXPECT_EQ(getString(registry, "v", hkey::LocalMachine, "Software\\Both"), "<error 2>");
        PortableRegistry other(folder, codePage);
        EXPECT_EQ(setString(other, "a", "2"), corrupt);
        const std::string errors = testing::internal::GetCapturedStderr();

        EXPECT_EQ(readFile(userFile), damaged);
        EXPECT_NE(registry.lastProblem().find("HKEY_CURRENT_USER.reg:5: "), std::string::npos)
            << registry.lastProblem();
        const std::regex report(R"(\.reg:5: )");
        EXPECT_EQ(std::distance(std::sregex_iterator(errors.begin(), errors.end(), report),
                                std::sregex_iterator()),
                  2)
            << errors;

        writeFile(userFile, head);
        EXPECT_EQ(getString(registry, "a"), "1");
        EXPECT_EQ(setString(registry, "b", "2"), status::Success);
    }
}

// A change through one process is seen by the other at its next call, even when the file keeps
// its size, is rewritten within one tick of the file clock and gets back the inode of the
// version before. A key that goes while a handle of it is open answers 1018.
TEST_F(RegistryStoreTest, AChangeByAnotherProcessIsSeenAtTheNextCall) {
    PortableRegistry first(folder, codePage), second(folder, codePage);
    for (char digit = '0'; digit <= '9'; ++digit) {
        ASSERT_EQ(setString(first, "v", "x"), status::Success);
        ASSERT_EQ(setString(first, "v", std::string(1, digit)), status::Success);
        ASSERT_EQ(getString(second, "v"), std::string(1, digit));
    }
    RegHandle key = 0;
    ASSERT_EQ(second.RegOpenKeyA(hkey::CurrentUser, "Software\\App", &key), status::Success);
    EXPECT_EQ(second.RegDeleteValueA(key, "v"), status::Success);
    EXPECT_EQ(getString(first, "v"), "<error 2>");
    writeFile(temp / "delete.reg", "REGEDIT4\r\n[-HKEY_CURRENT_USER\\Software\\App]\r\n");
    ASSERT_TRUE(first.importFile((temp / "delete.reg").string()).ok);
    EXPECT_EQ(second.RegSetValueExA(key, "v", regtype::Sz, nullptr, 0), 1018);
}

TEST_F(RegistryStoreTest, TwoProcessesWritingIntoOneKeyLoseNothing) {
    constexpr int kCount = 500;
    QProcess writers[2];
    const std::string prefixes[2] = {"first", "second"};
    for (int i = 0; i < 2; ++i) {
        writers[i].setProcessChannelMode(QProcess::ForwardedChannels);
        writers[i].start(REGISTRY_WRITER,
                         {QString::fromStdString(folder.string()), "Software\\Race",
                          QString::fromStdString(prefixes[i]), QString::number(kCount)});
    }
    for (QProcess& writer : writers) {
        ASSERT_TRUE(writer.waitForFinished(300'000));
        EXPECT_EQ(writer.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(writer.exitCode(), 0);
    }
    PortableRegistry registry(folder, codePage);
    int found = 0;
    for (const std::string& prefix : prefixes) {
        for (int i = 0; i < kCount; ++i) {
            found += getString(registry, prefix + std::to_string(i), hkey::LocalMachine,
                               "Software\\Race") == "value " + std::to_string(i);
        }
    }
    EXPECT_EQ(found, 2 * kCount);
}

}  // namespace
