// Install and uninstall in-process on a machine in a temporary folder, read back through the
// machine's own platform.
#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include "core/AnsiText.h"
#include "platform/portable/MachineFacts.h"
#include "service/ServiceControl.h"
#include "setup/ProductInstall.h"
#include "state/ProductNames.h"
#include "state/modRegistry.h"
#include "support/TestMachine.h"

namespace {

namespace fs = std::filesystem;
namespace product = state::product;

const QString kInstalled = "C:\\Program Files\\Tallowick\\";

class ProductInstallTest : public ::testing::Test {
protected:
    ProductInstallTest() {
        options.machineFolder = machine.folder();
        options.dataFolder = hostFolder / "data";
        options.programsFolder = hostFolder / "bin";
        options.start = false;
        fs::create_directories(options.programsFolder);
    }

    bool install() {
        lines.clear();
        return setup::install(machine.platform(), machine.machine().installation(), options,
                              report);
    }
    bool uninstall() {
        lines.clear();
        return setup::uninstall(machine.platform(), machine.machine().installation(), report);
    }

    void placeData(const fs::path& relative, const std::string& bytes) {
        fs::create_directories((options.dataFolder / relative).parent_path());
        std::ofstream(options.dataFolder / relative, std::ios::binary) << bytes;
    }
    // A host program that exits at once stands for a product executable.
    fs::path placeProgram(const char* name) {
        const fs::path program = options.programsFolder / name;
        fs::create_symlink("/bin/true", program);
        return program;
    }

    platform::Platform& platform() { return machine.platform(); }
    QString value(const QString& key, const QString& name) {
        return state::modRegistry(platform()).GetStringValue(key, name);
    }
    // The key as regedit exports it, values with their types; empty when there is no key.
    std::string exported(const QString& key) {
        std::string text;
        return platform().regEdit.exportKey(key.toStdString(), &text).ok ? text : std::string();
    }
    static std::string keyText(const QString& key, const std::string& values) {
        return "Windows Registry Editor Version 5.00\r\n\r\n[" + key.toStdString() + "]\r\n" +
               values + "\r\n";
    }
    std::optional<std::string> file(const QString& winPath) {
        return platform().files.readFile(core::toAnsi(platform().codePage, winPath));
    }
    std::map<std::string, std::string> programs() {
        return platform::portable::MachineFacts::read(machine.folder() / "machine.ini", nullptr)
            .programs;
    }

    testing_support::TestMachine machine;
    QTemporaryDir host;
    fs::path hostFolder{host.path().toStdString()};
    setup::SetupOptions options;
    QStringList lines;
    QStringList problems;
    setup::Report report{[this](const QString& line) { lines << line; },
                         [this](const QString& line) { problems << line; }};
};

TEST_F(ProductInstallTest, InstallRegistersTheProductAndCopiesItsFiles) {
    placeData("lang/German.lng", "de");
    placeData("Report.htm", "<html>");
    options.values = {{"Installer", "Web"}, {"AID", "17"}};
    ASSERT_TRUE(install()) << problems.join('\n').toStdString();
    EXPECT_TRUE(problems.isEmpty());
    const QStringList expected{
        "copied 2 data files to C:\\Program Files\\Tallowick",
        "mapped no programs: none found in " + QString::fromStdString(options.programsFolder),
        "registered service Tallowick Service",
        "created product key HKEY_LOCAL_MACHINE\\Software\\Tallowick",
        "set Installer=Web",
        "set AID=17",
        "wrote uninstall entry " + product::uninstallKey(),
        "made folder C:\\ProgramData\\Tallowick",
        "made folder C:\\ProgramData\\Tallowick\\Service",
        "left Tallowick Service stopped (--no-start)"};
    EXPECT_EQ(lines, expected);

    const std::string service = exported(product::servicesKey());
    EXPECT_NE(service.find("]\r\n\"DisplayName\"=\"Tallowick Service\"\r\n\"ImagePath\"=hex(2):"),
              std::string::npos);
    EXPECT_TRUE(
        service.ends_with("\"Type\"=dword:00000010\r\n\"Start\"=dword:00000002\r\n\"ObjectName\"="
                          "\"LocalSystem\"\r\n\r\n"));
    EXPECT_EQ(value(product::servicesKey(), "ImagePath"),
              '"' + kInstalled + "Tallo-wickService.exe\"");
    EXPECT_EQ(service::productServiceState(platform()), service::ServiceState::Stopped);
    EXPECT_EQ(exported(product::key()),
              keyText(product::key(), "\"Installer\"=\"Web\"\r\n\"AID\"=\"17\"\r\n"));
    EXPECT_EQ(
        exported(product::uninstallKey()),
        keyText(product::uninstallKey(),
                "\"DisplayName\"=\"Tallowick\"\r\n\"DisplayVersion\"=\"" TALLOWICK_VERSION
                "\"\r\n\"Publisher\"=\"Brenmoor\"\r\n"
                "\"InstallLocation\"=\"C:\\\\Program Files\\\\Tallowick\"\r\n"
                "\"UninstallString\"=\"\\\"C:\\\\Program Files\\\\Tallowick\\\\uninst.exe\\\"\"\r\n"
                "\"DisplayIcon\"=\"C:\\\\Program Files\\\\Tallowick\\\\Tallo-wick.exe\"\r\n"));
    EXPECT_EQ(file(kInstalled + "LANG\\german.lng"), "de");
    EXPECT_EQ(file(kInstalled + "Report.htm"), "<html>");
}

TEST_F(ProductInstallTest, InstallOverAnInstallReplacesWithoutDuplicates) {
    machine.mapProgram("c:\\program files\\TALLOWICK\\starter.exe", "/old/Starter");
    const fs::path starter = placeProgram("Starter");
    const fs::path program = placeProgram("Tallo-wick");
    placeData("Report.htm", "old");
    options.values = {{"Installer", "Web"}, {"PID", "1"}};
    ASSERT_TRUE(install());

    placeData("Report.htm", "new");
    options.values = {{"Installer", "Store"}};
    ASSERT_TRUE(install());
    EXPECT_TRUE(lines.contains("mapped Starter.exe Tallo-wick.exe to the programs in " +
                               QString::fromStdString(options.programsFolder)));
    const std::map<std::string, std::string> expected{
        {(kInstalled + "Starter.exe").toStdString(), starter.string()},
        {(kInstalled + "Tallo-wick.exe").toStdString(), program.string()}};
    EXPECT_EQ(programs(), expected);
    EXPECT_EQ(exported(product::key()),
              keyText(product::key(), "\"Installer\"=\"Store\"\r\n\"PID\"=\"1\"\r\n"));
    EXPECT_EQ(file(kInstalled + "Report.htm"), "new");
}

TEST_F(ProductInstallTest, MissingDataFolderStillMakesTheInstallFolder) {
    ASSERT_TRUE(install());
    EXPECT_EQ(lines.value(0), "no data files in " + QString::fromStdString(options.dataFolder));
    EXPECT_TRUE(platform().files.FolderExists("C:\\Program Files\\Tallowick"));
}

TEST_F(ProductInstallTest, StartIsTriedOnlyForAMappedServiceAndNeverFailsTheInstall) {
    options.start = true;
    ASSERT_TRUE(install());
    EXPECT_EQ(lines.last(), "did not start Tallowick Service: no program stands for " + kInstalled +
                                "Tallo-wickService.exe");

    placeProgram("Tallo-wickService");
    ASSERT_TRUE(install());
    EXPECT_EQ(lines.last(),
              "did not start Tallowick Service: the service's program ended before it ran "
              "(status 1067)");
}

TEST_F(ProductInstallTest, UninstallRemovesWhatInstallMadeAndKeepsTheRest) {
    machine.mapProgram("C:\\Tools\\other.exe", "/bin/true");
    machine.mapProgram("C:\\Program Files\\Tallowick Extra\\x.exe", "/bin/true");
    placeProgram("Starter");
    placeData("lang/German.lng", "de");
    options.values = {{"Installer", "Web"}};
    ASSERT_TRUE(install());
    const std::string unrelatedKeys = "[" + product::uninstallKey().toStdString() +
                                      " Extra]\r\n\r\n[" + product::servicesKey().toStdString() +
                                      " Helper]\r\n";
    ASSERT_EQ(machine.importReg("Windows Registry Editor Version 5.00\r\n\r\n"
                                "[HKEY_LOCAL_MACHINE\\Software\\Tallowick\\Options\\Deep]\r\n"
                                "\"Level\"=\"2\"\r\n\r\n"
                                "[HKEY_LOCAL_MACHINE\\Software\\Quillfen]\r\n"
                                "\"BundleAppLocation\"=\"C:\\\\Q\"\r\n\r\n" +
                                unrelatedKeys),
              "");
    machine.placeFile("C:\\ProgramData\\Tallowick\\Settings.ini", "kept");

    ASSERT_TRUE(uninstall()) << problems.join('\n').toStdString();
    const QStringList expected{
        "removed service key " + product::servicesKey(), "removed product key " + product::key(),
        "removed uninstall entry " + product::uninstallKey(),
        "removed folder C:\\Program Files\\Tallowick", "removed 1 program mappings"};
    EXPECT_EQ(lines, expected);
    for (const QString& key : {product::servicesKey(), product::key(), product::uninstallKey()}) {
        EXPECT_EQ(exported(key), "") << key.toStdString();
    }
    EXPECT_FALSE(platform().files.FolderExists("C:\\Program Files\\Tallowick"));

    EXPECT_EQ(value("HKEY_LOCAL_MACHINE\\Software\\Quillfen", "BundleAppLocation"), "C:\\Q");
    EXPECT_NE(exported(product::uninstallKey() + " Extra"), "");
    EXPECT_NE(exported(product::servicesKey() + " Helper"), "");
    EXPECT_EQ(file("C:\\ProgramData\\Tallowick\\Settings.ini"), "kept");
    const std::map<std::string, std::string> unrelated{
        {"C:\\Program Files\\Tallowick Extra\\x.exe", "/bin/true"},
        {"C:\\Tools\\other.exe", "/bin/true"}};
    EXPECT_EQ(programs(), unrelated);

    ASSERT_TRUE(uninstall());
    EXPECT_EQ(lines, QStringList{"Tallowick is not installed"});
}

TEST_F(ProductInstallTest, UninstallStopsARunningServiceFirst) {
    ASSERT_TRUE(install());
    // This process runs the service; the stop request reaches it as a signal. The test gives
    // up on it only when the uninstall did not stop it.
    std::atomic<bool> givenUp{false};
    std::thread running([this, &givenUp] {
        platform().serviceHost.runService(
            core::toAnsi(platform().codePage, product::serviceName()),
            [&givenUp](const std::atomic<bool>& stopRequested) {
                while (!stopRequested && !givenUp) {
                    std::this_thread::sleep_for(std::chrono::milliseconds(5));
                }
            });
    });
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (service::productServiceState(platform()) != service::ServiceState::Running &&
           std::chrono::steady_clock::now() < deadline) {
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    const bool uninstalled = uninstall();
    givenUp = true;
    running.join();
    ASSERT_TRUE(uninstalled) << problems.join('\n').toStdString();
    EXPECT_EQ(lines.value(0), "stopped Tallowick Service");
    EXPECT_EQ(exported(product::servicesKey()), "");
}

}  // namespace
