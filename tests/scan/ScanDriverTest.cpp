// Whole scans of built machines, with the real service writing the registry and the real
// update server answering on loopback.
#include <gtest/gtest.h>

#include <memory>

#include "RecordingPages.h"
#include "core/QtPrinters.h"
#include "scan/ScanDriver.h"
#include "state/ProductNames.h"
#include "support/RunningService.h"
#include "support/UpdateServerProcess.h"

namespace {

using state::product::key;

const QString kCatalog = QStringLiteral(TALLOWICK_TEST_DATA "/catalog-small.csv");

// One uninstall key of HKEY_LOCAL_MACHINE, installed in its own folder.
struct Installed {
    std::string key, name, publisher, version, icon = {};
};

class ScanDriverTest : public ::testing::Test {
protected:
    ScanDriverTest() {
        service.channel.SendToService("RegCreateKey|" + key());
        useServer({});
    }

    // A fresh update server with the fixture catalog and the options, and the language data
    // pointing at it.
    void useServer(const QStringList& options) {
        server = std::make_unique<testing_support::UpdateServerProcess>(UPDATE_SERVER, kCatalog,
                                                                        options);
        EXPECT_TRUE(server->running()) << server->errors().toStdString();
        language.SetLanguageText("[[Code_Strings]]\r\nstrURL_SH_Corporate=" + server->base() +
                                 "\r\nstrLoc_TW_ReportError=wrong?\r\n"
                                 "strLoc_TW_SureYouWantToStop=stop?\r\n; end\r\n");
        language.InitCodeStrings();
        program.useServer(server->base());
    }
    void install(const std::vector<Installed>& programs) {
        std::string reg = "Windows Registry Editor Version 5.00\r\n\r\n";
        for (const Installed& p : programs) {
            const std::string folder = "C:\\Apps\\" + p.key;
            platform.files.MkDir("C:\\Apps");
            platform.files.MkDir(folder);
            reg +=
                "[HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\" +
                p.key + "]\r\n\"DisplayName\"=\"" + p.name + "\"\r\n\"Publisher\"=\"" +
                p.publisher + "\"\r\n\"DisplayVersion\"=\"" + p.version +
                "\"\r\n\"InstallLocation\"=\"C:\\\\Apps\\\\" + p.key + "\"\r\n";
            if (!p.icon.empty()) {
                service.machine.placeTestData(folder + "\\" + p.icon, "zlib1-x64.dll");
                reg += "\"DisplayIcon\"=\"C:\\\\Apps\\\\" + p.key + "\\\\" + p.icon + "\"\r\n";
            }
            reg += "\r\n";
        }
        ASSERT_EQ(service.machine.importReg(reg), "");
    }
    // n programs that pass detection; what the server says of them is the server's affair.
    void installMany(int n) {
        std::vector<Installed> programs;
        for (int i = 0; i < n; ++i) {
            const std::string number = std::to_string(10 + i);
            programs.push_back({"P" + number, "Program " + number, "Maker", "1." + number});
        }
        install(programs);
    }
    QString setting(const char* section, const char* name) {
        return settings.ReadSetting(section, name, "<none>");
    }
    QString productValue(const char* name) { return service.registry.GetStringValue(key(), name); }
    QStringList names() {
        QStringList found;
        for (const auto& result : page.results) {
            found << result.name;
        }
        return found;
    }

    RecordingIgnorePage ignorePage;
    testing_support::RunningService service{&ignorePage};
    shell::Program& program = service.program;
    platform::Platform& platform = service.platform;
    std::unique_ptr<testing_support::UpdateServerProcess> server;
    state::modSettings& settings = program.settings;
    localisation::LanguageText& language = program.language;
    state::lst& holder = program.holder;
    state::clsList& results = program.results;
    scan::ScanControl& control = program.control;
    RecordingScanPage page;
    scan::ScanDriver driver{program.scanParts(page, page)};
};

// The updates are exactly those that the catalog implies: a newer product version (case A),
// an equal product version with an older file (case B); an up-to-date program, a program the
// server does not know and an ignored one add nothing. The closing writes follow.
TEST_F(ScanDriverTest, FindsExactlyTheUpdatesOfTheCatalog) {
    install({{"Designer", "3CX Call Flow Designer (x64)", "3CX s.r.o.", "18.5.8"},
             {"GSview", "GSview", "Ghostgum", "5.0", "gsview.exe"},
             {"AirExplorer", "Air Explorer", "AirExplorer GmbH", "5.9.2"},
             {"Unknown", "Nothing Like It 3000", "Nobody Ltd.", "1.0"},
             {"ABTool", "A&B Tool", "Contoso", "2.0"},
             {"Cafe",
              "Caf\xc3\xa9 \xc3\x89"
              "crit",
              "Fabrikam", "3.0"}});
    holder.lstIgnoreListFile << "   3.0|Caf\u00e9 \u00c9crit|Fabrikam|C:\\Apps\\Cafe";
    settings.WriteSetting("ScanInfo", "NumberOfScans", "4");
    service.channel.SendToService("RegSetString|" + key() + "|SilentScan|1/1/2026");

    driver.cmdScanNow_Click();

    EXPECT_EQ(names(), (QStringList{"A&B Tool", "3CX Call Flow Designer (x64)", "GSview"}));
    ASSERT_EQ(page.results.size(), 3u);
    const scan::ScanResult& designer = page.results[1];
    EXPECT_EQ(designer.installedText, "18.5.8");
    EXPECT_EQ(designer.availableText, "20.2.84");
    EXPECT_EQ(designer.path, "C:\\Apps\\Designer");
    EXPECT_EQ(designer.downloadAddress,
              "https://www.google.com/search?hl=en&q=3CX+Call+Flow+Designer+(x64)");
    EXPECT_EQ(page.results[2].installedText, "5.0 (1.2.13.0)");
    EXPECT_EQ(page.results[2].availableText, "5.0 (5.0.0.0)");
    // ResultsList holds the same rows for the report.
    ASSERT_EQ(results.Count(), 3);
    EXPECT_EQ(results.ItemText(2), "GSview");
    EXPECT_EQ(results.SubItemText(2, 2), "5.0 (1.2.13.0)");
    EXPECT_EQ(results.SubItemText(2, 5), "C:\\Apps\\GSview\\gsview.exe");

    EXPECT_EQ(page.itemsDetected, "3");
    EXPECT_EQ(page.reportErrorLine, "wrong?");
    EXPECT_TRUE(page.notices.isEmpty());
    EXPECT_EQ(page.progress, (std::vector<int>{1, 2, 3, 4, 5}));
    EXPECT_EQ(page.sounds, QStringList{"C:\\Program Files\\Tallowick\\ErrorFound.wav"});
    EXPECT_TRUE(page.calls.contains("showInternetReminder"));
    EXPECT_TRUE(page.calls.contains("RestoreWindow"));
    EXPECT_FALSE(control.bInProcess);
    EXPECT_EQ(control.itemCount, 3);

    EXPECT_EQ(setting("ScanInfo", "UpdatesAvailable"), "3");
    EXPECT_EQ(setting("ScanInfo", "NumberOfScans"), "5");
    EXPECT_NE(setting("ScanInfo", "LastScan"), "<none>");
    const QString uid = setting("UpdatesServer", "UID");
    EXPECT_TRUE(uid != "<none>" && !uid.isEmpty()) << uid.toStdString();
    EXPECT_EQ(productValue("ItemCount"), "3");
    EXPECT_EQ(productValue("SilentScan"), "Error");
    ASSERT_EQ(holder.lstURLs.size(), 2);
    EXPECT_TRUE(holder.lstURLs[1].contains("action=Scan_Finished&"));
    EXPECT_TRUE(holder.lstURLs[1].contains("&itemcount=3&"));

    const QString logText = QString::fromStdString(
        platform.files.readFile("C:\\ProgramData\\Tallowick\\Tallowick Log.txt").value_or(""));
    EXPECT_TRUE(logText.startsWith("\r\n\r\nStarting Computer Scan on ")) << logText.toStdString();
    EXPECT_TRUE(
        logText.contains("\r\n   Update Found: GSview (Ghostgum) 5.0 (5.0.0.0) "
                         "(5.0 (1.2.13.0)), C:\\Apps\\GSview\\gsview.exe\r\n"));
    EXPECT_TRUE(
        logText.contains("\r\n   Update Found: A&B Tool (Contoso) 2.1 (2.0), "
                         "C:\\Apps\\ABTool\r\n"));
    EXPECT_TRUE(logText.endsWith(")\r\n\r\n"));

    // The next scan: its first-scan event has gone; the ignore file is in force again.
    holder.lstIgnoreListFile.clear();
    driver.InitiateScan(true);
    EXPECT_EQ(page.results.size(), 7u);
    EXPECT_EQ(results.Count(), 4);
    EXPECT_EQ(holder.lstURLs.size(), 2);
    EXPECT_EQ(setting("ScanInfo", "NumberOfScans"), "6");
}

// Stop after the third update: the three rows stay and count, the scan counts as a scan, and
// the first cancelled scan is reported once, clearing the first-run marks.
TEST_F(ScanDriverTest, StopKeepsTheUpdatesFoundSoFar) {
    install({{"A1", "3CX Call Flow Designer (x64)", "3CX s.r.o.", "18.5.8"},
             {"A2", "Air Explorer", "AirExplorer GmbH", "5.8.1"},
             {"A3", "A&B Tool", "Contoso", "2.0"},
             {"A4", "GSview", "Ghostgum", "4.9"},
             {"A5", "Nightfall Reader", "Northwind Inc.", "2026.1"}});
    control.installRun = control.repeatFirstRun = true;
    bool stopped = false;
    control.pumpEvents = [&] {
        if (page.results.size() == 3 && !stopped) {
            stopped = true;
            driver.cmdStopScan_Click();
        }
    };
    service.box.answer = platform::mbresult::Yes;
    driver.cmdScanNow_Click();

    EXPECT_EQ(page.results.size(), 3u);
    EXPECT_EQ(page.progress, (std::vector<int>{1, 2, 3}));
    ASSERT_EQ(service.box.shown.size(), 1u);
    EXPECT_EQ(service.box.shown[0].text, "stop?");
    EXPECT_EQ(service.box.shown[0].style,
              platform::mbstyle::YesNo | platform::mbstyle::IconQuestion);
    EXPECT_TRUE(control.ScanCancelled);
    EXPECT_FALSE(control.installRun || control.repeatFirstRun);
    EXPECT_EQ(setting("ScanInfo", "UpdatesAvailable"), "3");
    EXPECT_EQ(setting("ScanInfo", "NumberOfScans"), "1");
    EXPECT_EQ(productValue("ItemCount"), "3");
    EXPECT_TRUE(holder.lstURLs.last().contains("action=Scan_Cancelled&"));

    // A No leaves the scan running.
    service.box.answer = platform::mbresult::No;
    control.bInProcess = true;
    driver.cmdStopScan_Click();
    EXPECT_TRUE(control.bInProcess);
    control.bInProcess = false;
}

// The server's failures end the scan with their notice at their threshold: two empty answers,
// broken pages from the third or when every program had one, the server's own failures from
// the third, its quiet codes never. A failed lookup opens the start page and leaves the closing
// writes alone; every scan counts.
TEST_F(ScanDriverTest, FailedAnswersEndTheScanAtTheirThresholds) {
    struct Case {
        const char* reply;
        int programs;
        const char* notice;
        std::vector<int> progress;
    };
    const Case cases[] = {{"nomarker", 2, "frmUnableToDetermine", {1}},
                          {"error:4010", 5, "frmUnableToDetermine", {1, 2}},
                          {"error:4002", 5, "", {1, 2, 3, 4, 5}},
                          {"empty", 10, "frmUnableToCheck", {1}}};
    int scans = 0;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.reply);
        page.reset();
        useServer({"--test-reply", c.reply});
        installMany(c.programs);
        settings.WriteSetting("ScanInfo", "UpdatesAvailable", "7");
        service.channel.SendToService("RegSetString|" + key() + "|ForcedScan|5\r\nRegSetString|" +
                                      key() + "|ItemCount|9");
        driver.InitiateScan(true);
        const bool failed = *c.notice != '\0';
        EXPECT_EQ(page.notices, failed ? QStringList{c.notice} : QStringList{});
        EXPECT_EQ(page.progress, c.progress);
        EXPECT_EQ(page.calls.contains("showStartPage"), failed);
        EXPECT_EQ(page.calls.contains("showEmptyLayout"), !failed);
        EXPECT_EQ(setting("ScanInfo", "UpdatesAvailable"), failed ? "7" : "0");
        EXPECT_EQ(productValue("ItemCount"), failed ? "9" : "0");
        EXPECT_EQ(productValue("ForcedScan"), failed ? "5" : "30000");
        EXPECT_EQ(setting("ScanInfo", "NumberOfScans"), QString::number(++scans));
        EXPECT_TRUE(page.sounds.isEmpty());
    }
}

// A machine with nothing to look up closes as an empty scan; a count that is no number is
// left alone; a second scan is refused while one runs.
TEST_F(ScanDriverTest, NothingToLookUpAndARunningScan) {
    settings.WriteSetting("ScanInfo", "NumberOfScans", "many");
    driver.InitiateScan(true);
    EXPECT_EQ(page.progressMaximum, 0);
    EXPECT_TRUE(page.calls.contains("showEmptyLayout"));
    EXPECT_EQ(setting("ScanInfo", "NumberOfScans"), "many");
    EXPECT_EQ(productValue("ItemCount"), "0");

    page.reset();
    control.bInProcess = true;
    driver.InitiateScan(false);
    EXPECT_EQ(page.calls, (QStringList{"disableControls", "enableControls"}));
}

}  // namespace
