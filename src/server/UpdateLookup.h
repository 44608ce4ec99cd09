#pragma once
#include <QByteArray>
#include <QString>

#include "server/ProductIndex.h"
#include "server/QueryText.h"

namespace server {

// The failure codes of updates.asp. The desktop program counts 4000, 4001, 4010 and 4014 as
// failures of the server (three of them in one scan and it tells the user), and passes over
// a program for any other code.
namespace lookup_error {
inline constexpr int kDatabase = 4000;    // the catalog could not be read from the database
inline constexpr int kMissingKey = 4001;  // no "app" or no "pub" key, or an empty "app"
inline constexpr int kUnknown = 4002;     // no product of the catalog is this program
inline constexpr int kAmbiguous = 4003;   // products of several makers, and no publisher
inline constexpr int kNoCatalog = 4010;   // the server holds no catalog: none was imported
}  // namespace lookup_error

// The state of the catalog the server answers from.
enum class CatalogState { Loaded, Empty, Unreadable };

// The reply page of updates.asp for the parameters of a request (keys app, pub, fvr, pvr,
// exe, bet, uid, cuv, win; compared without regard to case, the first of each counts, the
// order and other keys do not matter; "pub" may be empty). See ReplyPage.h for the page.
QByteArray answerUpdateQuery(const QueryParameters& parameters, const ProductIndex& index,
                             CatalogState state);

// What --test-reply makes of every reply, for the desktop program's tests.
struct TestReply {
    enum class Mode { Off, Empty, NoMarker, Error };
    Mode mode = Mode::Off;
    QString code;  // for Error
};
QByteArray testReplyPage(const TestReply& reply);

}  // namespace server
