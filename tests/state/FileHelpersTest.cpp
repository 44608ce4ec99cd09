#include <gtest/gtest.h>

#include <QDateTime>

#include <ctime>
#include <vector>

#include "state/FileHelpers.h"
#include "support/TestMachine.h"

namespace {

class FileHelpersTest : public ::testing::Test {
protected:
    bool isFile(const std::string& winPath) { return machine.platform().files.FileExists(winPath); }

    testing_support::TestMachine machine;
    state::FileHelpers helpers{machine.platform()};
};

TEST_F(FileHelpersTest, FileExistsCoversDrivesFoldersAndFiles) {
    machine.placeFile("C:\\Data\\Report.txt", "x");
    for (const auto& [path, exists] :
         std::initializer_list<std::pair<const char*, bool>>{{"C:\\", true},
                                                             {"c:\\", true},
                                                             {"Q:\\", false},
                                                             {"C:", false},
                                                             {"", false},
                                                             {"C:\\data\\REPORT.TXT", true},
                                                             {"C:\\Data", true},
                                                             {"C:\\Data\\*.txt", true},
                                                             {"C:\\Data\\Report.doc", false},
                                                             {"C:\\Missing\\Report.txt", false}}) {
        EXPECT_EQ(helpers.FileExists(path), exists) << path;
    }
    EXPECT_TRUE(helpers.FolderExists("C:\\Data"));
    EXPECT_FALSE(helpers.FolderExists("C:\\Data\\Report.txt"));
}

TEST_F(FileHelpersTest, CreateBlankFileEmptiesOrMakesTheFile) {
    machine.placeFile("C:\\Data\\Log.txt", "old lines");
    EXPECT_TRUE(helpers.CreateBlankFile("C:\\Data\\Log.txt"));
    EXPECT_EQ(machine.platform().files.readFile("C:\\Data\\Log.txt"), std::string());
    EXPECT_TRUE(helpers.CreateBlankFile("C:\\Data\\New.cus"));
    EXPECT_TRUE(machine.platform().files.FileExists("C:\\Data\\New.cus"));
    EXPECT_FALSE(helpers.CreateBlankFile("C:\\Missing\\New.cus"));
}

TEST_F(FileHelpersTest, UniqueFileNameNumbersBeforeTheExtension) {
    QString free = "C:\\Data\\skipped dump.txt";
    helpers.UniqueFileName(free);
    EXPECT_EQ(free, "C:\\Data\\skipped dump.txt");

    machine.placeFile("C:\\Data\\skipped dump.txt", "");
    machine.placeFile("C:\\Data\\skipped dump(1).txt", "");
    QString taken = "C:\\Data\\skipped dump.txt";
    helpers.UniqueFileName(taken);
    EXPECT_EQ(taken, "C:\\Data\\skipped dump(2).txt");

    // A dot in a folder's name is no extension.
    machine.placeFile("C:\\My.Data\\dump", "");
    QString bare = "C:\\My.Data\\dump";
    helpers.UniqueFileName(bare);
    EXPECT_EQ(bare, "C:\\My.Data\\dump(1)");
}

TEST_F(FileHelpersTest, PercentEscapeWorksOnTheAnsiBytes) {
    const auto& codePage = machine.platform().codePage;
    EXPECT_EQ(state::PercentEscape(codePage, "Tallowick 2.1"), "Tallowick%202%2E1");
    EXPECT_EQ(state::PercentEscape(codePage, "a&b=c/d"), "a%26b%3Dc%2Fd");
    EXPECT_EQ(state::PercentEscape(codePage, QString::fromUtf8("Grüße €")), "Gr%FC%DFe%20%80");
    EXPECT_EQ(state::PercentEscape(codePage, QString::fromUtf8("\u0416")), "%3F");
    EXPECT_EQ(state::PercentEscape(codePage, ""), "");
}

// The stamp is UTC in any zone: New York's bias is 300 or 240 minutes, never 0.
TEST_F(FileHelpersTest, TimeStampIsUtcInAnyZone) {
    const QByteArray zone = qgetenv("TZ");
    qputenv("TZ", "America/New_York");
    tzset();
    const int bias = machine.platform().clock.timeZoneBiasMinutes();
    const QString stamp = helpers.TimeStampUTC();
    zone.isNull() ? qunsetenv("TZ") : qputenv("TZ", zone);
    tzset();
    ASSERT_GE(bias, 240);
    QDateTime parsed = QDateTime::fromString(stamp, "yyyy-MM-dd HH:mm:ss");
    ASSERT_TRUE(parsed.isValid()) << stamp.toStdString();
    parsed.setTimeSpec(Qt::UTC);
    EXPECT_LE(std::abs(parsed.secsTo(QDateTime::currentDateTimeUtc())), 5) << stamp.toStdString();
}

TEST(FileHelpersMachineTest, UserNameComesFromTheCodePage) {
    platform::portable::MachineFacts facts;
    facts.userName = "J\xC3\xBCrgen";
    testing_support::TestMachine machine(facts);
    state::FileHelpers helpers(machine.platform());
    EXPECT_EQ(helpers.GetOSUserName(), QString::fromUtf8("Jürgen"));
}

TEST(FileHelpersMachineTest, WindowsVersionsAndVista) {
    struct Case {
        int platform, major, minor;
        const char* name;
        bool vista;
    };
    const std::vector<Case> cases = {
        {0, 3, 10, "Win32", false},   {1, 4, 0, "Win 95", false},   {1, 4, 10, "Win 98", false},
        {1, 4, 90, "", false},        {2, 4, 0, "Win NT", false},   {2, 5, 0, "Win 2000", false},
        {2, 5, 1, "Win XP", false},   {2, 5, 2, "", false},         {2, 6, 0, "Vista", true},
        {2, 6, 1, "Windows 7", true}, {2, 6, 2, "Windows 8", true}, {2, 6, 3, "", false},
        {2, 10, 0, "", false},        {1, 6, 0, "", false}};
    for (const Case& c : cases) {
        platform::portable::MachineFacts facts;
        facts.os = {c.platform, c.major, c.minor, 1000};
        testing_support::TestMachine machine(facts);
        state::FileHelpers helpers(machine.platform());
        const std::string version = std::to_string(c.platform) + ":" + std::to_string(c.major) +
                                    "." + std::to_string(c.minor);
        EXPECT_EQ(helpers.WindowsVersion(), c.name) << version;
        EXPECT_EQ(helpers.IsVista(), c.vista) << version;
    }
}

}  // namespace
