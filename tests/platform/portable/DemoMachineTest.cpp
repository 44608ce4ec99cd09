// The demo machine as the discovery sees it: uninstall keys in both hives whose icons name
// executables with matching version blocks.
#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <map>
#include <regex>
#include <sstream>

#include "VersionQuery.h"
#include "demo/DemoMachine.h"
#include "support/TestMachine.h"

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

// The string values of each key of an export, unescaped; the keys in the export's order.
std::vector<std::map<std::string, std::string>> keysOf(const std::string& exported) {
    std::vector<std::map<std::string, std::string>> keys;
    std::istringstream lines(exported);
    const std::regex value(R"re("(\w+)"="(.*)"\r?)re"), escape(R"(\\(.))");
    std::smatch match;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("[")) {
            keys.emplace_back();
        } else if (std::regex_match(line, match, value)) {
            keys.back()[match[1]] = std::regex_replace(match[2].str(), escape, "$1");
        }
    }
    return keys;
}

// The seed alone decides the machine, which has programs of every kind; each icon names an
// executable whose version block agrees with its key, a plain version of up to four numbers
// in its fixed info too.
TEST(DemoMachine, TheSeedDecidesAMachineWhoseIconsAgreeWithTheirKeys) {
    testing_support::TestMachine machine, same, other;
    demo::DemoCounts counts;
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

    const auto keys = keysOf(text);
    EXPECT_EQ(keys.size(), counts.keys + 2u);  // and the two Uninstall keys themselves
    auto& versionInfo = machine.platform().versionInfo;
    const std::regex plain(R"((\d{1,5})\.(\d{1,5})(?:\.(\d{1,5}))?(?:\.(\d{1,5}))?)");
    int checked = 0;
    for (auto key : keys) {
        std::string icon = std::regex_replace(key["DisplayIcon"], std::regex(R"("|,0$)"), "");
        if (icon.empty()) {
            continue;
        }
        const auto translation = versionValue(versionInfo, icon, "\\VarFileInfo\\Translation");
        ASSERT_TRUE(translation && translation->size() >= 4) << icon;
        char table[9];
        std::snprintf(table, sizeof table, "%02x%02x%02x%02x", std::uint8_t((*translation)[1]),
                      std::uint8_t((*translation)[0]), std::uint8_t((*translation)[3]),
                      std::uint8_t((*translation)[2]));
        const std::string& version = key["DisplayVersion"];
        if (!version.empty()) {
            EXPECT_EQ(versionText(versionInfo, icon, table, "FileVersion"), version) << icon;
        }
        if (std::smatch parts; std::regex_match(version, parts, plain)) {
            std::uint32_t words[4] = {};
            for (int i = 0; i < 4; ++i) {
                words[i] = parts[i + 1].matched ? std::stoul(parts[i + 1]) : 0;
            }
            if (std::ranges::all_of(words, [](std::uint32_t word) { return word <= 0xFFFF; })) {
                const std::uint32_t ms = words[0] << 16 | words[1], ls = words[2] << 16 | words[3];
                EXPECT_EQ(fixedVersions(versionInfo, icon), (std::vector{ms, ls, ms, ls})) << icon;
            }
        }
        if (!key["Publisher"].empty()) {
            EXPECT_EQ(versionText(versionInfo, icon, table, "CompanyName"), key["Publisher"]);
        }
        ++checked;
    }
    EXPECT_GT(checked, 250);
}

class DemoCatalog : public ::testing::Test {
protected:
    std::filesystem::path write(const std::string& text) {
        const auto file = std::filesystem::path(dir.path().toStdString()) / "catalog.csv";
        std::ofstream(file, std::ios::binary) << text;
        return file;
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
    demo::DemoCounts counts;
    std::string problems;
    ASSERT_TRUE(populateDemoMachine(machine.machine(), file, 1, &problems, &counts)) << problems;
    EXPECT_EQ(counts.programs, 3);
    EXPECT_EQ(counts.oddVersions, 1);
    const std::string text = exportBothHives(machine.platform());
    EXPECT_NE(text.find("Rocket, \\\"the\\\" launcher"), std::string::npos) << text;
    EXPECT_NE(text.find("\"DisplayName\"=\"百度网盘"), std::string::npos) << text;
}

TEST_F(DemoCatalog, AMissingOrMalformedCatalogIsReportedWithItsLine) {
    const std::string header = "PackageId,Version,Name\n";
    const std::pair<std::string, std::string> cases[] = {
        {"Id,Version,Name\nA.B,1,C\n", "catalog.csv:1: no column PackageId"},
        {header + "A.B,1,C\n\"A.D\",\"2,Unclosed\n", "catalog.csv:3: a quoted field is not closed"},
        {header + "A.B,1\n", "catalog.csv:2: 2 fields where the header has 3"},
        {header + "\"A.B\"x,1,C\n", "catalog.csv:2: text after the closing quote"},
        {header, "catalog.csv: no program with a name and a version"},
        {"", "catalog.csv:1: no column PackageId"},
        {"<no file>", "none.csv: the catalog cannot be read"},
    };
    for (const auto& [text, problem] : cases) {
        std::string problems;
        EXPECT_FALSE(populateDemoMachine(
            machine.machine(),
            text == "<no file>" ? write("").parent_path() / "none.csv" : write(text), 1,
            &problems));
        EXPECT_NE(problems.find(problem), std::string::npos) << problems;
    }
    EXPECT_EQ(exportBothHives(machine.platform()).find(kUninstall + "\\"), std::string::npos);
}

}  // namespace
