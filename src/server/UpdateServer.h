#pragma once
#include <QAbstractHttpServer>
#include <QHttpServerResponder>

#include "server/ProductIndex.h"
#include "server/ServerDatabase.h"
#include "server/UpdateLookup.h"

namespace server {

// The server's routes on QtHttpServer; paths are compared without regard to case, as IIS
// does:
//   GET /tw/UpdatesServer/updates.asp, /tw/UpdatesServer/Test/updates.asp   the lookup
//   GET /tw/tr.asp                                     a tracking event, stored
//   GET /tw/updatesserver/report_error.asp             a user's report of a wrong result
//   GET /health                                        "ok <products>"
// Anything else is 404; another method on these paths 405; a request target longer than
// 8 KiB 414; a malformed query (for updates.asp a "%" without two hex digits, for the others
// a control character) 400. Nothing of a refused request is stored. Every request is answered on
// the event loop's thread.
class UpdateServer final : public QAbstractHttpServer {
public:
    UpdateServer(ServerDatabase& database, const ProductIndex& index, CatalogState state,
                 TestReply testReply);

    static constexpr qsizetype kMaxTarget = 8 * 1024;

protected:
    bool handleRequest(const QHttpServerRequest& request, QTcpSocket* socket) override;
    void missingHandler(const QHttpServerRequest& request, QTcpSocket* socket) override;

private:
    static void respond(
        const QHttpServerRequest& request, QTcpSocket* socket, const QByteArray& body,
        const QByteArray& type,
        QHttpServerResponder::StatusCode status = QHttpServerResponder::StatusCode::Ok);

    ServerDatabase& database_;
    const ProductIndex& index_;
    CatalogState state_;
    TestReply testReply_;
};

}  // namespace server
