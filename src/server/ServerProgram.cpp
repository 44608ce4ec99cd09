#include "server/ServerProgram.h"

#include <QCoreApplication>
#include <QHostAddress>

#include <csignal>
#include <cstdio>

#include "demo/CatalogCsv.h"
#include "platform/events/SignalEvents.h"
#include "server/ProductIndex.h"
#include "server/ServerDatabase.h"
#include "server/UpdateServer.h"

namespace server {

namespace {

void tell(const QString& line) {
    std::fputs(("tallowick-update-server: " + line + '\n').toUtf8().constData(), stderr);
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
    // SIGTERM and SIGINT end the event loop, so that the database is closed in order.
    const platform::events::SignalEvents quitOnSignals({SIGTERM, SIGINT},
                                                       [] { QCoreApplication::quit(); });
    std::printf("listening on http://%s:%u\n", urlHost(address.toString()).toUtf8().constData(),
                unsigned(port));
    std::fflush(stdout);
    QCoreApplication::exec();
    return 0;
}

}  // namespace server
