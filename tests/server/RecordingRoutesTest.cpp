// tr.asp and report_error.asp of the real server: what they store, and what a refused or
// hostile request leaves (nothing, and a server still answering).
#include <gtest/gtest.h>

#include <QProcess>
#include <QRegularExpression>

#include "ServerHarness.h"
#include "support/UpdateServerProcess.h"

namespace {

using server_testing::count;
using server_testing::rows;

class RecordingRoutesTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(server.running()) << server.errors().toStdString(); }
    server_testing::HttpReply get(const QByteArray& pathAndQuery,
                                  const QByteArray& method = "GET") {
        return server_testing::request(server.base(), pathAndQuery, method);
    }
    QString database() const { return server.databasePath(); }

    testing_support::UpdateServerProcess server{server_testing::kServer, server_testing::kFixture};
};

TEST_F(RecordingRoutesTest, TrackingEventsAreStoredInOrderWithEveryParameter) {
    const QByteArray first =
        "source=Application&application=TW&action=Scan_Started&aid=a-17&aid=&installer=Web"
        "&origin=&itemcount=0&applicationversion=1.0.0&pc=QXRUVEK3094";
    const QByteArray second = "action=Scan_Finished&aid=x&aid=y&wait=100%&place=M%C3%BCnchen&pc";
    EXPECT_EQ(get("/tw/tr.asp?" + first).status, 200);
    EXPECT_EQ(get("/TW/TR.ASP?" + second).status, 200);

    const auto events = rows(database(), "SELECT id, time, client, query FROM events ORDER BY id");
    ASSERT_EQ(events.size(), 2u);
    EXPECT_TRUE(QRegularExpression(R"(^\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z$)")
                    .match(events[0][1].toString())
                    .hasMatch())
        << events[0][1].toString().toStdString();
    EXPECT_EQ(events[0][2].toString(), "127.0.0.1");
    EXPECT_EQ(events[0][3].toString(), QString(first));

    const auto parameters =
        rows(database(), "SELECT key, value FROM event_parameters WHERE event_id = " +
                             events[1][0].toString() + " ORDER BY position");
    QStringList stored;
    for (const QVariantList& parameter : parameters) {
        stored << parameter[0].toString() + "=" + parameter[1].toString();
    }
    EXPECT_EQ(stored, (QStringList{"action=Scan_Finished", "aid=x", "aid=y", "wait=100%",
                                   "place=München", "pc="}));
    EXPECT_EQ(count(database(), "event_parameters"), 10 + 6);
}

TEST_F(RecordingRoutesTest, ErrorReportIsStoredAndThanked) {
    // As a browser sends it: the "&" in the name is not escaped and cuts the value.
    const server_testing::HttpReply reply =
        get("/tw/updatesserver/report_error.asp?name=A&B%20Tool&publisher=Contoso"
            "&installedversion=2.0&version=2.1&ve=1.0.0");
    EXPECT_EQ(reply.status, 200);
    EXPECT_TRUE(reply.contentType.startsWith("text/html"));
    EXPECT_TRUE(reply.body.contains("Thank you"));
    const auto reports = rows(
        database(),
        "SELECT client, query, name, publisher, installed_version, version, ve FROM error_reports");
    ASSERT_EQ(reports.size(), 1u);
    EXPECT_EQ(reports[0], (QVariantList{"127.0.0.1",
                                        "name=A&B%20Tool&publisher=Contoso&installedversion=2.0"
                                        "&version=2.1&ve=1.0.0",
                                        "A", "Contoso", "2.0", "2.1", "1.0.0"}));
}

TEST_F(RecordingRoutesTest, RefusedRequestsAreAnsweredAndStoreNothing) {
    EXPECT_EQ(get("/tw/other.asp?action=x").status, 404);
    EXPECT_EQ(get("/").status, 404);
    EXPECT_EQ(get("/tw/tr.asp?action=x", "POST").status, 405);
    EXPECT_EQ(get("/tw/updatesserver/report_error.asp?name=x", "PUT").status, 405);
    EXPECT_EQ(get("/tw/UpdatesServer/updates.asp?app=x", "DELETE").status, 405);
    EXPECT_EQ(get("/tw/tr.asp?action=" + QByteArray(9000, 'a')).status, 414);
    EXPECT_EQ(get("/tw/updatesserver/report_error.asp?name=" + QByteArray(9000, 'b')).status, 414);
    EXPECT_EQ(get("/tw/tr.asp?action=a%00b").status, 400);
    const QByteArray malformed = server_testing::rawRequest(
        server.base(),
        "GET /tw/UpdatesServer/updates.asp?app=%zz&pub=x&pvr=1%2E0 HTTP/1.1\r\n"
        "Host: x\r\nConnection: close\r\n\r\n");
    EXPECT_TRUE(malformed.startsWith("HTTP/1.1 400")) << malformed.constData();
    EXPECT_EQ(count(database(), "events"), 0);
    EXPECT_EQ(count(database(), "event_parameters"), 0);
    EXPECT_EQ(count(database(), "error_reports"), 0);
}

TEST_F(RecordingRoutesTest, HostileTrafficNeverTakesTheServerDown) {
    // Garbage, a huge request line, a header that never ends, a body on a GET.
    for (const QByteArray& bytes :
         {QByteArray("BLAH\r\n\r\n"), QByteArray("\x00\xff\r\n\r\n", 6),
          "GET /tw/tr.asp?x=" + QByteArray(200 * 1024, 'x') + " HTTP/1.1\r\nHost: x\r\n\r\n",
          "GET /health HTTP/1.1\r\nX-Long: " + QByteArray(100 * 1024, 'h'),
          QByteArray("GET /health HTTP/1.1\r\nContent-Length: 5\r\n\r\nhello")}) {
        server_testing::rawRequest(server.base(), bytes);
    }
    // A flood of pipelined requests on one connection is answered, each in turn.
    QByteArray flood;
    for (int i = 0; i < 300; ++i) {
        flood +=
            "GET /tw/UpdatesServer/updates.asp?app=Air%20Explorer&pub= HTTP/1.1\r\n"
            "Host: x\r\n\r\n";
    }
    flood += "GET /health HTTP/1.1\r\nHost: x\r\nConnection: close\r\n\r\n";
    const QByteArray answers = server_testing::rawRequest(server.base(), flood);
    EXPECT_EQ(answers.count("HTTP/1.1 200"), 301);
    EXPECT_EQ(answers.count("PVR1=5.9.2=PVR1"), 300);

    const server_testing::HttpReply health = get("/health");
    EXPECT_EQ(health.status, 200);
    EXPECT_EQ(health.body, "ok 23\n");
    EXPECT_EQ(count(database(), "events"), 0);
}

}  // namespace
