// updates.asp of the real server, over HTTP, read back with the desktop program's rules.
#include <gtest/gtest.h>

#include <QRegularExpression>

#include "ServerHarness.h"
#include "server/Windows1252.h"
#include "support/UpdateServerProcess.h"

namespace {

using scan::UpdateRecord;

class UpdatesRouteTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        server = new testing_support::UpdateServerProcess(server_testing::kServer,
                                                          server_testing::kFixture);
    }
    static void TearDownTestSuite() {
        delete server;
        server = nullptr;
    }
    void SetUp() override { ASSERT_TRUE(server->running()) << server->errors().toStdString(); }

    // The query as the desktop program builds it: every character other than 0-9, A-Z and
    // a-z as %XX of its Windows-1252 byte.
    static server_testing::HttpReply lookUp(
        const QString& app, const QString& publisher, const QString& version,
        const QByteArray& uid = {}, const QByteArray& path = "/tw/UpdatesServer/updates.asp") {
        const auto escaped = [](const QString& text) {
            return server::toWindows1252(text).toPercentEncoding({}, "-._~");
        };
        return server_testing::request(
            server->base(), path + "?app=" + escaped(app) + "&pub=" + escaped(publisher) +
                                "&fvr=&pvr=" + escaped(version) +
                                "&exe=setup%2Eexe&bet=0&uid=" + uid + "&cuv=1%2E0%2E0&win=W10");
    }
    static UpdateRecord readLookUp(const QString& app, const QString& publisher,
                                   const QString& version = {}, const QByteArray& uid = {}) {
        return server_testing::readAsClient(lookUp(app, publisher, version, uid).body);
    }
    static UpdateRecord get(const QByteArray& pathAndQuery) {
        return server_testing::readAsClient(
            server_testing::request(server->base(), pathAndQuery).body);
    }

    static testing_support::UpdateServerProcess* server;
};

testing_support::UpdateServerProcess* UpdatesRouteTest::server = nullptr;

TEST_F(UpdatesRouteTest, FoundReplyCarriesEveryFieldInTheCodePage) {
    const server_testing::HttpReply reply =
        lookUp("Air Explorer", "AirExplorer GmbH", "5.8.1", "ab-12");
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.contentType, "text/html; charset=windows-1252");
    EXPECT_TRUE(
        reply.body.contains("<!-- UPDATEINFORMATION=\"FVR1=5.9.2.0=FVR1PVR1=5.9.2=PVR1"
                            "FVR2==FVR2PVR2==PVR2HUR==HURDUR==DUR"
                            "COM=Latest release 5.9.2 of 2026-05-02=COMUID=ab-12=UID\""
                            "=UPDATEINFORMATION -->"));

    // A version that is no plain dotted number has no file version.
    const UpdateRecord odd = readLookUp("Nightfall Reader", "Northwind");
    EXPECT_EQ(odd.PVR1, "2026.2-rc1");
    EXPECT_EQ(odd.FVR1, "");
    // A catalog value full of tags and quotes still reads back field by field.
    const UpdateRecord tags = readLookUp("Tag Tester", "Litware", "1", "uid-9");
    EXPECT_EQ(tags.Status, scan::updatestatus::Parsed);
    EXPECT_EQ(tags.UID, "uid-9");
    EXPECT_TRUE(tags.PVR1.contains("UID") && tags.PVR1.contains("ERR_CODE"))
        << tags.PVR1.toStdString();
    EXPECT_TRUE(tags.COM.startsWith("Latest release ")) << tags.COM.toStdString();
}

TEST_F(UpdatesRouteTest, FailuresCarryTheirCodes) {
    const auto code = [](const UpdateRecord& record) {
        EXPECT_EQ(record.Status, scan::updatestatus::ServerError);
        return record.ErrCode.toStdString();
    };
    // The desktop program counts 4001 as a server failure, and passes over 4002 and 4003.
    EXPECT_EQ(code(get("/tw/UpdatesServer/updates.asp?pub=Mozilla&pvr=1")), "4001");
    EXPECT_EQ(code(get("/tw/UpdatesServer/updates.asp?app=Slack&pvr=1")), "4001");
    EXPECT_EQ(code(get("/tw/UpdatesServer/updates.asp?app=&pub=Mozilla")), "4001");
    EXPECT_EQ(code(readLookUp("Contoso Ledger Pro 4.2", "Contoso Ltd.", "4.2")), "4002");
    // Two makers' "Blink" and no publisher to choose.
    EXPECT_EQ(code(readLookUp("Blink", "", "1.0")), "4003");
    // An empty publisher is a publisher the installer did not write, not a fault.
    EXPECT_EQ(readLookUp("Air Explorer", "", "5.0").PVR1, "5.9.2");
    // Keys are read without regard to case and order.
    EXPECT_EQ(get("/tw/UpdatesServer/updates.asp?PUB=&APP=Air%20Explorer").PVR1, "5.9.2");
}

TEST_F(UpdatesRouteTest, TestPathAndAnyCaseOfThePathAnswerTheSame) {
    for (const char* path : {"/tw/UpdatesServer/Test/updates.asp", "/TW/updatesserver/UPDATES.ASP",
                             "/tw/updatesserver/test/Updates.Asp"}) {
        const UpdateRecord record =
            server_testing::readAsClient(lookUp("Air Explorer", "", "5", "u1", path).body);
        EXPECT_EQ(record.PVR1, "5.9.2") << path;
        EXPECT_EQ(record.UID, "u1");
    }
}

TEST_F(UpdatesRouteTest, ValuesAreDecodedAsWindows1252) {
    EXPECT_EQ(get("/tw/UpdatesServer/updates.asp?app=A%26B%20Tool&pub=Contoso").PVR1, "2.1");
    EXPECT_EQ(get("/tw/UpdatesServer/updates.asp?app=Caf%E9%20%C9crit&pub=Fabrikam").PVR1,
              "3.4.5.6");
    // The same name as UTF-8 bytes is another name in the Windows code page.
    EXPECT_EQ(get("/tw/UpdatesServer/updates.asp?app=Caf%C3%A9%20%C3%89crit&pub=Fabrikam").ErrCode,
              "4002");
}

TEST_F(UpdatesRouteTest, UidIsKeptWhenWellFormedAndMadeOtherwise) {
    const QRegularExpression uuid("^[0-9a-f]{8}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{12}$");
    const QString first = readLookUp("Air Explorer", "", "5").UID;
    EXPECT_TRUE(uuid.match(first).hasMatch()) << first.toStdString();
    EXPECT_NE(first, readLookUp("Air Explorer", "", "5").UID);
    for (const QByteArray& kept : {QByteArray(64, 'A'), QByteArray("Client-0042")}) {
        EXPECT_EQ(readLookUp("Air Explorer", "", "5", kept).UID, kept);
    }
    for (const QByteArray& bad :
         {QByteArray(65, 'A'), QByteArray("a%5Fb"), QByteArray("a%20b"), QByteArray("%22%3DUID")}) {
        EXPECT_TRUE(uuid.match(readLookUp("Air Explorer", "", "5", bad).UID).hasMatch())
            << bad.constData();
    }
}

}  // namespace
