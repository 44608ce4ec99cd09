#include "server/UpdateServer.h"

#include <QDateTime>
#include <QHttpServerRequest>
#include <QHttpServerResponder>

#include <cstdio>

namespace server {

namespace {

using Status = QHttpServerResponder::StatusCode;

enum class Route { None, Updates, Tracking, Report, Health };

Route routeOf(const QString& path) {
    if (path.compare(u"/tw/UpdatesServer/updates.asp", Qt::CaseInsensitive) == 0 ||
        path.compare(u"/tw/UpdatesServer/Test/updates.asp", Qt::CaseInsensitive) == 0) {
        return Route::Updates;
    }
    if (path.compare(u"/tw/tr.asp", Qt::CaseInsensitive) == 0) {
        return Route::Tracking;
    }
    if (path.compare(u"/tw/updatesserver/report_error.asp", Qt::CaseInsensitive) == 0) {
        return Route::Report;
    }
    if (path.compare(u"/health", Qt::CaseInsensitive) == 0) {
        return Route::Health;
    }
    return Route::None;
}

// The query as the client sent it. QtHttpServer hands it over in a QUrl set in tolerant mode,
// which keeps valid escapes (decoding those of unreserved characters, "%2D" -> "-", which
// means the same) but, when any "%" lacks its two hex digits, turns every "%" into "%25".
// So when every "%" is followed by "25" and undoing that gives a malformed query, the query
// as sent was that malformed one. (A query whose only escapes are "%25" and which reads
// malformed without them, like "app=100%25", is taken for a malformed one: the desktop
// program escapes blanks and punctuation too, so it hardly ever sends such a query.)
QString sentQuery(const QUrl& url) {
    const QString query = url.query(QUrl::FullyEncoded);
    const qsizetype percents = query.count(u'%');
    if (percents == 0 || query.count(QStringLiteral("%25")) != percents) {
        return query;
    }
    QString undone = query;
    undone.replace(QStringLiteral("%25"), QStringLiteral("%"));
    return hasBadEscape(undone) ? undone : query;
}

const QByteArray kPlain = "text/plain; charset=utf-8";
const QByteArray kHtml = "text/html; charset=utf-8";

QByteArray thankYouPage() {
    return "<!DOCTYPE html>\r\n<html><head><meta charset=\"utf-8\">"
           "<title>Thank you</title></head><body><h1>Thank you</h1>"
           "<p>Your report has reached us. We will look at this program's update "
           "information.</p></body></html>\r\n";
}

}  // namespace

void UpdateServer::respond(const QHttpServerRequest& request, QTcpSocket* socket,
                           const QByteArray& body, const QByteArray& type, Status status) {
    makeResponder(request, socket).write(body, {{"Content-Type", type}}, status);
}

UpdateServer::UpdateServer(ServerDatabase& database, const ProductIndex& index, CatalogState state,
                           TestReply testReply)
    : database_(database), index_(index), state_(state), testReply_(std::move(testReply)) {}

bool UpdateServer::handleRequest(const QHttpServerRequest& request, QTcpSocket* socket) {
    const QUrl url = request.url();
    const QString path = url.path(QUrl::FullyEncoded);
    const QString query = sentQuery(url);
    if (path.size() + query.size() + 1 > kMaxTarget) {
        respond(request, socket, "request target too long\n", kPlain, Status::UriTooLong);
        return true;
    }
    const Route route = routeOf(url.path(QUrl::FullyDecoded));
    if (route == Route::None) {
        respond(request, socket, "not found\n", kPlain, Status::NotFound);
        return true;
    }
    if (request.method() != QHttpServerRequest::Method::Get) {
        makeResponder(request, socket)
            .write("method not allowed\n", {{"Content-Type", kPlain}, {"Allow", "GET"}},
                   Status::MethodNotAllowed);
        return true;
    }
    const auto parameters = parseQuery(
        query, route == Route::Updates ? QueryEncoding::Windows1252 : QueryEncoding::Raw);
    if (!parameters) {
        respond(request, socket, "malformed query\n", kPlain, Status::BadRequest);
        return true;
    }

    switch (route) {
        case Route::Updates: {
            const QByteArray page = testReply_.mode == TestReply::Mode::Off
                                        ? answerUpdateQuery(*parameters, index_, state_)
                                        : testReplyPage(testReply_);
            respond(request, socket, page, "text/html; charset=windows-1252");
            break;
        }
        case Route::Tracking:
        case Route::Report: {
            const StoredRequest stored{QDateTime::currentDateTimeUtc().toString(Qt::ISODateWithMs),
                                       request.remoteAddress().toString(), query, *parameters};
            QString problem;
            const bool kept = route == Route::Tracking
                                  ? database_.storeEvent(stored, &problem)
                                  : database_.storeErrorReport(stored, &problem);
            if (!kept) {
                std::fprintf(stderr, "tallowick-update-server: not stored: %s\n",
                             problem.toUtf8().constData());
                respond(request, socket, "not stored\n", kPlain, Status::InternalServerError);
            } else if (route == Route::Tracking) {
                respond(request, socket, "ok\n", kPlain);
            } else {
                respond(request, socket, thankYouPage(), kHtml);
            }
            break;
        }
        case Route::Health:
            respond(request, socket, "ok " + QByteArray::number(qulonglong(index_.size())) + "\n",
                    kPlain);
            break;
        case Route::None:
            break;
    }
    return true;
}

void UpdateServer::missingHandler(const QHttpServerRequest& request, QTcpSocket* socket) {
    respond(request, socket, "not found\n", kPlain, Status::NotFound);
}

}  // namespace server
