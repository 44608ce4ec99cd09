// The lookup's own rules against the real update server on loopback and against servers that
// misbehave below HTTP's level; what the server answers is the scan driver's tests' affair.
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

class UpdateLookupTest : public ::testing::Test {
protected:
    UpdateLookupTest() { component.setAccessKey(scan::modUpdateCOmponent::kAccessKey); }
    QString retrieve(const QString& name, const QString& version) {
        return component.RetrieveUpdate(name, "", "", version, "", false, "", "1.0.0", "Win7");
    }
    scan::UpdateRecord lookup(const QString& name, const QString& version) {
        return scan::UnpackUpdateRecord(retrieve(name, version)).value_or(scan::UpdateRecord{});
    }

    testing_support::TestMachine machine;
    platform::net::InetControl inet;
    scan::modUpdateCOmponent component{machine.platform(), inet};
};

// A lookup that another one's wait lets in is turned away; with the log flag both are written
// down. The test path answers as the other; a stray access key is refused before any request.
TEST_F(UpdateLookupTest, ALookupDuringALookupIsSkipped) {
    testing_support::UpdateServerProcess server{UPDATE_SERVER,
                                                TALLOWICK_TEST_DATA "/catalog-small.csv"};
    component.setServerBase(server.base());
    component.setLogFlag(true);
    machine.platform().files.MkDir("C:\\ProgramData\\Tallowick");
    machine.platform().files.MkDir("C:\\ProgramData\\Tallowick\\Settings");
    QString nested;
    QTimer::singleShot(0, [&] { nested = retrieve("GSview", "4"); });
    EXPECT_EQ(lookup("GSview", "4%2E9").PVR1, "5.0");
    EXPECT_EQ(nested, "ERR_CODE:X0");
    EXPECT_FALSE(component.busy());
    const QString log = QString::fromStdString(
        machine.platform()
            .files.readFile("C:\\ProgramData\\Tallowick\\Settings\\UCLog.txt")
            .value_or(""));
    EXPECT_TRUE(
        log.contains(" - RetrieveUpdate: Received APP=GSview - Received PUB= - "
                     "Received FVR= - Received PVR=4%2E9 - Received EXE=\r\n"));
    EXPECT_TRUE(log.contains(" - RetrieveUpdate: Skipped\r\n"));

    component.setTestFlag(true);
    EXPECT_EQ(lookup("Air%20Explorer", "5").PVR1, "5.9.2");
    component.setAccessKey("stray");
    EXPECT_EQ(lookup("GSview", "4").Status, scan::updatestatus::NotAllowed);
}

// Silence until the control's timeout is an empty reply; bytes that are no page at all have no
// marker.
TEST_F(UpdateLookupTest, SilenceAndNoiseAreEmptyOrMarkerless) {
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
    inet.setRequestTimeout(1);
    component.setServerBase(QStringLiteral("http://127.0.0.1:%1").arg(endpoint.serverPort()));
    EXPECT_EQ(lookup("x", "1").Status, scan::updatestatus::EmptyReply);
    answer = QByteArray("\x00\xff\xfe<!-- UPDATE\x00INFORMATION=", 26) + QByteArray(2000, '\x01');
    EXPECT_EQ(lookup("x", "1").Status, scan::updatestatus::NoMarker);
}

}  // namespace
