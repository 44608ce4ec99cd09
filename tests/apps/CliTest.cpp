// tallowick-cli run as a process, the way scripts run it: the lines each command family prints
// and its exit statuses, the demo machine's work list, and a scan with its summary and Ctrl-C.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>

#include <csignal>

#include "core/QtPrinters.h"
#include "support/ProgramRun.h"
#include "support/UpdateServerProcess.h"

namespace {

using CliRun = testing_support::ProgramRun;

const QString kProduct = "HKEY_LOCAL_MACHINE\\Software\\Tallowick";
const QString kUninstall =
    "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall";
const QString kCatalog = TALLOWICK_TEST_DATA "/catalog-small.csv";

// A command and what a script reads of it: the exit status, the whole output, a part of the
// error stream.
struct Step {
    QStringList arguments;
    int status;
    QString out;
    QString err = {};
};

class CliTest : public ::testing::Test {
protected:
    CliRun cli(const QStringList& arguments, const QByteArray& input = {}) {
        return testing_support::runProgram(TALLOWICK_CLI, arguments, machineFolder, input);
    }
    void expectSteps(const std::vector<Step>& steps) {
        for (const Step& step : steps) {
            const CliRun run = cli(step.arguments);
            const std::string command = step.arguments.join(' ').toStdString();
            EXPECT_EQ(run.status, step.status) << command;
            EXPECT_EQ(run.out, step.out) << command;
            EXPECT_TRUE(run.err.contains(step.err)) << command << ": " << run.err.toStdString();
        }
    }
    void setup() {
        const CliRun run =
            testing_support::runProgram(TALLOWICK_SETUP, {"install", "--no-start"}, machineFolder);
        ASSERT_EQ(run.status, 0) << run.err.toStdString();
    }
    // A machine with the program installed, its service stopped, English stored, and programs
    // (name, publisher, version) installed each in its own folder.
    void installWith(const std::vector<std::tuple<QString, QString, QString>>& programs) {
        ASSERT_EQ(cli({"machine", "init"}).status, 0);
        setup();
        ASSERT_EQ(cli({"reg", "set", kProduct, "Language", "en"}).status, 0);
        QString reg = "Windows Registry Editor Version 5.00\r\n\r\n";
        for (const auto& [name, publisher, version] : programs) {
            const QString folder = QString(name).remove(' ');
            ASSERT_TRUE(QDir().mkpath(machineFolder + "/drive_c/Apps/" + folder));
            reg += "[" + kUninstall + "\\" + folder + "]\r\n\"DisplayName\"=\"" + name +
                   "\"\r\n\"Publisher\"=\"" + publisher + "\"\r\n\"DisplayVersion\"=\"" + version +
                   "\"\r\n\"InstallLocation\"=\"C:\\\\Apps\\\\" + folder + "\"\r\n\r\n";
        }
        ASSERT_EQ(cli({"reg", "import", write("programs.reg", reg.toUtf8())}).status, 0);
    }
    QString write(const QString& name, const QByteArray& bytes) {
        QFile file(dir.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }

    QTemporaryDir dir;
    QString machineFolder = dir.path() + "/machine";
};

TEST_F(CliTest, EachCommandFamilyPrintsItsLinesAndExitStatus) {
    expectSteps({
        {{"reg", "get", kProduct, "x"}, 1, "", "not a machine folder"},
        {{"machine", "init"},
         0,
         "machine=" + machineFolder +
             "\nuser=User\ncomputer=TALLOWICK-PC\nos=2 6.1.7601\nlocale=ENU 1252\n"},
        {{"machine", "init"}, 1, "", "already there"},
        {{"service", "status"}, 0, "not installed\n"},
        {{"service", "send", "RegCreateKey|" + kProduct}, 1, "", "not installed"},
        {{"lang", "get", "strLoc_CS_ProductName_TW"}, 1, "", "cannot be found"},
        {{"reg", "import",
          write("broken.reg",
                "Windows Registry Editor Version 5.00\r\n\r\n"
                "[HKEY_CURRENT_USER\\X]\r\n\"a\"=dword:xyz\r\n")},
         1,
         "",
         "broken.reg:4"},
        {{"args", "/language=FR /boot /LOADER=x.ini"},
         0,
         "silent=true\nmessage=Ignoring unknown command line argument(s): boot \nlanguageId=fr\n"
         "production=true\nencryption=true\nresolve=false\nloaderFileName=x.ini\nfailFonts=false\n"
         "debugUnlock=false\ndelay=false\nfreeze=false\ntestModeL5291=false\n"
         "testModeU5291=false\ntestModeA5291=false\n"},
    });
    ASSERT_TRUE(
        QFile::copy(TALLOWICK_TEST_DATA "/zlib1-x64.dll", machineFolder + "/drive_c/zlib1.dll"));
    setup();
    expectSteps({
        {{"verinfo", "C:\\ZLIB1.DLL", "C:\\missing.dll"},
         0,
         "file=C:\\ZLIB1.DLL\nFileVersion=1.2.13\nProductVersion=1.2.13\nCompanyName=\n"
         "FileDescription=zlib data compression library\nFixedFileVersion=1.2.13.0\n"
         "file=C:\\missing.dll\nFileVersion=\nProductVersion=\nCompanyName=\n"
         "FileDescription=\nFixedFileVersion=\n"},
        {{"service", "status"}, 0, "stopped\n"},
        {{"reg", "set", kProduct, "Language", "en"}, 0, ""},
        {{"reg", "get", kProduct, "language"}, 0, "en\n"},
        {{"reg", "dword", kProduct, "Missing"}, 0, "Error\n"},
        {{"lang", "get", "strLoc_CS_ProductName_TW"}, 0, "Tallowick\n"},
        {{"lang", "get", "strURL_SH_Corporate", "--language", "ja"}, 0, "http://127.0.0.1:8417\n"},
        {{"lang", "get", "x", "--language", "english"}, 1, "", "language=english"},
        {{"settings", "set", "General", "ScanOnLoad", "1"}, 0, ""},
        {{"settings", "get", "general", "SCANONLOAD", "0"}, 0, "1\n"},
        {{"ignore", "add", "Tool", "Maker", "C:\\Tool\\tool.exe", "1.2"}, 0, ""},
        {{"ignore", "list"}, 0, "1\t1.2\tTool\tMaker\tC:\\Tool\\tool.exe\n"},
        {{"ignore", "remove", "5"}, 1, "", "no entry 5"},
        {{"stats"},
         0,
         "lastScan=\nnumberOfScans=0\nupdatesAvailable=0\nignored=1\nversion=1.0.0\n"
         "scheduler=Not active\n"},
        {{"compare", "1.2", "1.10"}, 0, "true\n"},
        // A send starts the stopped service and returns once the service has taken it.
        {{"service", "send", "RegSetString|" + kProduct + "|Language|de"}, 0, "taken\n"},
        {{"reg", "get", kProduct, "Language"}, 0, "de\n"},
        {{"service", "stop"}, 0, "stopped\n"},
        {{"service", "start"}, 0, "running\n"},
        {{"service", "stop"}, 0, "stopped\n"},
    });
    const CliRun lines = cli({"compare"}, "1.2\t1.3\r\nno tab\n\t1\n2.0\t\n");
    EXPECT_EQ(lines.out, "true\ninvalid\ntrue\nfalse\n");
    EXPECT_EQ(lines.status, 1);

    for (const QStringList& arguments :
         {QStringList{}, QStringList{"nonsense"}, QStringList{"reg", "get", "only-key"},
          QStringList{"machine"}, QStringList{"machine", "init", "--seed", "4"},
          QStringList{"machine", "init", "--demo", "--seed", "x"}, QStringList{"args"},
          QStringList{"verinfo"}, QStringList{"programs", "--bogus"},
          QStringList{"service", "pause"}, QStringList{"settings", "set", "General"},
          QStringList{"compare", "1.2"}, QStringList{"lookup", "x", "y", "--server"},
          QStringList{"scan", "--server"}}) {
        const CliRun run = cli(arguments);
        EXPECT_EQ(run.status, 2) << arguments.join(' ').toStdString();
        EXPECT_TRUE(run.err.startsWith("usage: tallowick-cli"));
        EXPECT_EQ(run.err.count('\n'), 1);
    }
}

// The demo machine and its work list: every accepted line has its seven fields, and every key
// has a verdict, among them each kind of key the demo machine holds to be dropped.
TEST_F(CliTest, DemoMachineAndItsWorkList) {
    const QString demo = machineFolder;
    machineFolder = dir.filePath("missing");
    const CliRun missing = cli({"machine", "init", "--demo", "--catalog", dir.filePath("no.csv")});
    EXPECT_EQ(missing.status, 1);
    EXPECT_TRUE(missing.err.contains("no.csv: the catalog cannot be read"));

    machineFolder = demo;
    const CliRun init = cli({"machine", "init", "--demo", "--seed", "4"});
    ASSERT_EQ(init.status, 0) << init.err.toStdString();
    const auto programs = QRegularExpression("programs=(\\d+)\n").match(init.out);
    ASSERT_TRUE(programs.hasMatch()) << init.out.toStdString();
    EXPECT_GE(programs.captured(1).toInt(), 300);
    const CliRun list = cli({"programs"});
    ASSERT_EQ(list.status, 0);
    const QStringList lines = list.out.split('\n', Qt::SkipEmptyParts);
    for (const QString& line : lines) {
        EXPECT_EQ(line.count('\t'), 6) << line.toStdString();
    }
    const QString why = cli({"programs", "--why"}).out;
    EXPECT_EQ(why.count("\naccepted\t") + why.startsWith("accepted\t"), lines.size());
    for (const char* verdict : {"SystemComponent\t", "Windows driver package\t", "Dupe ",
                                "no publisher\t", "no name\t"}) {
        EXPECT_TRUE(why.contains(verdict)) << verdict;
    }
}

// One lookup printed field by field; the identifier the server gives is kept for the next.
TEST_F(CliTest, LookupPrintsTheElevenFields) {
    installWith({});
    testing_support::UpdateServerProcess server(UPDATE_SERVER, kCatalog);
    const CliRun run = cli({"lookup", "Air Explorer 5.8.1", "AirExplorer GmbH", "5.8.1", "5.8.1.0",
                            "--server", server.base()});
    ASSERT_EQ(run.status, 0) << run.err.toStdString();
    const QStringList lines = run.out.split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 11);
    EXPECT_EQ(lines[0], "FVR1=5.9.2.0");
    EXPECT_EQ(lines[1], "PVR1=5.9.2");
    EXPECT_EQ(lines[10], "Status=0");
    EXPECT_EQ(
        cli({"lookup", "GSview", "", "4.9", "--server", server.base()}).out.split('\n').value(7),
        lines[7]);
}

// A whole scan as the main job runs it: its lines and its summary, also when it fails.
TEST_F(CliTest, ScanPrintsUpdatesAndItsSummary) {
    installWith({{"3CX Call Flow Designer (x64)", "3CX s.r.o.", "18.5.8"},
                 {"Air Explorer", "AirExplorer GmbH", "5.9.2"},
                 {"Nothing Like It", "Nobody", "1.0"}});
    testing_support::UpdateServerProcess server(UPDATE_SERVER, kCatalog);
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

    testing_support::UpdateServerProcess silent(UPDATE_SERVER, kCatalog, {"--test-reply", "empty"});
    const CliRun failed = cli({"scan", "--server", silent.base()});
    EXPECT_TRUE(failed.out.contains("\nnotice\tfrmUnableToCheck\tTallowick - No Connection\t"));
    EXPECT_TRUE(failed.out.contains("summary\tstate\tfailed\n")) << failed.out.toStdString();
    EXPECT_EQ(cli({"service", "stop"}).out, "stopped\n");
}

// Ctrl-C during the first lookup waits for Stop, which comes after that lookup; the question is
// answered Yes and the scan ends as stopped. The server here holds every later lookup until the
// question has come.
TEST_F(CliTest, CtrlCStopsTheScan) {
    installWith({{"Air Explorer", "AirExplorer GmbH", "5.8.1"}});
    QTcpServer server;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    QProcess scan;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("TALLOWICK_MACHINE", machineFolder);
    scan.setProcessEnvironment(environment);
    scan.start(TALLOWICK_CLI,
               {"scan", "--server", QString("http://127.0.0.1:%1").arg(server.serverPort())});
    const QByteArray page =
        "<!-- UPDATEINFORMATION=\"ERR_CODE:4002|ERR_DESC:x\"=UPDATEINFORMATION -->";
    QByteArray out;
    int lookups = 0;
    for (int round = 0; round < 600 && scan.state() != QProcess::NotRunning; ++round) {
        if (!server.waitForNewConnection(50)) {
            scan.waitForFinished(50);
            continue;
        }
        QTcpSocket* socket = server.nextPendingConnection();
        socket->waitForReadyRead(5000);
        if (socket->readAll().contains("updates.asp") && ++lookups == 1) {
            ::kill(scan.processId(), SIGINT);
        }
        while (lookups > 1 && !out.contains("\nquestion\t") && scan.waitForReadyRead(5000)) {
            out += scan.readAllStandardOutput();
        }
        socket->write("HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: " +
                      QByteArray::number(page.size()) + "\r\n\r\n" + page);
        socket->waitForBytesWritten(5000);
        socket->disconnectFromHost();
    }
    scan.waitForFinished(10000);
    ASSERT_EQ(scan.state(), QProcess::NotRunning);
    out += scan.readAllStandardOutput();
    EXPECT_EQ(scan.exitCode(), 0);
    EXPECT_EQ(lookups, 2);
    EXPECT_TRUE(out.contains("\nquestion\t")) << out.constData();
    EXPECT_TRUE(out.contains("\nsummary\tstate\tstopped\nsummary\tprograms\t2\n"));
    EXPECT_EQ(cli({"service", "stop"}).out, "stopped\n");
}

}  // namespace
