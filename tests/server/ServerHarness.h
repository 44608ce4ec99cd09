#pragma once
#include <QByteArray>
#include <QString>
#include <QVariant>

#include <vector>

#include "scan/UpdateRecord.h"

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

// A reply page as the desktop program reads it: decoded from the Windows code page and cut by
// the program's own rules; the status kUncut when the cut fails.
inline constexpr qint16 kUncut = -2;
scan::UpdateRecord readAsClient(const QByteArray& page);

}  // namespace server_testing
