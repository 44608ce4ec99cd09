// Lookups against the real update server on loopback, with the fixture catalog.
#include <gtest/gtest.h>

#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include "core/QtPrinters.h"
#include "platform/net/InetControl.h"
#include "scan/UpdateRecord.h"
#include "scan/modUpdateCOmponent.h"
#include "support/TestMachine.h"
#include "support/UpdateServerProcess.h"

namespace {

using scan::UpdateRecord;

const QString kCatalog = QStringLiteral(TALLOWICK_TEST_DATA "/catalog-small.csv");

class UpdateLookupTest : public ::testing::Test {
protected:
    UpdateLookupTest() {
        component.setAccessKey(QLatin1String(scan::modUpdateCOmponent::kAccessKey));
        component.setServerBase(server.base());
        EXPECT_TRUE(server.running()) << server.errors().toStdString();
    }
    UpdateRecord lookup(const QString& name, const QString& publisher, const QString& version,
                        const QString& fileVersion = {}, const QString& uid = {}) {
        const auto& codePage = machine.platform().codePage;
        const QString packed = component.RetrieveUpdate(
            scan::EncodeQueryValue(name, codePage), scan::EncodeQueryValue(publisher, codePage),
            scan::EncodeQueryValue(fileVersion, codePage),
            scan::EncodeQueryValue(version, codePage), QString(), false, uid, "1.0.0", "Win7");
        const auto record = scan::UnpackUpdateRecord(packed);
        EXPECT_TRUE(record) << packed.toStdString();
        return record.value_or(UpdateRecord{});
    }

    testing_support::UpdateServerProcess server{UPDATE_SERVER, kCatalog};
    testing_support::TestMachine machine;
    platform::net::InetControl inet;
    scan::modUpdateCOmponent component{machine.platform(), inet};
};

// The names installers write find their product: with architecture, version and edition
// words, with a legal form behind the publisher, with characters that need escaping.
TEST_F(UpdateLookupTest, KnownProgramsGetTheirLatestVersions) {
    const UpdateRecord designer = lookup("3CX Call Flow Designer (x64)", "3CX s.r.o.", "18.5.8");
    EXPECT_EQ(designer.Status, 0);
    EXPECT_EQ(designer.PVR1, "20.2.84");
    EXPECT_EQ(designer.FVR1, "20.2.84.0");
    EXPECT_FALSE(designer.UID.isEmpty());
    EXPECT_EQ(lookup("Air Explorer 5.8.1", "AirExplorer GmbH", "5.8.1").PVR1, "5.9.2");
    EXPECT_EQ(lookup("Altova MissionKit 2025 Enterprise Edition 2025.02.00.02", "Altova AB",
                     "2025.02.00.02")
                  .PVR1,
              "2025.02.00.07");
    EXPECT_EQ(lookup("A&B Tool", "", "2.0").PVR1, "2.1");
    EXPECT_EQ(lookup(QString::fromUtf8("Caf\u00e9 \u00c9crit"), "Fabrikam", "3.0").PVR1, "3.4.5.6");
    // A version that is no plain number has no file version.
    const UpdateRecord odd = lookup("Nightfall Reader", "Northwind Inc.", "2026.1");
    EXPECT_EQ(odd.PVR1, "2026.2-rc1");
    EXPECT_EQ(odd.FVR1, "");
}

// An unknown program is a code the scan does not count; the test path answers the same.
TEST_F(UpdateLookupTest, UnknownProgramsAndTheTestPath) {
    const UpdateRecord unknown = lookup("Nothing Like It 3000", "Nobody Ltd.", "1.0");
    EXPECT_EQ(unknown.Status, 3);
    EXPECT_EQ(unknown.ErrCode, "4002");
    component.setTestFlag(true);
    EXPECT_EQ(lookup("Air Explorer", "AirExplorer GmbH", "5.8.1").PVR1, "5.9.2");
}

// The client keeps the identifier the server gave it, and the server keeps answering it.
TEST_F(UpdateLookupTest, TheServerGivesAStableIdentifier) {
    const QString uid = lookup("Air Explorer", "", "1").UID;
    ASSERT_FALSE(uid.isEmpty());
    EXPECT_EQ(lookup("GSview", "", "4.9", "", uid).UID, uid);
    EXPECT_NE(lookup("GSview", "", "4.9").UID, uid);
}

// A lookup that another one's wait lets in is turned away; with the log flag both are
// written down.
TEST_F(UpdateLookupTest, ALookupDuringALookupIsSkipped) {
    component.setLogFlag(true);
    machine.platform().files.MkDir("C:\\ProgramData\\Tallowick");
    machine.platform().files.MkDir("C:\\ProgramData\\Tallowick\\Settings");
    QString nested;
    QTimer::singleShot(0, [&] {
        nested = component.RetrieveUpdate("GSview", "", "", "4", "", false, "", "1.0.0", "Win7");
    });
    EXPECT_EQ(lookup("GSview", "Ghostgum", "4.9").PVR1, "5.0");
    EXPECT_EQ(nested, "ERR_CODE:X0");
    EXPECT_FALSE(component.busy());
    const QString log = QString::fromStdString(
        machine.platform()
            .files.readFile("C:\\ProgramData\\Tallowick\\Settings\\UCLog.txt")
            .value_or(""));
    EXPECT_TRUE(
        log.contains(" - RetrieveUpdate: Received APP=GSview - Received PUB=Ghostgum - "
                     "Received FVR= - Received PVR=4%2E9 - Received EXE=\r\n"));
    EXPECT_TRUE(log.contains(" - RetrieveUpdate: Skipped\r\n"));

    component.setAccessKey("stray");
    EXPECT_EQ(lookup("GSview", "", "4.9").Status, -1);
}

// A server made to answer badly: an empty page, a page without the marker, a failure code.
TEST(UpdateLookupStatusTest, BadRepliesGiveTheirStatuses) {
    testing_support::TestMachine machine;
    platform::net::InetControl inet;
    scan::modUpdateCOmponent component{machine.platform(), inet};
    component.setAccessKey(QLatin1String(scan::modUpdateCOmponent::kAccessKey));
    const auto statusOf = [&](const QString& mode) {
        testing_support::UpdateServerProcess server{
            UPDATE_SERVER, kCatalog, {"--test-reply", mode}};
        component.setServerBase(server.base());
        return scan::UnpackUpdateRecord(
                   component.RetrieveUpdate("GSview", "", "", "1", "", false, "", "1.0.0", "Win7"))
            .value_or(UpdateRecord{});
    };
    EXPECT_EQ(statusOf("empty").Status, 1);
    EXPECT_EQ(statusOf("nomarker").Status, 2);
    const UpdateRecord failure = statusOf("error:4010");
    EXPECT_EQ(failure.Status, 3);
    EXPECT_EQ(failure.ErrCode, "4010");
}

// Servers that misbehave below HTTP's level: silence until the control's timeout, and bytes
// that are no page at all.
TEST(UpdateLookupStatusTest, SilenceAndNoiseAreEmptyOrMarkerless) {
    QTcpServer endpoint;
    endpoint.listen(QHostAddress::LocalHost);
    QByteArray answer;
    QObject::connect(&endpoint, &QTcpServer::newConnection, [&] {
        QTcpSocket* socket = endpoint.nextPendingConnection();
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [&answer, socket] {
            socket->readAll();
            if (!answer.isEmpty()) {
                socket->write("HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: " +
                              QByteArray::number(answer.size()) + "\r\n\r\n" + answer);
                socket->disconnectFromHost();
            }
        });
    });
    testing_support::TestMachine machine;
    platform::net::InetControl inet;
    inet.setRequestTimeout(1);
    scan::modUpdateCOmponent component{machine.platform(), inet};
    component.setAccessKey(QLatin1String(scan::modUpdateCOmponent::kAccessKey));
    component.setServerBase(QStringLiteral("http://127.0.0.1:%1").arg(endpoint.serverPort()));
    const auto status = [&] {
        return scan::UnpackUpdateRecord(
                   component.RetrieveUpdate("x", "", "", "1", "", false, "", "1.0.0", "Win7"))
            ->Status;
    };
    EXPECT_EQ(status(), 1);
    answer = QByteArray("\x00\xff\xfe<!-- UPDATE\x00INFORMATION=", 26) + QByteArray(2000, '\x01');
    EXPECT_EQ(status(), 2);
}

}  // namespace
