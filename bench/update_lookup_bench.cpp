// The client's own time per lookup: encoding the query, the GET on loopback against an
// endpoint that answers at once with a canned reply page, parsing, packing and unpacking.
// What remains of a real lookup is the server's time.
#include <benchmark/benchmark.h>

#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>

#include "QtBenchmarkMain.h"
#include "platform/net/InetControl.h"
#include "platform/portable/Machine.h"
#include "scan/UpdateRecord.h"
#include "scan/modUpdateCOmponent.h"

namespace {

const QByteArray kPage =
    "<html><body><!-- UPDATEINFORMATION=\"FVR1=18.5.8.0=FVR1PVR1=18.5.8=PVR1FVR2==FVR2PVR2=="
    "PVR2HUR==HURDUR==DURCOM=Latest release 18.5.8 of 2026-08-01=COMUID=0f3c2a=UID\"="
    "UPDATEINFORMATION --></body></html>";

// Answers every request on a kept-alive connection with the page, at once.
class CannedEndpoint {
public:
    CannedEndpoint() {
        server_.listen(QHostAddress::LocalHost);
        QObject::connect(&server_, &QTcpServer::newConnection, [this] {
            QTcpSocket* socket = server_.nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [socket] {
                socket->readAll();
                socket->write("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nContent-Length: " +
                              QByteArray::number(kPage.size()) + "\r\n\r\n" + kPage);
            });
        });
    }
    QString base() const { return QStringLiteral("http://127.0.0.1:%1").arg(server_.serverPort()); }

private:
    QTcpServer server_;
};

struct Client {
    Client() {
        std::string problems;
        machine = platform::portable::Machine::create(
            std::filesystem::path(dir.path().toStdString()) / "m", {}, &problems);
        component = std::make_unique<scan::modUpdateCOmponent>(machine->platform(), inet);
        component->setAccessKey(QLatin1String(scan::modUpdateCOmponent::kAccessKey));
    }
    QTemporaryDir dir;
    std::unique_ptr<platform::portable::Machine> machine;
    platform::net::InetControl inet;
    std::unique_ptr<scan::modUpdateCOmponent> component;
};

void BM_LookupAgainstAnInstantEndpoint(benchmark::State& state) {
    CannedEndpoint endpoint;
    Client client;
    client.component->setServerBase(endpoint.base());
    const auto& codePage = client.machine->platform().codePage;
    for (auto _ : state) {
        const QString packed = client.component->RetrieveUpdate(
            scan::EncodeQueryValue(QStringLiteral("3CX Call Flow Designer (x64)"), codePage),
            scan::EncodeQueryValue(QStringLiteral("3CX s.r.o."), codePage),
            scan::EncodeQueryValue(QStringLiteral("18.5.8.0"), codePage),
            scan::EncodeQueryValue(QStringLiteral("18.5.8"), codePage),
            scan::EncodeQueryValue(QStringLiteral("CallFlowDesigner.exe"), codePage), false,
            QStringLiteral("0f3c2a"), QStringLiteral("1.0.0"), QStringLiteral("Win7"));
        const auto record = scan::UnpackUpdateRecord(packed);
        if (!record || record->PVR1 != QStringLiteral("18.5.8")) {
            state.SkipWithError("the reply did not come back");
            break;
        }
    }
}
BENCHMARK(BM_LookupAgainstAnInstantEndpoint)->Unit(benchmark::kMicrosecond);

}  // namespace

TALLOWICK_QT_BENCHMARK_MAIN()
