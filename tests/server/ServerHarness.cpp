#include "ServerHarness.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QProcess>
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

Run runServerProgram(const QStringList& arguments) {
    QProcess process;
    process.start(kServer, arguments);
    const bool ended = process.waitForFinished(60000);
    return {ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

QByteArray toWindows1252(const QString& text) {
    return server::toWindows1252(text);
}

ClientReading readAsClient(const QByteArray& page) {
    ClientReading reading;
    const QString text = server::fromWindows1252(page);
    if (text.isEmpty()) {
        return reading;
    }
    const QString start = QStringLiteral("<!-- UPDATEINFORMATION=\"");
    const qsizetype from = text.indexOf(start);
    if (from < 0) {
        reading.status = ClientReading::NoMarker;
        return reading;
    }
    const qsizetype to = text.indexOf(QStringLiteral("\"=UPDATEINFORMATION -->"), from);
    const QString payload = text.mid(from + start.size(), to - from - start.size());
    if (const qsizetype error = payload.indexOf(QStringLiteral("ERR_CODE:")); error >= 0) {
        const qsizetype description = payload.indexOf(QStringLiteral("|ERR_DESC:"));
        reading.status = ClientReading::ServerError;
        reading.errorCode = payload.mid(error + 9, description - error - 9);
        reading.errorDescription = payload.mid(description + 10);
        return reading;
    }
    reading.status = ClientReading::Parsed;
    const auto cut = [&](const QString& tag) {
        const qsizetype open = payload.indexOf(tag + '=');
        const qsizetype close = payload.indexOf('=' + tag);
        return open < 0 || close < open + tag.size() + 1
                   ? QStringLiteral("<broken>")
                   : payload.mid(open + tag.size() + 1, close - open - tag.size() - 1);
    };
    reading.fvr1 = cut("FVR1");
    reading.pvr1 = cut("PVR1");
    reading.dur = cut("DUR");
    reading.com = cut("COM");
    reading.uid = cut("UID");
    for (const QString tag : {"FVR2", "PVR2", "HUR"}) {
        if (!cut(tag).isEmpty()) {
            reading.status = ClientReading::Status(-1);
        }
    }
    return reading;
}

}  // namespace server_testing
