// The transfer control against a small endpoint of the test's own on loopback, which answers
// the way servers misbehave: not at all, late, without end, or with an error status.
#include <gtest/gtest.h>

#include <QEventLoop>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include "platform/net/InetControl.h"

namespace {

using platform::net::InetControl;

void respond(QTcpSocket* socket, const QByteArray& status, const QByteArray& body) {
    socket->write("HTTP/1.1 " + status + "\r\nContent-Length: " + QByteArray::number(body.size()) +
                  "\r\nContent-Type: text/html\r\nConnection: close\r\n\r\n" + body);
    socket->disconnectFromHost();
}

// Answers each request once its head has arrived, by its path.
class InetControlTest : public ::testing::Test {
protected:
    InetControlTest() {
        server.listen(QHostAddress::LocalHost);
        QObject::connect(&server, &QTcpServer::newConnection, [this] {
            QTcpSocket* socket = server.nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [socket] {
                const QByteArray head = socket->readAll();
                if (head.startsWith("GET /ok ")) {
                    respond(socket, "200 OK", "hello");
                } else if (head.startsWith("GET /late ")) {
                    QTimer::singleShot(200, socket,
                                       [socket] { respond(socket, "200 OK", "late"); });
                } else if (head.startsWith("GET /huge ")) {
                    respond(socket, "200 OK", QByteArray(3 * InetControl::kMaxBody, 'x'));
                } else if (head.startsWith("GET /missing ")) {
                    respond(socket, "404 Not Found", "nothing");
                }  // and /silent never answers
            });
        });
    }
    QString url(const char* path) const {
        return QStringLiteral("http://127.0.0.1:%1%2").arg(server.serverPort()).arg(path);
    }

    QTcpServer server;
    InetControl inet;
};

// Failures are codes, not exceptions: the server's status, or WinINet's for a server that
// cannot be reached (12029) or sends nothing within the timeout (12002).
TEST_F(InetControlTest, OpenUrlGivesTheBodyTheHeadersAndTheCode) {
    EXPECT_EQ(inet.OpenURL(url("/ok")), "hello");
    EXPECT_EQ(inet.ResponseCode(), 0);
    EXPECT_EQ(inet.GetHeader("content-length"), "5");
    EXPECT_FALSE(inet.StillExecuting());
    EXPECT_EQ(inet.OpenURL(url("/huge")).size(), InetControl::kMaxBody);
    EXPECT_EQ(inet.OpenURL(url("/missing")), "nothing");
    EXPECT_EQ(inet.ResponseCode(), 404);
    inet.setRequestTimeout(1);
    EXPECT_EQ(inet.OpenURL(url("/silent")), "");
    EXPECT_EQ(inet.ResponseCode(), 12002);
    QTcpServer closed;
    closed.listen(QHostAddress::LocalHost);
    const quint16 port = closed.serverPort();
    closed.close();
    EXPECT_EQ(inet.OpenURL(QStringLiteral("http://127.0.0.1:%1/").arg(port)), "");
    EXPECT_EQ(inet.ResponseCode(), 12029);
}

// The event loop turns while OpenURL waits: a timer fires during the request. Execute runs in
// the background until polled done.
TEST_F(InetControlTest, TheEventLoopTurnsWhileARequestRuns) {
    bool fired = false;
    QTimer::singleShot(10, [&fired] { fired = true; });
    EXPECT_EQ(inet.OpenURL(url("/late")), "late");
    EXPECT_TRUE(fired);

    inet.Execute(url("/ok"));
    EXPECT_TRUE(inet.StillExecuting());
    for (int i = 0; i < 500 && inet.StillExecuting(); ++i) {
        QEventLoop wait;
        QTimer::singleShot(10, &wait, &QEventLoop::quit);
        wait.exec();
    }
    EXPECT_FALSE(inet.StillExecuting());
    EXPECT_EQ(inet.body(), "hello");
}

}  // namespace
