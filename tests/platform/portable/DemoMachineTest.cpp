#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "VersionQuery.h"
#include "demo/DemoMachine.h"
#include "support/TestMachine.h"

// The demo machine as the discovery sees it: uninstall keys in both hives whose icons name
// executables with matching version blocks.
namespace {

using demo::DemoCounts;
using demo::populateDemoMachine;

const std::string kUninstall = "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall";
const std::filesystem::path kCatalog =
    std::filesystem::path(TALLOWICK_DATA_DIR) / "catalog/winget-index-2025-08-11.csv";

std::string exportBothHives(platform::Platform& platform) {
    std::string all;
    for (const char* hive : {"HKEY_LOCAL_MACHINE\\", "HKEY_CURRENT_USER\\"}) {
        std::string text;
        EXPECT_TRUE(platform.regEdit.exportKey(hive + kUninstall, &text).ok);
        all += text;
    }
    return all;
}

// One uninstall key's string values as the program reads them; "" for a missing one.
struct UninstallKey {
    std::string name, icon, version, publisher;
};

std::vector<UninstallKey> readKeys(platform::Registry& registry, platform::RegHandle hive) {
    platform::RegHandle top = 0;
    EXPECT_EQ(registry.RegOpenKeyExA(hive, kUninstall, 0, platform::access::KeyRead, &top), 0);
    const auto read = [&](platform::RegHandle key, const char* value) {
        char data[256] = {};
        std::uint32_t size = sizeof data - 1;
        return registry.RegQueryValueExA(key, value, nullptr, reinterpret_cast<std::uint8_t*>(data),
                                         &size) == 0
                   ? std::string(data)
                   : std::string();
    };
    std::vector<UninstallKey> keys;
    char name[256];
    std::uint32_t size = sizeof name;
    for (std::uint32_t i = 0; registry.RegEnumKeyExA(top, i, name, &size) == 0;
         ++i, size = sizeof name) {
        platform::RegHandle key = 0;
        EXPECT_EQ(registry.RegOpenKeyExA(top, name, 0, platform::access::KeyRead, &key), 0);
        keys.push_back(
            {name, read(key, "DisplayIcon"), read(key, "DisplayVersion"), read(key, "Publisher")});
        registry.RegCloseKey(key);
    }
    registry.RegCloseKey(top);
    return keys;
}

// "1.20.3" -> the words of 1.20.3.0; nothing for a version that is not up to four numbers a
// fixed block can hold.
std::optional<std::vector<std::uint32_t>> plainFixedVersion(const std::string& version) {
    std::vector<std::uint32_t> parts;
    std::istringstream in(version);
    for (std::string part; std::getline(in, part, '.');) {
        if (part.empty() || part.size() > 5 ||
            part.find_first_not_of("0123456789") != std::string::npos) {
            return std::nullopt;
        }
        parts.push_back(std::uint32_t(std::stoul(part)));
        if (parts.back() > 0xFFFF || parts.size() > 4) {
            return std::nullopt;
        }
    }
    parts.resize(4);
    const std::uint32_t ms = parts[0] << 16 | parts[1];
    const std::uint32_t ls = parts[2] << 16 | parts[3];
    return std::vector<std::uint32_t>{ms, ls, ms, ls};
}

// The seed alone decides the machine, which has programs of every kind; each icon names an
// executable whose version block agrees with its key.
TEST(DemoMachine, TheSeedDecidesAMachineWhoseIconsAgreeWithTheirKeys) {
    testing_support::TestMachine machine, same, other;
    DemoCounts counts;
    std::string problems;
    ASSERT_TRUE(populateDemoMachine(machine.machine(), kCatalog, 7, &problems, &counts))
        << problems;
    ASSERT_TRUE(populateDemoMachine(same.machine(), kCatalog, 7, &problems));
    ASSERT_TRUE(populateDemoMachine(other.machine(), kCatalog, 8, &problems));
    const std::string text = exportBothHives(machine.platform());
    EXPECT_EQ(text, exportBothHives(same.platform()));
    EXPECT_NE(text, exportBothHives(other.platform()));
    EXPECT_GE(counts.programs, 300);
    for (int kind :
         {counts.perUser, counts.x86, counts.productCodeKeys, counts.innoKeys, counts.oddVersions,
          counts.systemComponents, counts.withoutPublisher, counts.withoutVersion,
          counts.inBothHives, counts.twiceInOneFolder, counts.driverPackages}) {
        EXPECT_GT(kind, 0);
    }

    auto& platform = machine.platform();
    int keys = 0;
    int checked = 0;
    for (platform::RegHandle hive : {platform::hkey::LocalMachine, platform::hkey::CurrentUser}) {
        for (UninstallKey key : readKeys(platform.registry, hive)) {
            ++keys;
            if (key.icon.empty()) {
                continue;
            }
            std::erase(key.icon, '"');
            if (key.icon.ends_with(",0")) {
                key.icon.resize(key.icon.size() - 2);
            }
            VersionQuery block(platform.versionInfo, key.icon);
            ASSERT_TRUE(block.loaded()) << key.name << ": " << key.icon;
            const std::string table = block.firstTable();
            if (!key.version.empty()) {
                EXPECT_EQ(block.text(table, "FileVersion"), key.version) << key.icon;
                if (const auto fixed = plainFixedVersion(key.version)) {
                    EXPECT_EQ(block.fixed(), *fixed) << key.icon;
                }
            }
            if (!key.publisher.empty()) {
                EXPECT_EQ(block.text(table, "CompanyName"), key.publisher) << key.icon;
            }
            ++checked;
        }
    }
    EXPECT_EQ(keys, counts.keys);
    EXPECT_GT(checked, 250);
}

class DemoCatalog : public ::testing::Test {
protected:
    std::filesystem::path write(const std::string& text) {
        const auto file = std::filesystem::path(dir.path().toStdString()) / "catalog.csv";
        std::ofstream(file, std::ios::binary) << text;
        return file;
    }
    std::string refusal(const std::filesystem::path& file) {
        std::string problems;
        EXPECT_FALSE(populateDemoMachine(machine.machine(), file, 1, &problems));
        return problems;
    }

    QTemporaryDir dir;
    testing_support::TestMachine machine;
};

TEST_F(DemoCatalog, ASmallCatalogIsInstalledWhole) {
    const auto file = write(
        "\xEF\xBB\xBF\"PackageId\",\"Version\",\"Name\",\"LastUpdate\"\r\n"
        "\"Acme.Rocket\",\"2.5\",\"Rocket, \"\"the\"\" launcher\",\"2025-03-01 10:00:00Z\"\r\n"
        "\"Acme.Anvil\",\"v1.0-beta\",\"Anvil\",\"\"\r\n"
        "Baidu.Pan,7.2.1,百度网盘,2025-04-02 08:00:00Z\r\n"
        "\"NoDot\",\"1.0\",\"Skipped: no publisher handle\",\"\"\r\n"
        "\"Acme.Nameless\",\"1.0\",\"\",\"\"\r\n");
    DemoCounts counts;
    std::string problems;
    ASSERT_TRUE(populateDemoMachine(machine.machine(), file, 1, &problems, &counts)) << problems;
    EXPECT_EQ(counts.programs, 3);
    EXPECT_EQ(counts.oddVersions, 1);
    const std::string text = exportBothHives(machine.platform());
    EXPECT_NE(text.find("Rocket, \\\"the\\\" launcher"), std::string::npos) << text;
    EXPECT_NE(text.find("\"DisplayName\"=\"百度网盘"), std::string::npos) << text;
}

TEST_F(DemoCatalog, AMissingOrMalformedCatalogIsReportedWithItsLine) {
    EXPECT_NE(refusal(dir.path().toStdString() + "/none.csv")
                  .find("none.csv: the catalog cannot be read"),
              std::string::npos);
    const std::string header = "PackageId,Version,Name\n";
    const struct {
        std::string text, problem;
    } cases[] = {
        {"Id,Version,Name\nA.B,1,C\n", "catalog.csv:1: no column PackageId"},
        {header + "A.B,1,C\n\"A.D\",\"2,Unclosed\n", "catalog.csv:3: a quoted field is not closed"},
        {header + "A.B,1\n", "catalog.csv:2: 2 fields where the header has 3"},
        {header + "\"A.B\"x,1,C\n", "catalog.csv:2: text after the closing quote"},
        {header, "catalog.csv: no program with a name and a version"},
        {"", "catalog.csv:1: no column PackageId"},
    };
    for (const auto& c : cases) {
        EXPECT_NE(refusal(write(c.text)).find(c.problem), std::string::npos) << c.problem;
    }
    EXPECT_EQ(exportBothHives(machine.platform()).find(kUninstall + "\\"), std::string::npos);
}

}  // namespace
