// The transfer control against a small endpoint of the test's own on loopback, which answers
// the way servers misbehave: not at all, without end, or with an error status.
#include <gtest/gtest.h>

#include <QEventLoop>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

#include <functional>

#include "platform/net/InetControl.h"

namespace {

using platform::net::InetControl;

// Accepts connections and hands each request to `answer` once its head has arrived.
class Endpoint {
public:
    explicit Endpoint(std::function<void(QTcpSocket&)> answer) : answer_(std::move(answer)) {
        server_.listen(QHostAddress::LocalHost);
        QObject::connect(&server_, &QTcpServer::newConnection, [this] {
            QTcpSocket* socket = server_.nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] {
                if (socket->readAll().contains("\r\n\r\n")) {
                    answer_(*socket);
                }
            });
        });
    }
    QString url(const QString& path = "/x") const {
        return QStringLiteral("http://127.0.0.1:%1%2").arg(server_.serverPort()).arg(path);
    }

private:
    QTcpServer server_;
    std::function<void(QTcpSocket&)> answer_;
};

void respond(QTcpSocket& socket, const QByteArray& status, const QByteArray& body) {
    socket.write("HTTP/1.1 " + status + "\r\nContent-Length: " + QByteArray::number(body.size()) +
                 "\r\nContent-Type: text/html\r\nConnection: close\r\n\r\n" + body);
    socket.disconnectFromHost();
}

TEST(InetControlTest, OpenUrlGivesTheBodyAndTheHeaders) {
    Endpoint endpoint([](QTcpSocket& socket) { respond(socket, "200 OK", "hello"); });
    InetControl inet;
    EXPECT_EQ(inet.OpenURL(endpoint.url()), "hello");
    EXPECT_EQ(inet.ResponseCode(), 0);
    EXPECT_EQ(inet.GetHeader("content-length"), "5");
    EXPECT_FALSE(inet.StillExecuting());
}

// The event loop turns while OpenURL waits: a timer fires during the request.
TEST(InetControlTest, TheEventLoopTurnsDuringTheWait) {
    Endpoint endpoint([](QTcpSocket& socket) {
        QTimer::singleShot(200, &socket, [&socket] { respond(socket, "200 OK", "late"); });
    });
    InetControl inet;
    bool fired = false;
    QTimer::singleShot(10, [&fired] { fired = true; });
    EXPECT_EQ(inet.OpenURL(endpoint.url()), "late");
    EXPECT_TRUE(fired);
}

TEST(InetControlTest, ASilentServerEndsAtTheTimeout) {
    Endpoint endpoint([](QTcpSocket&) {});
    InetControl inet;
    inet.setRequestTimeout(1);
    EXPECT_EQ(inet.OpenURL(endpoint.url()), "");
    EXPECT_EQ(inet.ResponseCode(), 12002);
}

TEST(InetControlTest, AnEnormousReplyIsCutAtItsLimit) {
    Endpoint endpoint([](QTcpSocket& socket) {
        respond(socket, "200 OK", QByteArray(3 * InetControl::kMaxBody, 'x'));
    });
    InetControl inet;
    EXPECT_EQ(inet.OpenURL(endpoint.url()).size(), InetControl::kMaxBody);
}

TEST(InetControlTest, FailuresAreCodesNotExceptions) {
    Endpoint missing([](QTcpSocket& socket) { respond(socket, "404 Not Found", "nothing"); });
    InetControl inet;
    EXPECT_EQ(inet.OpenURL(missing.url()), "nothing");
    EXPECT_EQ(inet.ResponseCode(), 404);

    QTcpServer closed;
    closed.listen(QHostAddress::LocalHost);
    const quint16 port = closed.serverPort();
    closed.close();
    EXPECT_EQ(inet.OpenURL(QStringLiteral("http://127.0.0.1:%1/").arg(port)), "");
    EXPECT_EQ(inet.ResponseCode(), 12029);
}

TEST(InetControlTest, ExecuteRunsInTheBackgroundUntilPolledDone) {
    Endpoint endpoint([](QTcpSocket& socket) { respond(socket, "200 OK", "async"); });
    InetControl inet;
    inet.Execute(endpoint.url());
    EXPECT_TRUE(inet.StillExecuting());
    for (int i = 0; i < 500 && inet.StillExecuting(); ++i) {
        QEventLoop wait;
        QTimer::singleShot(10, &wait, &QEventLoop::quit);
        wait.exec();
    }
    EXPECT_FALSE(inet.StillExecuting());
    EXPECT_EQ(inet.body(), "async");
}

}  // namespace
