// The store files behind the portable registry: what is on disk, damaged files, and several
// processes using one store.
#include <gtest/gtest.h>

#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "platform/portable/PortableCodePage.h"
#include "platform/portable/PortableRegistry.h"

namespace {

using namespace platform;
using platform::portable::PortableCodePage;
using platform::portable::PortableRegistry;
namespace fs = std::filesystem;

const std::uint8_t* bytesOf(const std::string& text) {
    return reinterpret_cast<const std::uint8_t*>(text.data());
}

std::string readFile(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

void writeFile(const fs::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary) << bytes;
}

long setString(Registry& registry, const std::string& keyPath, const std::string& name,
               const std::string& data) {
    RegHandle key = 0;
    long result = registry.RegCreateKeyA(hkey::CurrentUser, keyPath, &key);
    if (result == status::Success) {
        result = registry.RegSetValueExA(key, name, regtype::Sz, bytesOf(data),
                                         std::uint32_t(data.size() + 1));
        registry.RegCloseKey(key);
    }
    return result;
}

std::string getString(Registry& registry, RegHandle root, const std::string& keyPath,
                      const std::string& name) {
    RegHandle key = 0;
    long result = registry.RegOpenKeyExA(root, keyPath, 0, access::KeyRead, &key);
    if (result != status::Success) {
        return "<error " + std::to_string(result) + ">";
    }
    char buffer[256];
    std::uint32_t size = sizeof buffer;
    result = registry.RegQueryValueExA(key, name, nullptr, reinterpret_cast<std::uint8_t*>(buffer),
                                       &size);
    registry.RegCloseKey(key);
    return result == status::Success ? std::string(buffer)
                                     : "<error " + std::to_string(result) + ">";
}

class RegistryStoreTest : public ::testing::Test {
protected:
    fs::path folder() const { return fs::path(dir_.path().toStdString()) / "registry"; }
    fs::path userFile() const { return folder() / "HKEY_CURRENT_USER.reg"; }

    QTemporaryDir dir_;
    PortableCodePage codePage_{1252};
};

TEST_F(RegistryStoreTest, StoreFilesAreRegeditExportsAndAMissingOneIsAnEmptyRoot) {
    PortableRegistry registry(folder(), codePage_);
    RegHandle key = 0;
    EXPECT_EQ(registry.RegOpenKeyA(hkey::CurrentUser, "Software", &key), status::FileNotFound);
    EXPECT_FALSE(fs::exists(folder()));

    ASSERT_EQ(setString(registry, "Software\\App", "Name",
                        "Gr\xfc\xdf"
                        "e"),
              status::Success);
    const std::string bytes = readFile(userFile());
    const std::u16string text(reinterpret_cast<const char16_t*>(bytes.data() + 2),
                              (bytes.size() - 2) / 2);
    EXPECT_EQ(bytes.substr(0, 2), "\xff\xfe");
    EXPECT_EQ(text,
              u"Windows Registry Editor Version 5.00\r\n\r\n"
              u"[HKEY_CURRENT_USER]\r\n\r\n"
              u"[HKEY_CURRENT_USER\\Software]\r\n\r\n"
              u"[HKEY_CURRENT_USER\\Software\\App]\r\n"
              u"\"Name\"=\"Grüße\"\r\n\r\n");
    EXPECT_FALSE(fs::exists(folder() / "HKEY_LOCAL_MACHINE.reg"));
    EXPECT_FALSE(fs::exists(folder() / "HKEY_CURRENT_USER.reg.tmp"));
}

// A value the program wrote without its terminator is read back from the file without one.
TEST_F(RegistryStoreTest, ReloadedValuesKeepTheirBytes) {
    {
        PortableRegistry writer(folder(), codePage_);
        RegHandle key = 0;
        ASSERT_EQ(writer.RegCreateKeyA(hkey::CurrentUser, "Software\\Bytes", &key),
                  status::Success);
        writer.RegSetValueExA(key, "NoTerm", regtype::Sz, bytesOf("abc"), 3);
        writer.RegSetValueExA(key, "Odd", regtype::ExpandSz, bytesOf("a\0b"), 3);
        writer.RegCloseKey(key);
    }
    PortableRegistry reader(folder(), codePage_);
    RegHandle key = 0;
    ASSERT_EQ(reader.RegOpenKeyA(hkey::CurrentUser, "Software\\Bytes", &key), status::Success);
    std::uint32_t size = 0;
    EXPECT_EQ(reader.RegQueryValueExA(key, "NoTerm", nullptr, nullptr, &size), status::Success);
    EXPECT_EQ(size, 3u);
    EXPECT_EQ(reader.RegQueryValueExA(key, "Odd", nullptr, nullptr, &size), status::Success);
    EXPECT_EQ(size, 3u);
}

TEST_F(RegistryStoreTest, ADamagedFileAnswers1009AndIsNeverOverwritten) {
    PortableRegistry registry(folder(), codePage_);
    ASSERT_EQ(setString(registry, "Software\\App", "a", "1"), status::Success);
    RegHandle openBefore = 0;
    ASSERT_EQ(registry.RegOpenKeyA(hkey::CurrentUser, "Software\\App", &openBefore),
              status::Success);
    const std::string damaged =
        "Windows Registry Editor Version 5.00\r\n\r\n"
        "[HKEY_CURRENT_USER\\Software\\App]\r\n"
        "\"a\"=\"1\"\r\n"
        "\"b\"=hex:zz\r\n";
    writeFile(userFile(), damaged);

    testing::internal::CaptureStderr();
    RegHandle key = 0;
    char name[256];
    std::uint32_t size = sizeof name;
    const long corrupt = status::RegistryCorrupt;
    EXPECT_EQ(registry.RegOpenKeyA(hkey::CurrentUser, "Software\\App", &key), corrupt);
    EXPECT_EQ(registry.RegCreateKeyA(hkey::CurrentUser, "Software\\New", &key), corrupt);
    EXPECT_EQ(registry.RegSetValueExA(openBefore, "c", regtype::Sz, bytesOf("x"), 2), corrupt);
    EXPECT_EQ(registry.RegQueryValueExA(openBefore, "a", nullptr, nullptr, &size), corrupt);
    EXPECT_EQ(registry.RegDeleteValueA(openBefore, "a"), corrupt);
    EXPECT_EQ(registry.RegEnumKeyExA(hkey::CurrentUser, 0, name, &size), corrupt);
    std::string text;
    EXPECT_FALSE(registry.exportKey("HKEY_CURRENT_USER\\Software", &text).ok);
    // An import that touches the damaged root imports nothing, not even into other roots.
    const fs::path import = fs::path(dir_.path().toStdString()) / "both.reg";
    writeFile(import,
              "REGEDIT4\r\n[HKEY_LOCAL_MACHINE\\Software\\Both]\r\n\"v\"=\"1\"\r\n"
              "[HKEY_CURRENT_USER\\Software\\Both]\r\n\"v\"=\"1\"\r\n");
    const auto imported = registry.importFile(import.string());
    EXPECT_FALSE(imported.ok);
    EXPECT_NE(imported.message.find("HKEY_CURRENT_USER.reg:5: "), std::string::npos)
        << imported.message;
    EXPECT_EQ(getString(registry, hkey::LocalMachine, "Software\\Both", "v"), "<error 2>");
    // Another process meets the same file the same way.
    PortableRegistry other(folder(), codePage_);
    EXPECT_EQ(setString(other, "Software\\App", "a", "2"), corrupt);
    const std::string errors = testing::internal::GetCapturedStderr();

    EXPECT_EQ(readFile(userFile()), damaged);
    EXPECT_FALSE(fs::exists(folder() / "HKEY_CURRENT_USER.reg.tmp"));
    EXPECT_NE(registry.lastProblem().find("HKEY_CURRENT_USER.reg:5: "), std::string::npos)
        << registry.lastProblem();
    // Reported once per process and version of the file, not once per call.
    const auto reports = [&](const std::string& what) {
        size_t count = 0;
        for (size_t at = errors.find(what); at != std::string::npos;
             at = errors.find(what, at + 1)) {
            ++count;
        }
        return count;
    };
    EXPECT_EQ(reports("HKEY_CURRENT_USER.reg:5: "), 2u) << errors;
    EXPECT_EQ(getString(registry, hkey::LocalMachine, "Software", "x"), "<error 2>");

    // Once repaired, the root works again.
    writeFile(userFile(),
              "Windows Registry Editor Version 5.00\r\n\r\n"
              "[HKEY_CURRENT_USER\\Software\\App]\r\n\"a\"=\"3\"\r\n");
    EXPECT_EQ(getString(registry, hkey::CurrentUser, "Software\\App", "a"), "3");
    EXPECT_EQ(setString(registry, "Software\\App", "b", "4"), status::Success);
}

// Saving the tree would drop what it could not take in, so such a file counts as damaged.
TEST_F(RegistryStoreTest, AFileWithKeysOfAnotherRootIsDamaged) {
    fs::create_directories(folder());
    const std::string misplaced =
        "Windows Registry Editor Version 5.00\r\n\r\n"
        "[HKEY_CURRENT_USER\\Software]\r\n\r\n"
        "[HKEY_LOCAL_MACHINE\\Software\\Misplaced]\r\n\"v\"=\"1\"\r\n";
    writeFile(userFile(), misplaced);
    PortableRegistry registry(folder(), codePage_);
    testing::internal::CaptureStderr();
    EXPECT_EQ(setString(registry, "Software\\App", "a", "1"), status::RegistryCorrupt);
    testing::internal::GetCapturedStderr();
    EXPECT_NE(registry.lastProblem().find("HKEY_CURRENT_USER.reg:5: "), std::string::npos)
        << registry.lastProblem();
    EXPECT_EQ(readFile(userFile()), misplaced);
}

// Each store object stands for another process: a change through one is seen by the other at
// its next call, even when the file keeps its size, is rewritten within one tick of the file
// clock and gets back the inode of the version before.
TEST_F(RegistryStoreTest, AChangeByAnotherProcessIsSeenAtTheNextOpen) {
    PortableRegistry first(folder(), codePage_);
    PortableRegistry second(folder(), codePage_);
    for (char digit = '0'; digit <= '9'; ++digit) {
        ASSERT_EQ(setString(first, "Software\\Shared", "v", "x"), status::Success);
        ASSERT_EQ(setString(first, "Software\\Shared", "v", std::string(1, digit)),
                  status::Success);
        ASSERT_EQ(getString(second, hkey::CurrentUser, "Software\\Shared", "v"),
                  std::string(1, digit));
    }

    RegHandle key = 0;
    ASSERT_EQ(second.RegOpenKeyA(hkey::CurrentUser, "Software\\Shared", &key), status::Success);
    EXPECT_EQ(second.RegDeleteValueA(key, "v"), status::Success);
    EXPECT_EQ(getString(first, hkey::CurrentUser, "Software\\Shared", "v"), "<error 2>");
    // A key that goes while a handle of it is open.
    const fs::path import = fs::path(dir_.path().toStdString()) / "delete.reg";
    writeFile(import, "REGEDIT4\r\n[-HKEY_CURRENT_USER\\Software\\Shared]\r\n");
    ASSERT_TRUE(first.importFile(import.string()).ok);
    EXPECT_EQ(second.RegSetValueExA(key, "v", regtype::Sz, bytesOf("x"), 2), 1018);
}

TEST_F(RegistryStoreTest, TwoProcessesWritingIntoOneKeyLoseNothing) {
    constexpr int kCount = 500;
    QProcess writers[2];
    const QString prefixes[2] = {"first", "second"};
    for (int i = 0; i < 2; ++i) {
        writers[i].setProcessChannelMode(QProcess::ForwardedChannels);
        writers[i].start(REGISTRY_WRITER, {QString::fromStdString(folder().string()),
                                           "Software\\Race", prefixes[i], QString::number(kCount)});
    }
    for (QProcess& writer : writers) {
        ASSERT_TRUE(writer.waitForFinished(300'000));
        EXPECT_EQ(writer.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(writer.exitCode(), 0);
    }
    PortableRegistry registry(folder(), codePage_);
    int found = 0;
    for (const QString& prefix : prefixes) {
        for (int i = 0; i < kCount; ++i) {
            const std::string name = prefix.toStdString() + std::to_string(i);
            found += getString(registry, hkey::LocalMachine, "Software\\Race", name) ==
                     "value " + std::to_string(i);
        }
    }
    EXPECT_EQ(found, 2 * kCount);
}

}  // namespace
