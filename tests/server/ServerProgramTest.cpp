// The program's command line: usage, --import and what it keeps, and a server
// whose catalog is missing or unreadable.
#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

#include "ServerHarness.h"
#include "support/ProgramRun.h"
#include "support/UpdateServerProcess.h"

namespace {

using testing_support::ProgramRun;

ProgramRun runServerProgram(const QStringList& arguments) {
    return testing_support::runProgram(server_testing::kServer, arguments, {});
}

class ServerProgramTest : public ::testing::Test {
protected:
    QString write(const QString& name, const QByteArray& bytes) {
        QFile file(dir.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }
    ProgramRun import(const QString& catalog) {
        return runServerProgram({"--database", database, "--import", catalog});
    }

    QTemporaryDir dir;
    QString database = dir.filePath("server.sqlite");
};

TEST_F(ServerProgramTest, BadUsageExitsWithTwoAndOneLine) {
    for (const QStringList& arguments :
         {QStringList{"--port"}, QStringList{"--port", "70000"}, QStringList{"--port", "x"},
          QStringList{"--address", "not an address"}, QStringList{"--test-reply", "sometimes"},
          QStringList{"--test-reply", "error:"}, QStringList{"--test-reply", "error:4|0"},
          QStringList{"serve"}}) {
        const ProgramRun run = runServerProgram(arguments);
        EXPECT_EQ(run.status, 2) << arguments.join(' ').toStdString();
        EXPECT_TRUE(run.err.startsWith("usage: tallowick-update-server"));
        EXPECT_EQ(run.err.count('\n'), 1);
    }
}

TEST_F(ServerProgramTest, ImportReplacesTheCatalogAndAFailedOneKeepsIt) {
    const ProgramRun first = import(server_testing::kFixture);
    EXPECT_EQ(first.status, 0) << first.err.toStdString();
    EXPECT_EQ(first.out, "imported 23 products\n");

    // The reader's own complaints are the catalog reader's tests' affair.
    const struct {
        const char* name;
        QByteArray text;
        const char* told;
    } broken[] = {
        {"quote.csv", "PackageId,Version,Name\r\nA.B,1.0,\"open\r\n", "not closed"},
        {"empty.csv", "PackageId,Version,Name,LastUpdate\n", "no products"},
    };
    for (const auto& file : broken) {
        const ProgramRun run = import(write(file.name, file.text));
        EXPECT_EQ(run.status, 1) << file.name;
        EXPECT_TRUE(run.err.contains(file.name) && run.err.contains(file.told))
            << run.err.toStdString();
        EXPECT_EQ(run.err.count('\n'), 1);
    }
    EXPECT_EQ(import(dir.filePath("missing.csv")).status, 1);
    EXPECT_EQ(server_testing::count(database, "products"), 23);

    // A new catalog replaces the old one whole; the events stay.
    {
        testing_support::UpdateServerProcess server(server_testing::kServer,
                                                    server_testing::kFixture);
        ASSERT_TRUE(server.running());
        server_testing::request(server.base(), "/tw/tr.asp?action=x");
        database = server.databasePath();
        EXPECT_EQ(import(write("next.csv",
                               "PackageId,Version,Name\nAir.Explorer,9.0,Air "
                               "Explorer\n"))
                      .out,
                  "imported 1 products\n");
        EXPECT_EQ(server_testing::count(database, "events"), 1);
        EXPECT_EQ(server_testing::count(database, "products"), 1);
        EXPECT_EQ(server_testing::count(database, "catalog_imports"), 2);
    }
}

TEST_F(ServerProgramTest, ServerWithoutAReadableCatalogSaysSo) {
    // A products table the server cannot read: 4000; none imported: 4010. The desktop
    // program counts both as server failures.
    const QString broken = dir.filePath("broken.sqlite");
    {
        QSqlDatabase db = QSqlDatabase::addDatabase("QSQLITE", "broken-catalog");
        db.setDatabaseName(broken);
        ASSERT_TRUE(db.open());
        QSqlQuery(db).exec("CREATE TABLE products (id INTEGER PRIMARY KEY, junk TEXT)");
    }
    QSqlDatabase::removeDatabase("broken-catalog");
    for (const auto& [path, code] : {std::pair{database, "4010"}, std::pair{broken, "4000"}}) {
        QProcess process;
        process.start(server_testing::kServer, {"--database", path, "--port", "0"});
        ASSERT_TRUE(process.waitForReadyRead(10000));
        const QString line = QString::fromUtf8(process.readLine()).trimmed();
        ASSERT_TRUE(line.startsWith("listening on http://127.0.0.1:")) << line.toStdString();
        const QString base = line.mid(13);
        const QByteArray page =
            server_testing::request(base, "/tw/UpdatesServer/updates.asp?app=x&pub=").body;
        EXPECT_EQ(server_testing::readAsClient(page).ErrCode, code);
        EXPECT_EQ(server_testing::request(base, "/health").body, "ok 0\n");
        process.terminate();
        EXPECT_TRUE(process.waitForFinished(10000));
        EXPECT_EQ(process.exitCode(), 0);  // SIGTERM ends it in order
    }
}

}  // namespace
