#include "server/ServerDatabase.h"

#include <QAtomicInteger>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

namespace server {

namespace {

constexpr const char* kSchema[] = {
    "CREATE TABLE IF NOT EXISTS products ("
    " id INTEGER PRIMARY KEY, package_id TEXT NOT NULL, name TEXT NOT NULL,"
    " publisher TEXT NOT NULL, product_version TEXT NOT NULL, file_version TEXT NOT NULL,"
    " download_url TEXT NOT NULL, comment TEXT NOT NULL, aliases TEXT NOT NULL,"
    " last_update TEXT NOT NULL)",
    "CREATE TABLE IF NOT EXISTS catalog_imports ("
    " id INTEGER PRIMARY KEY, time TEXT NOT NULL, source TEXT NOT NULL,"
    " products INTEGER NOT NULL)",
    "CREATE TABLE IF NOT EXISTS events ("
    " id INTEGER PRIMARY KEY, time TEXT NOT NULL, client TEXT NOT NULL, query TEXT NOT NULL)",
    "CREATE TABLE IF NOT EXISTS event_parameters ("
    " event_id INTEGER NOT NULL REFERENCES events(id), position INTEGER NOT NULL,"
    " key TEXT NOT NULL, value TEXT NOT NULL, PRIMARY KEY (event_id, position))",
    "CREATE TABLE IF NOT EXISTS error_reports ("
    " id INTEGER PRIMARY KEY, time TEXT NOT NULL, client TEXT NOT NULL, query TEXT NOT NULL,"
    " name TEXT NOT NULL, publisher TEXT NOT NULL, installed_version TEXT NOT NULL,"
    " version TEXT NOT NULL, ve TEXT NOT NULL)",
};

QString describe(const QSqlError& error) {
    return error.text().trimmed();
}

// A value for a NOT NULL column: a null text is stored as an empty one.
QVariant text(const QString& value) {
    return value.isNull() ? QVariant(QStringLiteral("")) : QVariant(value);
}

QString nowUtc() {
    return QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs);
}

// A transaction that is rolled back unless committed.
class Transaction {
public:
    explicit Transaction(QSqlDatabase& database) : database_(database) {
        open_ = database_.transaction();
    }
    ~Transaction() {
        if (open_) {
            database_.rollback();
        }
    }
    bool isOpen() const { return open_; }
    bool commit() {
        open_ = !database_.commit();
        return !open_;
    }

private:
    QSqlDatabase& database_;
    bool open_ = false;
};

}  // namespace

ServerDatabase::ServerDatabase(QString connection) : connection_(std::move(connection)) {}

ServerDatabase::~ServerDatabase() {
    {
        QSqlDatabase database = QSqlDatabase::database(connection_, false);
        database.close();
    }
    QSqlDatabase::removeDatabase(connection_);
}

std::unique_ptr<ServerDatabase> ServerDatabase::open(const QString& path, QString* problem) {
    static QAtomicInteger<int> counter;
    const QFileInfo file(path);
    if (!QDir().mkpath(file.absolutePath())) {
        *problem = "cannot make the folder " + file.absolutePath();
        return nullptr;
    }
    const QString connection = "tallowick-server-" + QString::number(counter.fetchAndAddRelaxed(1));
    std::unique_ptr<ServerDatabase> self(new ServerDatabase(connection));
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
    database.setDatabaseName(file.absoluteFilePath());
    database.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=5000"));
    if (!database.open()) {
        *problem = file.absoluteFilePath() + ": " + describe(database.lastError());
        return nullptr;
    }
    QSqlQuery query(database);
    for (const char* statement :
         {"PRAGMA journal_mode=WAL", "PRAGMA synchronous=NORMAL", "PRAGMA foreign_keys=ON"}) {
        query.exec(QString::fromLatin1(statement));
    }
    for (const char* statement : kSchema) {
        if (!query.exec(QString::fromLatin1(statement))) {
            *problem = file.absoluteFilePath() + ": " + describe(query.lastError());
            return nullptr;
        }
    }
    return self;
}

bool ServerDatabase::replaceCatalog(const std::vector<CatalogProduct>& products,
                                    const QString& source, QString* problem) {
    QSqlDatabase database = QSqlDatabase::database(connection_);
    Transaction transaction(database);
    QSqlQuery query(database);
    const auto fail = [&](const QSqlError& error) {
        *problem = describe(error);
        return false;
    };
    if (!transaction.isOpen()) {
        return fail(database.lastError());
    }
    if (!query.exec(QStringLiteral("DELETE FROM products"))) {
        return fail(query.lastError());
    }
    if (!query.prepare(QStringLiteral(
            "INSERT INTO products (package_id, name, publisher, product_version, file_version,"
            " download_url, comment, aliases, last_update) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?)"))) {
        return fail(query.lastError());
    }
    for (const CatalogProduct& product : products) {
        int i = 0;
        for (const QString& value :
             {product.packageId, product.name, product.publisher, product.productVersion,
              product.fileVersion, product.downloadUrl, product.comment, product.aliases.join(u'|'),
              product.lastUpdate}) {
            query.bindValue(i++, text(value));
        }
        if (!query.exec()) {
            return fail(query.lastError());
        }
    }
    QSqlQuery record(database);
    record.prepare(
        QStringLiteral("INSERT INTO catalog_imports (time, source, products) VALUES (?, ?, ?)"));
    record.addBindValue(nowUtc());
    record.addBindValue(source);
    record.addBindValue(qlonglong(products.size()));
    if (!record.exec()) {
        return fail(record.lastError());
    }
    return transaction.commit() || fail(database.lastError());
}

std::optional<std::vector<CatalogProduct>> ServerDatabase::loadCatalog(QString* problem) {
    QSqlQuery query(QSqlDatabase::database(connection_));
    query.setForwardOnly(true);
    if (!query.exec(QStringLiteral(
            "SELECT package_id, name, publisher, product_version, file_version, download_url,"
            " comment, aliases, last_update FROM products ORDER BY id"))) {
        *problem = describe(query.lastError());
        return std::nullopt;
    }
    std::vector<CatalogProduct> products;
    while (query.next()) {
        CatalogProduct product;
        product.packageId = query.value(0).toString();
        product.name = query.value(1).toString();
        product.publisher = query.value(2).toString();
        product.productVersion = query.value(3).toString();
        product.fileVersion = query.value(4).toString();
        product.downloadUrl = query.value(5).toString();
        product.comment = query.value(6).toString();
        product.aliases = query.value(7).toString().split(u'|', Qt::SkipEmptyParts);
        product.lastUpdate = query.value(8).toString();
        products.push_back(std::move(product));
    }
    if (query.lastError().isValid()) {
        *problem = describe(query.lastError());
        return std::nullopt;
    }
    return products;
}

bool ServerDatabase::storeEvent(const StoredRequest& event, QString* problem) {
    QSqlDatabase database = QSqlDatabase::database(connection_);
    Transaction transaction(database);
    QSqlQuery query(database);
    const auto fail = [&](const QSqlError& error) {
        *problem = describe(error);
        return false;
    };
    query.prepare(QStringLiteral("INSERT INTO events (time, client, query) VALUES (?, ?, ?)"));
    query.addBindValue(text(event.time));
    query.addBindValue(text(event.client));
    query.addBindValue(text(event.query));
    if (!transaction.isOpen() || !query.exec()) {
        return fail(query.lastError());
    }
    const QVariant id = query.lastInsertId();
    QSqlQuery parameter(database);
    parameter.prepare(QStringLiteral(
        "INSERT INTO event_parameters (event_id, position, key, value) VALUES (?, ?, ?, ?)"));
    for (qsizetype position = 0; position < event.parameters.size(); ++position) {
        parameter.bindValue(0, id);
        parameter.bindValue(1, qlonglong(position));
        parameter.bindValue(2, text(event.parameters[position].key));
        parameter.bindValue(3, text(event.parameters[position].value));
        if (!parameter.exec()) {
            return fail(parameter.lastError());
        }
    }
    return transaction.commit() || fail(database.lastError());
}

bool ServerDatabase::storeErrorReport(const StoredRequest& report, QString* problem) {
    QSqlQuery query(QSqlDatabase::database(connection_));
    query.prepare(QStringLiteral(
        "INSERT INTO error_reports (time, client, query, name, publisher, installed_version,"
        " version, ve) VALUES (?, ?, ?, ?, ?, ?, ?, ?)"));
    query.addBindValue(text(report.time));
    query.addBindValue(text(report.client));
    query.addBindValue(text(report.query));
    for (QStringView key : {u"name", u"publisher", u"installedversion", u"version", u"ve"}) {
        query.addBindValue(text(queryValue(report.parameters, key).value_or(QString())));
    }
    if (!query.exec()) {
        *problem = describe(query.lastError());
        return false;
    }
    return true;
}

}  // namespace server
