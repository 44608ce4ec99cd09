#include "server/ServerProgram.h"

#include <QCoreApplication>
#include <QHostAddress>
#include <QSocketNotifier>

#include <sys/socket.h>
#include <unistd.h>
#include <csignal>
#include <cstdio>

#include "demo/CatalogCsv.h"
#include "server/ProductIndex.h"
#include "server/ServerDatabase.h"
#include "server/UpdateServer.h"

namespace server {

namespace {

void tell(const QString& line) {
    std::fputs(("tallowick-update-server: " + line + '\n').toUtf8().constData(), stderr);
}

// SIGTERM and SIGINT end the event loop through a socket pair, so that the database is
// closed in order.
int signalSockets[2] = {-1, -1};

void onSignal(int) {
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = ::write(signalSockets[1], &byte, 1);
}

void quitOnSignals(QObject* owner) {
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, signalSockets) != 0) {
        return;
    }
    auto* notifier = new QSocketNotifier(signalSockets[0], QSocketNotifier::Read, owner);
    QObject::connect(notifier, &QSocketNotifier::activated, [] {
        char byte = 0;
        [[maybe_unused]] const ssize_t got = ::read(signalSockets[0], &byte, 1);
        QCoreApplication::quit();
    });
    struct sigaction action {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGINT, &action, nullptr);
}

QString urlHost(const QString& address) {
    return address.contains(u':') ? u'[' + address + u']' : address;
}

}  // namespace

int runImport(const ServerOptions& options) {
    std::string problem;
    const auto entries =
        demo::readCatalog(std::filesystem::path(options.importFile.toStdString()), &problem);
    if (!entries) {
        tell(QString::fromStdString(problem).section(u'\n', 0, 0));
        return 1;
    }
    std::vector<CatalogProduct> products;
    products.reserve(entries->size());
    for (const auto& entry : *entries) {
        products.push_back(productFromEntry(entry));
    }
    if (products.empty()) {
        tell(options.importFile + ": the catalog holds no products");
        return 1;
    }
    QString failure;
    const auto database = ServerDatabase::open(options.database, &failure);
    if (!database) {
        tell("cannot open the database: " + failure);
        return 1;
    }
    if (!database->replaceCatalog(products, options.importFile, &failure)) {
        tell("the catalog was not imported: " + failure);
        return 1;
    }
    std::printf("imported %zu products\n", products.size());
    return 0;
}

int runServer(const ServerOptions& options) {
    QString problem;
    const auto database = ServerDatabase::open(options.database, &problem);
    if (!database) {
        tell("cannot open the database: " + problem);
        return 1;
    }
    CatalogState state = CatalogState::Loaded;
    std::vector<CatalogProduct> products;
    if (auto catalog = database->loadCatalog(&problem)) {
        products = std::move(*catalog);
        state = products.empty() ? CatalogState::Empty : CatalogState::Loaded;
    } else {
        tell("the catalog cannot be read, lookups answer 4000: " + problem);
        state = CatalogState::Unreadable;
    }
    const ProductIndex index(std::move(products));
    UpdateServer server(*database, index, state, options.testReply);
    const QHostAddress address = options.address == u"localhost"
                                     ? QHostAddress(QHostAddress::LocalHost)
                                     : QHostAddress(options.address);
    const quint16 port = server.listen(address, options.port);
    if (port == 0) {
        tell("cannot listen on " + options.address + ":" + QString::number(options.port));
        return 1;
    }
    quitOnSignals(&server);
    std::printf("listening on http://%s:%u\n", urlHost(address.toString()).toUtf8().constData(),
                unsigned(port));
    std::fflush(stdout);
    QCoreApplication::exec();
    return 0;
}

}  // namespace server
