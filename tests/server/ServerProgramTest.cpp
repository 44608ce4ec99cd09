// The program's command line: usage, --import and what it keeps, --test-reply, and a server
// whose catalog is missing or unreadable.
#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

#include "ServerHarness.h"
#include "support/UpdateServerProcess.h"

namespace {

using server_testing::ClientReading;
using server_testing::runServerProgram;

class ServerProgramTest : public ::testing::Test {
protected:
    QString write(const QString& name, const QByteArray& bytes) {
        QFile file(dir.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }
    server_testing::Run import(const QString& catalog) {
        return runServerProgram({"--database", database, "--import", catalog});
    }
    static ClientReading lookUp(const testing_support::UpdateServerProcess& server) {
        return server_testing::readAsClient(
            server_testing::request(server.base(),
                                    "/tw/UpdatesServer/updates.asp?app=Air%20Explorer&pub=")
                .body);
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
        const server_testing::Run run = runServerProgram(arguments);
        EXPECT_EQ(run.status, 2) << arguments.join(' ').toStdString();
        EXPECT_TRUE(run.err.startsWith("usage: tallowick-update-server"));
        EXPECT_EQ(run.err.count('\n'), 1);
    }
}

TEST_F(ServerProgramTest, ImportReplacesTheCatalogAndAFailedOneKeepsIt) {
    const server_testing::Run first = import(server_testing::kFixture);
    EXPECT_EQ(first.status, 0) << first.err.toStdString();
    EXPECT_EQ(first.out, "imported 23 products\n");

    const struct {
        const char* name;
        QByteArray text;
        const char* told;
    } broken[] = {
        {"quote.csv", "PackageId,Version,Name\r\nA.B,1.0,\"open\r\n", "not closed"},
        {"fields.csv", "PackageId,Version,Name\nA.B,1.0\n", "fields"},
        {"columns.csv", "PackageId,Name\nA.B,Thing\n", "no column Version"},
        {"empty.csv", "PackageId,Version,Name,LastUpdate\n", "no products"},
    };
    for (const auto& file : broken) {
        const server_testing::Run run = import(write(file.name, file.text));
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

TEST_F(ServerProgramTest, TestRepliesGiveTheClientsThreeStatuses) {
    const struct {
        const char* mode;
        ClientReading::Status status;
    } modes[] = {{"empty", ClientReading::Empty},
                 {"nomarker", ClientReading::NoMarker},
                 {"error:4014", ClientReading::ServerError}};
    for (const auto& mode : modes) {
        testing_support::UpdateServerProcess server(
            server_testing::kServer, server_testing::kFixture, {"--test-reply", mode.mode});
        ASSERT_TRUE(server.running()) << mode.mode;
        const ClientReading reading = lookUp(server);
        EXPECT_EQ(reading.status, mode.status) << mode.mode;
        if (mode.status == ClientReading::ServerError) {
            EXPECT_EQ(reading.errorCode, "4014");
        }
        // Only updates.asp is affected.
        EXPECT_EQ(server_testing::request(server.base(), "/health").body, "ok 23\n");
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
        EXPECT_EQ(server_testing::readAsClient(page).errorCode, code);
        EXPECT_EQ(server_testing::request(base, "/health").body, "ok 0\n");
        process.terminate();
        EXPECT_TRUE(process.waitForFinished(10000));
        EXPECT_EQ(process.exitCode(), 0);  // SIGTERM ends it in order
    }
}

}  // namespace
