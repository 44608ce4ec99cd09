#pragma once
#include <QByteArray>
#include <QString>
#include <QVariant>

#include <vector>

// Helpers for talking to the real tallowick-update-server (see
// support/UpdateServerProcess.h) and reading back what it stored and answered.
namespace server_testing {

inline const QString kServer = QStringLiteral(TALLOWICK_UPDATE_SERVER);
inline const QString kFixture = QStringLiteral(TALLOWICK_TEST_DATA "/catalog-small.csv");

struct HttpReply {
    int status = 0;  // 0 when there was no answer
    QByteArray contentType;
    QByteArray body;
};

// A request through QNetworkAccessManager to base + pathAndQuery (already escaped).
HttpReply request(const QString& base, const QByteArray& pathAndQuery,
                  const QByteArray& method = "GET");
// Bytes written as they are on a fresh connection; all the server answered until it closed
// the connection or was quiet for a second.
QByteArray rawRequest(const QString& base, const QByteArray& bytes);

// The rows of a query on a SQLite file, each a list of its column values.
std::vector<QVariantList> rows(const QString& databasePath, const QString& sql);
qlonglong count(const QString& databasePath, const QString& table);

// A program run to its end: exit status (-1 when it crashed or hung) and its output.
struct Run {
    int status;
    QString out, err;
};
Run runServerProgram(const QStringList& arguments);

// What the desktop program reads from a reply page: the payload between the first start
// marker and the first end marker; ERR_CODE and ERR_DESC, or each field from the first place
// of its opening tag to the first place of its closing tag.
struct ClientReading {
    enum Status { Parsed = 0, Empty = 1, NoMarker = 2, ServerError = 3 };
    Status status = Empty;
    QString errorCode, errorDescription;
    QString fvr1, pvr1, dur, com, uid;
};
ClientReading readAsClient(const QByteArray& page);
QByteArray toWindows1252(const QString& text);

}  // namespace server_testing
