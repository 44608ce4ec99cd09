#include "server/UpdateLookup.h"

#include "server/ClientId.h"
#include "server/ReplyPage.h"

namespace server {

namespace {

QByteArray failure(int code, const QString& description) {
    return errorPage(QString::number(code), description);
}

}  // namespace

QByteArray answerUpdateQuery(const QueryParameters& parameters, const ProductIndex& index,
                             CatalogState state) {
    const auto app = queryValue(parameters, u"app");
    const auto publisher = queryValue(parameters, u"pub");
    if (!app || !publisher || app->trimmed().isEmpty()) {
        return failure(lookup_error::kMissingKey, QStringLiteral("The request names no program"));
    }
    if (state == CatalogState::Unreadable) {
        return failure(lookup_error::kDatabase,
                       QStringLiteral("The catalog could not be read from the database"));
    }
    if (state == CatalogState::Empty) {
        return failure(lookup_error::kNoCatalog, QStringLiteral("The server holds no catalog"));
    }
    const QString version = queryValue(parameters, u"pvr").value_or(QString()).trimmed();
    const ProductIndex::Match match = index.find(*app, *publisher, version);
    if (match.outcome == ProductIndex::Outcome::Ambiguous) {
        return failure(lookup_error::kAmbiguous,
                       QStringLiteral("Several makers have a program of this name"));
    }
    if (match.outcome != ProductIndex::Outcome::Found) {
        return failure(lookup_error::kUnknown, QStringLiteral("Unknown program"));
    }
    const CatalogProduct& product = *match.product;
    return foundPage({product.fileVersion, product.productVersion, product.downloadUrl,
                      product.comment,
                      clientUid(queryValue(parameters, u"uid").value_or(QString()))});
}

QByteArray testReplyPage(const TestReply& reply) {
    switch (reply.mode) {
        case TestReply::Mode::Empty:
            return {};
        case TestReply::Mode::NoMarker:
            return pageWithoutMarker();
        case TestReply::Mode::Error:
            return errorPage(reply.code, QStringLiteral("Test reply"));
        case TestReply::Mode::Off:
            break;
    }
    return {};
}

}  // namespace server
