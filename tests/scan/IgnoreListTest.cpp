#include <gtest/gtest.h>

#include "RecordingPages.h"
#include "core/QtPrinters.h"
#include "scan/IgnoreList.h"
#include "scan/ResultsActions.h"
#include "scan/ScanStatistics.h"
#include "state/SettingNames.h"
#include "support/RecordingMachine.h"

namespace {

const std::string kIgnored = "C:\\ProgramData\\Tallowick\\Settings\\Ignored.cus";

class IgnoreListTest : public ::testing::Test {
protected:
    IgnoreListTest() {
        auto& files = machine.platform().files;
        files.MkDir("C:\\ProgramData\\Tallowick");
        files.MkDir("C:\\ProgramData\\Tallowick\\Settings");
        settings.setSettingsPath("C:\\ProgramData\\Tallowick\\Settings\\Tallowick.ini");
        language.SetLanguageText(
            "[[Code_Strings]]\r\nstrLoc_SH_NoItemsToRemove=none to remove\r\n"
            "strLoc_SH_NoItemsSelected=none checked\r\nstrLoc_SH_SureYouWantDeleteIgnoreItems=sure?"
            "\r\nstrLoc_SH_OneItemRemoved=one removed\r\n"
            "strLoc_SH_NumItemsRemoved={#NumItems} removed\r\nstrLoc_SH_SureStopStatistics=reset?"
            "\r\nstrLoc_SH_NotActive=off\r\nstrLoc_SH_ActiveCapital=ON\r\n"
            "strLoc_SH_ActiveLastScan=on since\r\n; end\r\n");
        language.InitCodeStrings();
    }
    void load(const QStringList& lines) {
        holder.lstIgnoreListFile = lines;
        ignore.LoadIgnoredToList();
    }
    std::string file() { return machine.platform().files.readFile(kIgnored).value_or("<none>"); }

    testing_support::RecordingMachine recording;
    testing_support::TestMachine& machine = recording.test;
    QString dataFolder = "C:\\ProgramData\\Tallowick\\";
    state::lst holder;
    state::SettingsFiles files{machine.platform(), dataFolder, holder, "Tallowick"};
    state::clsList entries{machine.platform().messageBox};
    state::modSettings settings{machine.platform()};
    localisation::LanguageText language{"TW"};
    RecordingIgnorePage page;
    scan::IgnoreList ignore{holder, entries, files, language, page, page.box};
    scan::ScanStatistics statistics{settings, language, ignore, page, page.box};
};

// Four and five fields load alike; a line without name, publisher and location is dropped;
// the page shows 220 characters of a long text and the entry list keeps it whole.
TEST_F(IgnoreListTest, LoadingKeepsLinesThatNameAProgram) {
    const QString longName(300, u'n');
    load({"   1.0|Tool|Maker|C:\\Tool\\tool.exe", "   2.0|Other|Maker|C:\\Other|", "   3.0",
          "   4.0| | |", "|" + longName + "||"});
    EXPECT_EQ(page.total, 3);
    ASSERT_EQ(page.rows.size(), 3u);
    EXPECT_EQ(page.rows[0], (QStringList{"   1.0", "Tool", "Maker", "C:\\Tool\\tool.exe"}));
    EXPECT_EQ(page.rows[1], (QStringList{"   2.0", "Other", "Maker", "C:\\Other"}));
    EXPECT_EQ(page.rows[2][1], QString(220, u'n') + "...");
    EXPECT_EQ(entries.SubItemText(2, 1), longName);
    EXPECT_TRUE(recording.box.shown.empty());
}

// Removal needs rows, checks and a Yes; then the checked rows go and the others are written
// back with a fifth, empty field, without the lines that were dropped at loading.
TEST_F(IgnoreListTest, RemovalAsksThenRewritesTheSurvivors) {
    ignore.cmdDeleteSelected_Click();
    EXPECT_EQ(page.boxes.back(), (std::pair<QString, std::uint32_t>{
                                     "none to remove", platform::mbstyle::IconExclamation}));
    load({"   1.0|Tool|Maker|C:\\Tool", "   3.0", "   2.0|Other|Maker|C:\\Other",
          "   5.0|Third||C:\\Third"});
    ignore.cmdDeleteSelected_Click();
    EXPECT_EQ(page.boxes.back().first, "none checked");
    page.checked = {0, 2};
    page.answer = platform::mbresult::No;
    ignore.cmdDeleteSelected_Click();
    EXPECT_EQ(page.boxes.back().first, "sure?");
    EXPECT_EQ(file(), "<none>");

    page.answer = platform::mbresult::Yes;
    ignore.cmdDeleteSelected_Click();
    EXPECT_EQ(file(), "   2.0|Other|Maker|C:\\Other|");
    EXPECT_EQ(page.total, 1);
    EXPECT_EQ(page.boxes.back(),
              (std::pair<QString, std::uint32_t>{"2 removed", platform::mbstyle::IconInformation}));
    page.checked = {0};
    ignore.cmdDeleteSelected_Click();
    EXPECT_EQ(file(), "");
    EXPECT_EQ(page.boxes.back().first, "one removed");
}

// Ignoring from the results touches only the hidden list; twice gives two lines.
TEST_F(IgnoreListTest, IgnoreProgramAddsALineAndLogsIt) {
    state::ActivityLog log(machine.platform(), settings, "C:\\ProgramData\\Tallowick\\Log.txt");
    scan::IgnoreProgram(holder, log, "Tool", "Maker", "C:\\Tool\\tool.exe", "1.2");
    scan::IgnoreProgram(holder, log, "Tool", "Maker", "C:\\Tool\\tool.exe", "1.2");
    EXPECT_EQ(holder.lstIgnoreListFile, QStringList(2, "   1.2|Tool|Maker|C:\\Tool\\tool.exe"));
    EXPECT_EQ(
        machine.platform().files.readFile("C:\\ProgramData\\Tallowick\\Log.txt"),
        std::string("Program added to Ignore List: Tool (Maker) 1.2, C:\\Tool\\tool.exe\r\n")
            .append("Program added to Ignore List: Tool (Maker) 1.2, C:\\Tool\\tool.exe\r\n"));
    EXPECT_EQ(file(), "<none>");
}

// The reset writes the three defaults after a Yes; the ignore count and the scheduler line
// come from their own sources.
TEST_F(IgnoreListTest, StatisticsPanelAndItsReset) {
    using namespace state::setting;
    settings.WriteSetting(LastScan, "11/23/2026 4:00:00 PM");
    settings.WriteSetting(NumberOfScans, "7");
    settings.WriteSetting(UpdatesAvailable, "3");
    load({"   1.0|Tool|Maker|C:\\Tool"});
    statistics.StatusInfoDisplay();
    EXPECT_EQ(
        page.panel,
        (std::map<int, QString>{
            {0, "11/23/2026 4:00:00 PM"}, {1, "7"}, {2, "3"}, {3, "1"}, {4, "1.0.0"}, {5, "off"}}));
    page.answer = platform::mbresult::No;
    statistics.lblCmdResetStatistics_Click();
    EXPECT_EQ(page.boxes.back().second, platform::mbstyle::YesNo | platform::mbstyle::IconQuestion);
    EXPECT_EQ(settings.ReadSetting(NumberOfScans, "x"), "7");
    page.answer = platform::mbresult::Yes;
    statistics.lblCmdResetStatistics_Click();
    EXPECT_EQ(page.panel[1], "0");
    EXPECT_EQ(page.panel[2], "0");
    EXPECT_EQ(page.panel[3], "1");

    settings.WriteSetting(SchedulerActivate, "1");
    statistics.StatusInfoDisplay();
    EXPECT_EQ(page.panel[5], "ON");
    settings.WriteSetting(LastScanDate, "11/22/2026");
    settings.WriteSetting(LastScanTime, "1:00:00 AM");
    statistics.StatusInfoDisplay();
    EXPECT_EQ(page.panel[5], "on since 11/22/2026 - 1:00:00 AM");
}

}  // namespace
