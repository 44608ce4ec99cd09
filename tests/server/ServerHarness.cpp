#include "ServerHarness.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTcpSocket>
#include <QUrl>

#include "server/Windows1252.h"

namespace server_testing {

HttpReply request(const QString& base, const QByteArray& pathAndQuery, const QByteArray& method) {
    QNetworkAccessManager manager;
    const QNetworkRequest networkRequest(QUrl::fromEncoded(base.toUtf8() + pathAndQuery));
    QNetworkReply* reply = manager.sendCustomRequest(networkRequest, method);
    QEventLoop loop;
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    loop.exec();
    HttpReply result;
    result.status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    result.contentType = reply->header(QNetworkRequest::ContentTypeHeader).toByteArray();
    result.body = reply->readAll();
    reply->deleteLater();
    return result;
}

QByteArray rawRequest(const QString& base, const QByteArray& bytes) {
    const QUrl url(base);
    QTcpSocket socket;
    socket.connectToHost(url.host(), quint16(url.port()));
    if (!socket.waitForConnected(5000)) {
        return {};
    }
    socket.write(bytes);
    socket.waitForBytesWritten(5000);
    QByteArray answer;
    while (socket.state() == QAbstractSocket::ConnectedState && socket.waitForReadyRead(1000)) {
        answer += socket.readAll();
    }
    return answer + socket.readAll();
}

std::vector<QVariantList> rows(const QString& databasePath, const QString& sql) {
    std::vector<QVariantList> result;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase("QSQLITE", "server-test-reader");
        database.setDatabaseName(databasePath);
        if (database.open()) {
            QSqlQuery query(sql, database);
            while (query.next()) {
                QVariantList row;
                for (int i = 0; i < query.record().count(); ++i) {
                    row << query.value(i);
                }
                result.push_back(row);
            }
        }
    }
    QSqlDatabase::removeDatabase("server-test-reader");
    return result;
}

qlonglong count(const QString& databasePath, const QString& table) {
    const auto result = rows(databasePath, "SELECT count(*) FROM " + table);
    return result.empty() ? -1 : result.front().value(0).toLongLong();
}

scan::UpdateRecord readAsClient(const QByteArray& page) {
    scan::UpdateRecord uncut;
    uncut.Status = kUncut;
    return scan::ParseUpdateReply(server::fromWindows1252(page)).value_or(uncut);
}

}  // namespace server_testing
