#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <tuple>

#include "core/QtPrinters.h"
#include "support/ProgramRun.h"
#include "support/TestMachine.h"
#include "support/UpdateServerProcess.h"

namespace {

using CliRun = testing_support::ProgramRun;

// Runs the console front end on a machine folder, as a script would.
class CliTest : public ::testing::Test {
protected:
    CliRun cli(const QStringList& arguments) {
        return testing_support::runProgram(TALLOWICK_CLI, arguments, machineFolder);
    }
    void init() { ASSERT_EQ(cli({"machine", "init"}).status, 0); }
    // A machine with the program installed, its service stopped, and English stored.
    void installInEnglish() {
        init();
        ASSERT_EQ(
            testing_support::runProgram(TALLOWICK_SETUP, {"install", "--no-start"}, machineFolder)
                .status,
            0);
        ASSERT_EQ(
            cli({"reg", "set", "HKEY_LOCAL_MACHINE\\Software\\Tallowick", "Language", "en"}).status,
            0);
    }

    QTemporaryDir dir;
    QString machineFolder = dir.path() + "/machine";
};

TEST_F(CliTest, BadUsageExitsWithTwoAndOneLine) {
    for (const QStringList& arguments :
         {QStringList{}, QStringList{"nonsense"}, QStringList{"reg", "get", "only-key"},
          QStringList{"machine"}, QStringList{"args"}, QStringList{"verinfo"}}) {
        const CliRun run = cli(arguments);
        EXPECT_EQ(run.status, 2) << arguments.join(' ').toStdString();
        EXPECT_TRUE(run.err.startsWith("usage: tallowick-cli"));
        EXPECT_EQ(run.err.count('\n'), 1);
    }
}

TEST_F(CliTest, MissingMachineIsToldNotCrashed) {
    const CliRun run = cli({"reg", "get", "HKEY_LOCAL_MACHINE\\Software", "x"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.err.contains("not a machine folder"));
}

TEST_F(CliTest, InitRefusesAnExistingMachine) {
    init();
    const CliRun again = cli({"machine", "init"});
    EXPECT_EQ(again.status, 1);
    EXPECT_TRUE(again.err.contains("already there"));
}

TEST_F(CliTest, RegistryValuesRoundTrip) {
    init();
    EXPECT_EQ(
        cli({"reg", "set", "HKEY_LOCAL_MACHINE\\Software\\Tallowick", "Language", "de"}).status, 0);
    EXPECT_EQ(cli({"reg", "get", "HKEY_LOCAL_MACHINE\\Software\\Tallowick", "language"}).out,
              "de\n");
    EXPECT_EQ(cli({"reg", "get", "HKEY_LOCAL_MACHINE\\Software\\Tallowick", "Missing"}).out,
              "Error\n");
    EXPECT_EQ(cli({"reg", "dword", "HKEY_LOCAL_MACHINE\\Software\\Tallowick", "Missing"}).out,
              "Error\n");
}

TEST_F(CliTest, ImportAndExportTheRealExport) {
    init();
    QFile sample(QString(TALLOWICK_TEST_DATA) + "/uninstall-sample.reg");
    const CliRun import = cli({"reg", "import", sample.fileName()});
    ASSERT_EQ(import.status, 0) << import.err.toStdString();
    const QString key =
        "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall";
    EXPECT_EQ(cli({"reg", "get", key + "\\7-Zip", "DisplayName"}).out, "7-Zip 24.08 (x64)\n");
    EXPECT_EQ(cli({"reg", "dword", key + "\\7-Zip", "NoModify"}).out, "1\n");
    const CliRun exported = cli({"reg", "export", key});
    EXPECT_EQ(exported.status, 0);
    EXPECT_TRUE(exported.out.startsWith("Windows Registry Editor Version 5.00"));
    EXPECT_TRUE(exported.out.contains("[" + key + "\\7-Zip]"));
    EXPECT_TRUE(exported.out.contains("\"DisplayVersion\"=\"24.08\""));

    QFile broken(dir.path() + "/broken.reg");
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write(
        "Windows Registry Editor Version "
        "5.00\r\n\r\n[HKEY_CURRENT_USER\\X]\r\n\"a\"=dword:xyz\r\n");
    broken.close();
    const CliRun refused = cli({"reg", "import", broken.fileName()});
    EXPECT_EQ(refused.status, 1);
    EXPECT_TRUE(refused.err.contains("broken.reg:4")) << refused.err.toStdString();
}

TEST_F(CliTest, VerinfoPrintsOneLineEachWithEmptyForMissing) {
    init();
    QFile source(QString(TALLOWICK_TEST_DATA) + "/zlib1-x64.dll");
    ASSERT_TRUE(source.copy(machineFolder + "/drive_c/zlib1.dll"));
    const CliRun run = cli({"verinfo", "C:\\ZLIB1.DLL", "C:\\missing.dll"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out,
              "file=C:\\ZLIB1.DLL\nFileVersion=1.2.13\nProductVersion=1.2.13\nCompanyName=\n"
              "FileDescription=zlib data compression library\nFixedFileVersion=1.2.13.0\n"
              "file=C:\\missing.dll\nFileVersion=\nProductVersion=\nCompanyName=\n"
              "FileDescription=\nFixedFileVersion=\n");
}

TEST_F(CliTest, DemoInitInstallsTheShippedCatalogOrAGivenOne) {
    const CliRun run = cli({"machine", "init", "--demo", "--seed", "4"});
    ASSERT_EQ(run.status, 0) << run.err.toStdString();
    const auto programs = QRegularExpression("programs=(\\d+)\n").match(run.out);
    ASSERT_TRUE(programs.hasMatch()) << run.out.toStdString();
    EXPECT_GE(programs.captured(1).toInt(), 300);

    QFile catalog(dir.path() + "/tiny.csv");
    ASSERT_TRUE(catalog.open(QIODevice::WriteOnly));
    catalog.write("PackageId,Version,Name\nAcme.Rocket,2.5,Rocket\n");
    catalog.close();
    machineFolder = dir.path() + "/second";
    const CliRun tiny = cli({"machine", "init", "--demo", "--catalog", catalog.fileName()});
    EXPECT_EQ(tiny.status, 0) << tiny.err.toStdString();
    EXPECT_TRUE(tiny.out.contains("programs=1\n")) << tiny.out.toStdString();

    machineFolder = dir.path() + "/third";
    const CliRun missing = cli({"machine", "init", "--demo", "--catalog", dir.path() + "/no.csv"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_TRUE(missing.err.contains("no.csv: the catalog cannot be read"))
        << missing.err.toStdString();
    for (const QStringList& wrong : {QStringList{"machine", "init", "--seed", "4"},
                                     QStringList{"machine", "init", "--demo", "--seed", "x"}}) {
        EXPECT_EQ(cli(wrong).status, 2);
    }
}

TEST_F(CliTest, ArgsPrintsWhatTheParserLeaves) {
    const CliRun run = cli({"args", "/language=FR /boot /LOADER=x.ini"});
    EXPECT_EQ(run.status, 0);
    EXPECT_TRUE(run.out.contains("silent=true\n"));
    EXPECT_TRUE(run.out.contains("message=Ignoring unknown command line argument(s): boot \n"));
    EXPECT_TRUE(run.out.contains("languageId=fr\n"));
    EXPECT_TRUE(run.out.contains("loaderFileName=x.ini\n"));
}

}  // namespace

namespace {

// The work list of the demo machine: every accepted line has its seven fields, and every key
// has a verdict, among them each kind of key the demo machine holds to be dropped.
TEST_F(CliTest, ProgramsListsTheWorkListAndWhy) {
    ASSERT_EQ(cli({"machine", "init", "--demo"}).status, 0);
    const CliRun list = cli({"programs"});
    ASSERT_EQ(list.status, 0);
    const QStringList lines = list.out.split('\n', Qt::SkipEmptyParts);
    EXPECT_GE(lines.size(), 300);
    for (const QString& line : lines) {
        EXPECT_EQ(line.count('\t'), 6) << line.toStdString();
    }
    const QString why = cli({"programs", "--why"}).out;
    EXPECT_EQ(why.count("\naccepted\t") + why.startsWith("accepted\t"), lines.size());
    for (const char* verdict : {"SystemComponent\t", "Windows driver package\t", "Dupe ",
                                "no publisher\t", "no name\t"}) {
        EXPECT_TRUE(why.contains(verdict)) << verdict;
    }
    EXPECT_EQ(cli({"programs", "--bogus"}).status, 2);
}

// The service commands on a machine that the installer laid out: a send starts a stopped
// service, as the program's recovery would, and returns once the service has taken it.
TEST_F(CliTest, ServiceCommandsDriveTheInstalledService) {
    init();
    EXPECT_EQ(cli({"service", "status"}).out, "not installed\n");
    const CliRun nowhere = cli({"service", "send", "RegCreateKey|HKEY_LOCAL_MACHINE\\Software"});
    EXPECT_EQ(nowhere.status, 1);
    EXPECT_TRUE(nowhere.err.contains("not installed"));

    const CliRun setup =
        testing_support::runProgram(TALLOWICK_SETUP, {"install", "--no-start"}, machineFolder);
    ASSERT_EQ(setup.status, 0) << setup.err.toStdString();
    EXPECT_EQ(cli({"service", "status"}).out, "stopped\n");
    const CliRun send =
        cli({"service", "send", "RegSetString|HKEY_LOCAL_MACHINE\\Software\\Tallowick|Language|de",
             "RegSetString|HKEY_LOCAL_MACHINE\\Software\\Other|Language|de"});
    EXPECT_EQ(send.status, 0) << send.err.toStdString();
    EXPECT_EQ(send.out, "taken\n");
    EXPECT_EQ(cli({"reg", "get", "HKEY_LOCAL_MACHINE\\Software\\Tallowick", "Language"}).out,
              "de\n");
    EXPECT_EQ(cli({"reg", "get", "HKEY_LOCAL_MACHINE\\Software\\Other", "Language"}).out,
              "Error\n");

    EXPECT_EQ(cli({"service", "stop"}).out, "stopped\n");
    EXPECT_EQ(cli({"service", "start"}).out, "running\n");
    EXPECT_EQ(cli({"service", "start"}).out, "running\n");
    // A command file that can't be written fails the send with its handler's line.
    ASSERT_TRUE(QDir(machineFolder + "/drive_c/ProgramData/Tallowick/Service").removeRecursively());
    const CliRun lost =
        cli({"service", "send", "RegCreateKey|HKEY_LOCAL_MACHINE\\Software\\Tallowick"});
    EXPECT_EQ(lost.status, 1);
    EXPECT_TRUE(lost.err.contains("Error 76 (Path not found) in procedure SendToService"));
    EXPECT_EQ(cli({"service", "stop"}).out, "stopped\n");
    EXPECT_EQ(cli({"service", "pause"}).status, 2);
}

// A key written by one process reads back in the next: nothing is cached.
TEST_F(CliTest, SettingsWrittenByOneProcessReadInTheNext) {
    init();
    EXPECT_EQ(cli({"settings", "get", "General", "ScanOnLoad", "0"}).out, "0\n");
    ASSERT_EQ(cli({"settings", "set", "General", "ScanOnLoad", "1"}).status, 0);
    EXPECT_EQ(cli({"settings", "get", "general", "SCANONLOAD", "0"}).out, "1\n");
    ASSERT_EQ(cli({"settings", "delete", "General", "ScanOnLoad"}).status, 0);
    EXPECT_EQ(cli({"settings", "get", "General", "ScanOnLoad", "0"}).out, "0\n");
    EXPECT_EQ(cli({"settings", "set", "General"}).status, 2);
}

// The installed program's words, in the stored language or the one asked for.
TEST_F(CliTest, LangGetPrintsAVariableOfTheInstalledLanguage) {
    init();
    const CliRun absent = cli({"lang", "get", "strLoc_CS_ProductName_TW"});
    EXPECT_EQ(absent.status, 1);
    EXPECT_TRUE(absent.err.contains("cannot be found"));

    const CliRun setup =
        testing_support::runProgram(TALLOWICK_SETUP, {"install", "--no-start"}, machineFolder);
    ASSERT_EQ(setup.status, 0) << setup.err.toStdString();
    EXPECT_EQ(cli({"lang", "get", "strLoc_CS_ProductName_TW"}).out, "Tallowick\n");
    EXPECT_EQ(cli({"lang", "get", "strURL_SH_Corporate", "--language", "ja"}).out,
              "http://127.0.0.1:8417\n");
    EXPECT_EQ(cli({"lang", "get", "strLoc_Nothing"}).out,
              "Error in function GetStrLocValue -- line strLoc_Nothing\n");
    const CliRun english = cli({"lang", "get", "strLoc_SH_YesCapital", "--language", "en"});
    ASSERT_EQ(
        cli({"reg", "set", "HKEY_LOCAL_MACHINE\\Software\\Tallowick", "Language", "de"}).status, 0);
    EXPECT_NE(cli({"lang", "get", "strLoc_SH_YesCapital"}).out, english.out);
    const CliRun wrong = cli({"lang", "get", "strLoc_SH_YesCapital", "--language", "english"});
    EXPECT_EQ(wrong.status, 1);
    EXPECT_TRUE(wrong.err.contains("Error processing command line argument: language=english"));
}

TEST_F(CliTest, CompareAnswersOnePairOrEveryLineOfItsInput) {
    EXPECT_EQ(cli({"compare", "1.2", "1.10"}).out, "true\n");
    EXPECT_EQ(cli({"compare", "1.2", "1.2.0"}).out, "false\n");
    const CliRun lines = testing_support::runProgram(TALLOWICK_CLI, {"compare"}, machineFolder,
                                                     "1.2\t1.3\r\nno tab\n\t1\n2.0\t\n");
    EXPECT_EQ(lines.out, "true\ninvalid\ntrue\nfalse\n");
    EXPECT_EQ(lines.status, 1);
    EXPECT_EQ(cli({"compare", "1.2"}).status, 2);
}

// One lookup as the scan makes it, printed field by field; the identifier the server gives is
// kept for the next.
TEST_F(CliTest, LookupPrintsTheElevenFields) {
    init();
    ASSERT_EQ(testing_support::runProgram(TALLOWICK_SETUP, {"install", "--no-start"}, machineFolder)
                  .status,
              0);
    testing_support::UpdateServerProcess server(UPDATE_SERVER,
                                                TALLOWICK_TEST_DATA "/catalog-small.csv");
    ASSERT_TRUE(server.running());
    const CliRun run = cli({"lookup", "Air Explorer 5.8.1", "AirExplorer GmbH", "5.8.1", "5.8.1.0",
                            "--server", server.base()});
    ASSERT_EQ(run.status, 0) << run.err.toStdString();
    const QStringList lines = run.out.split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 11);
    EXPECT_EQ(lines[0], "FVR1=5.9.2.0");
    EXPECT_EQ(lines[1], "PVR1=5.9.2");
    EXPECT_EQ(lines[10], "Status=0");
    const QString uid = lines[7];
    EXPECT_EQ(
        cli({"lookup", "GSview", "", "4.9", "--server", server.base()}).out.split('\n').value(7),
        uid);
    EXPECT_TRUE(cli({"lookup", "Unheard Of", "", "1", "--server", server.base()})
                    .out.contains("ErrCode=4002\n"));
    EXPECT_EQ(cli({"lookup", "x", "y", "--server"}).status, 2);
}

// The ignore list and the statistics of the installed program, as the next process sees them.
TEST_F(CliTest, IgnoreAndStatsActOnTheProgramsFiles) {
    installInEnglish();
    ASSERT_EQ(cli({"ignore", "add", "Tool", "Maker", "C:\\Tool\\tool.exe", "1.2"}).status, 0);
    ASSERT_EQ(cli({"ignore", "add", "Other", "", "C:\\Other"}).status, 0);
    EXPECT_EQ(cli({"ignore", "list"}).out,
              "1\t1.2\tTool\tMaker\tC:\\Tool\\tool.exe\n2\t\tOther\t\tC:\\Other\n");
    EXPECT_TRUE(cli({"stats"}).out.contains("ignored=2\n"));
    const CliRun removed = cli({"ignore", "remove", "2"});
    EXPECT_EQ(removed.status, 0);
    EXPECT_FALSE(removed.out.isEmpty());
    EXPECT_EQ(cli({"ignore", "list"}).out, "1\t1.2\tTool\tMaker\tC:\\Tool\\tool.exe\n");
    EXPECT_EQ(cli({"ignore", "remove", "5"}).status, 1);

    ASSERT_EQ(cli({"settings", "set", "ScanInfo", "NumberOfScans", "4"}).status, 0);
    EXPECT_TRUE(cli({"stats"}).out.startsWith("lastScan=\nnumberOfScans=4\n"));
    EXPECT_TRUE(cli({"stats", "--reset"})
                    .out.contains("numberOfScans=0\nupdatesAvailable=0\n"
                                  "ignored=1\nversion=1.0.0\n"));
}

}  // namespace

// A whole scan as the main job runs it: its lines, its summary, the statistics it leaves, and
// the notice of a server that answers nothing.
TEST_F(CliTest, ScanPrintsUpdatesNoticesAndItsSummary) {
    installInEnglish();
    const QString key =
        "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\";
    QString reg = "Windows Registry Editor Version 5.00\r\n\r\n";
    for (const auto& [name, publisher, version] :
         {std::tuple{"3CX Call Flow Designer (x64)", "3CX s.r.o.", "18.5.8"},
          std::tuple{"Air Explorer", "AirExplorer GmbH", "5.9.2"},
          std::tuple{"Nothing Like It", "Nobody", "1.0"}}) {
        const QString folder = QString(name).remove(' ');
        ASSERT_TRUE(QDir().mkpath(machineFolder + "/drive_c/Apps/" + folder));
        reg += "[" + key + folder + "]\r\n\"DisplayName\"=\"" + name + "\"\r\n\"Publisher\"=\"" +
               publisher + "\"\r\n\"DisplayVersion\"=\"" + version +
               "\"\r\n\"InstallLocation\"=\"C:\\\\Apps\\\\" + folder + "\"\r\n\r\n";
    }
    QFile regFile(dir.filePath("programs.reg"));
    ASSERT_TRUE(regFile.open(QIODevice::WriteOnly));
    regFile.write(reg.toUtf8());
    regFile.close();
    ASSERT_EQ(cli({"reg", "import", regFile.fileName()}).status, 0);

    testing_support::UpdateServerProcess server(UPDATE_SERVER,
                                                TALLOWICK_TEST_DATA "/catalog-small.csv");
    const CliRun scan = cli({"scan", "--server", server.base()});
    ASSERT_EQ(scan.status, 0) << scan.err.toStdString();
    const QStringList lines = scan.out.split('\n', Qt::SkipEmptyParts);
    EXPECT_EQ(lines.filter(QRegularExpression("^phase\t")),
              (QStringList{"phase\t1\tpreparation", "phase\t2\tdetection", "phase\t3\tlookups",
                           "phase\t4\tclosing"}));
    // The installed program's own uninstall key is the fourth.
    EXPECT_EQ(lines.filter(QRegularExpression("^program\t")).size(), 4);
    EXPECT_EQ(lines.filter(QRegularExpression("^update\t")),
              QStringList{"update\t3CX Call Flow Designer (x64)\t3CX s.r.o.\t18.5.8\t20.2.84\t"
                          "https://www.google.com/search?hl=en&q=3CX+Call+Flow+Designer+(x64)"});
    EXPECT_EQ(lines.mid(lines.size() - 5),
              (QStringList{"summary\tstate\tcompleted", "summary\tprograms\t4",
                           "summary\tupdates\t1", "summary\tscans\t1",
                           "summary\tlog\tC:\\ProgramData\\Tallowick\\Tallowick Log.txt"}));
    EXPECT_TRUE(cli({"stats"}).out.contains("numberOfScans=1\nupdatesAvailable=1\n"));

    testing_support::UpdateServerProcess silent(
        UPDATE_SERVER, TALLOWICK_TEST_DATA "/catalog-small.csv", {"--test-reply", "empty"});
    const CliRun failed = cli({"scan", "--server", silent.base()});
    EXPECT_TRUE(failed.out.contains(
        "\nnotice\tfrmUnableToCheck\tTallowick - No Connection\tTallowick could not reach"))
        << failed.out.toStdString();
    EXPECT_TRUE(
        failed.out.endsWith("summary\tstate\tfailed\nsummary\tprograms\t4\n"
                            "summary\tupdates\t0\nsummary\tscans\t2\n"
                            "summary\tlog\tC:\\ProgramData\\Tallowick\\Tallowick Log.txt\n"));
    EXPECT_TRUE(cli({"stats"}).out.contains("numberOfScans=2\nupdatesAvailable=1\n"));
    EXPECT_EQ(cli({"scan", "--server"}).status, 2);
    EXPECT_EQ(cli({"service", "stop"}).out, "stopped\n");
}
