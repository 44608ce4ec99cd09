#pragma once
#include <QString>

#include <memory>
#include <optional>
#include <vector>

#include "server/CatalogProduct.h"
#include "server/QueryText.h"

namespace server {

// A request the server keeps: when (UTC) and from where it came, its query as sent, and its
// parameters in order.
struct StoredRequest {
    QString time;    // ISO 8601 in UTC with milliseconds: "2026-08-22T10:15:00.123Z"
    QString client;  // the address it came from
    QString query;   // the query text as it arrived
    QueryParameters parameters;
};

// The server's one SQLite file: the catalog, the tracking events and the users' reports of
// wrong results. Tables:
//   products(id, package_id, name, publisher, product_version, file_version, download_url,
//            comment, aliases, last_update)         aliases separated by "|"
//   catalog_imports(id, time, source, products)    one row per import
//   events(id, time, client, query)                tr.asp
//   event_parameters(event_id, position, key, value)   every parameter, keys repeating
//   error_reports(id, time, client, query, name, publisher, installed_version, version, ve)
// Writes use write-ahead logging, so that readers (scripts, tests) may look at the file while
// the server runs. One thread.
class ServerDatabase {
public:
    // Opens or makes the file (and its folder) and its tables; nothing, and the reason in
    // *problem, when that fails.
    static std::unique_ptr<ServerDatabase> open(const QString& path, QString* problem);
    ~ServerDatabase();
    ServerDatabase(const ServerDatabase&) = delete;
    ServerDatabase& operator=(const ServerDatabase&) = delete;

    // Replaces the catalog with these products in one transaction and records the import;
    // the old catalog stays when it fails. Events and reports are kept.
    bool replaceCatalog(const std::vector<CatalogProduct>& products, const QString& source,
                        QString* problem);
    // The catalog, in the order of its import.
    std::optional<std::vector<CatalogProduct>> loadCatalog(QString* problem);

    bool storeEvent(const StoredRequest& event, QString* problem);
    // A report keeps the values of its keys name, publisher, installedversion, version and ve
    // (empty when missing).
    bool storeErrorReport(const StoredRequest& report, QString* problem);

private:
    explicit ServerDatabase(QString connection);
    QString connection_;
};

}  // namespace server
