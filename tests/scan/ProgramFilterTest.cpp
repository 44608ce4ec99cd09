#include <gtest/gtest.h>

#include "scan/ProgramFilter.h"
#include "support/RecordingMessageBox.h"

namespace {

using scan::Candidate;

Candidate program(const QString& name, const QString& publisher, const QString& version,
                  const QString& folder, const QString& exeName = "app.exe") {
    return {name, publisher, folder + "\\" + exeName, exeName, folder, version, "1.0.0.0"};
}

class ProgramFilterTest : public ::testing::Test {
protected:
    void SetUp() override {
        detected.InitList(6, 10);
        ignored.InitList(3, 10);
    }
    void ignore(const QString& name, const QString& publisher, const QString& location) {
        const int row = ignored.ItemAdd(name) - 1;
        ignored.SubItemSet(row, 1, name);
        ignored.SubItemSet(row, 2, publisher);
        ignored.SubItemSet(row, 3, location);
    }

    testing_support::RecordingMessageBox box;
    state::clsList detected{box};
    state::clsList ignored{box};
    QStringList log;
    QStringList dumps;
    scan::ProgramFilter filter{detected, ignored, log,
                               [this](const QString& entry) { dumps.append(entry); }};
};

TEST_F(ProgramFilterTest, AcceptedProgramIsStoredTrimmedAndLogged) {
    Candidate c = program(" Acme Tool ", "Acme", "2.0 ", "C:\\Program Files\\Acme");
    EXPECT_EQ(filter.test(c), "accepted");
    ASSERT_EQ(detected.Count(), 1);
    EXPECT_EQ(detected.ItemText(0), "C:\\Program Files\\Acme\\app.exe");
    EXPECT_EQ(detected.SubItemText(0, 3), "Acme Tool");
    EXPECT_EQ(detected.SubItemText(0, 5), "2.0");
    EXPECT_EQ(log,
              QStringList{
                  "   Program detected: Acme Tool (Acme) 2.0 (1.0.0.0), C:\\Program Files\\Acme"});
    EXPECT_TRUE(dumps.isEmpty());
    EXPECT_TRUE(box.shown.empty());
}

TEST_F(ProgramFilterTest, QualityRulesDropWhatCannotBeLookedUp) {
    struct Case {
        Candidate candidate;
        const char* verdict;
    };
    const QString folder = "C:\\P";
    for (const Case& c : {
             Case{program("  ", "Acme", "1", folder), "no name"},
             Case{program("UNAVAILABLE", "Acme", "1", folder), "name unavailable"},
             Case{program("Windows Driver Package - Acme (x)", "Acme", "1", folder),
                  "Windows driver package"},
             Case{program("Tool", "", "1", folder), "no publisher"},
             Case{program("Tool", "Unavailable", "1", folder), "publisher unavailable"},
             Case{program("Tool", "Acme", " ", folder), "no version"},
             Case{Candidate{"Tool", "Acme", "", "", "", "1", ""}, "no path"},
         }) {
        EXPECT_EQ(filter.test(c.candidate), c.verdict);
    }
    EXPECT_EQ(detected.Count(), 0);
    // Only the start of the name counts, and a folder alone is path enough.
    EXPECT_EQ(filter.test(program("My windows driver package", "Acme", "1", folder)), "accepted");
    EXPECT_EQ(filter.test(Candidate{"Tool", "Acme", "", "", "C:\\Tool", "1", ""}), "accepted");
}

TEST_F(ProgramFilterTest, FirstProgramFoundWinsEveryDuplicate) {
    ASSERT_EQ(filter.test(program("Tool", "Acme", "1.0", "C:\\A", "tool.exe")), "accepted");
    // Same executable, whatever else differs.
    EXPECT_EQ(filter.test(program("Other", "Else", "9", "C:\\A", "TOOL.EXE")), "Dupe 1");
    // Same folder and publisher, different name but the same version.
    EXPECT_EQ(filter.test(program("Tool Helper", "ACME", "1.0", "c:\\a", "helper.exe")), "Dupe 2");
    // Same name and publisher elsewhere, even with another version.
    EXPECT_EQ(filter.test(program("tool", "Acme", "2.0", "C:\\B", "tool.exe")), "Dupe 3");
    // Same folder but another publisher is another program.
    EXPECT_EQ(filter.test(program("Tool Helper", "Beta", "1.0", "C:\\A", "helper.exe")),
              "accepted");
    EXPECT_EQ(detected.Count(), 2);
    EXPECT_TRUE(dumps[0].startsWith(
        "\r\n\r\nDupe 1\r\nOther\r\nElse\r\nc:\\a\\tool.exe = c:\\a\\tool.exe"));
    EXPECT_EQ(dumps[1],
              "\r\n\r\nDupe 2\r\nTool Helper\r\nACME\r\ntool helper = tool\r\nacme = acme"
              "\r\n1.0 = 1.0\r\nacme = acme");
}

TEST_F(ProgramFilterTest, IgnoreEntriesMatchByPathFolderOrNameInTheSameParent) {
    ignore("Tool", "Acme", "C:\\A\\tool.exe");
    ignore("Suite", "Beta", "C:\\Suite");
    EXPECT_EQ(filter.test(program("Renamed", "X", "1", "C:\\A", "TOOL.exe")), "Ignore 1");
    EXPECT_EQ(filter.test(program("Renamed", "X", "1", "c:\\suite", "other.exe")), "Ignore 1");
    EXPECT_EQ(filter.test(program("tool", "ACME", "1", "C:\\A", "new.exe")), "Ignore 1");
    EXPECT_EQ(filter.test(program("Tool", "Acme", "1", "C:\\Elsewhere", "tool.exe")), "accepted");
    EXPECT_EQ(dumps.size(), 3);
    EXPECT_EQ(dumps[0],
              "\r\n\r\nIgnore 1\r\nRenamed\r\nX\r\nc:\\a\\tool.exe = c:\\a\\tool.exe"
              "\r\nrenamed = tool\r\nx = acme\r\nc:\\a = c:\\a");
}

// An ignored program that is a duplicate as well writes both dump entries.
TEST_F(ProgramFilterTest, IgnoredDuplicateWritesBothEntries) {
    ASSERT_EQ(filter.test(program("Tool", "Acme", "1", "C:\\A")), "accepted");
    ignore("Tool", "Acme", "C:\\A\\app.exe");
    EXPECT_EQ(filter.test(program("Tool", "Acme", "1", "C:\\A")), "Ignore 1");
    ASSERT_EQ(dumps.size(), 2);
    EXPECT_TRUE(dumps[0].contains("Ignore 1"));
    EXPECT_TRUE(dumps[1].contains("Dupe 1"));
}

TEST_F(ProgramFilterTest, ListDumps) {
    ignore("Tool", "Acme", "C:\\A\\tool.exe");
    filter.test(program("Tool", "Beta", "3", "C:\\B"));
    EXPECT_EQ(scan::ProgramFilter::ignoredDump(ignored),
              "\r\n\"\" = Tool\r\nProgram name = Tool\r\nPublisher = Acme\r\nLocation = "
              "C:\\A\\tool.exe\r\n");
    EXPECT_EQ(scan::ProgramFilter::resultsDump(detected),
              "\r\nPath = C:\\B\\app.exe\r\nFolder = C:\\B\r\nExe = app.exe\r\nName = Tool\r\n"
              "Publisher = Beta\r\nProduct Version = 3\r\nFile Version = 1.0.0.0\r\n");
}

}  // namespace
