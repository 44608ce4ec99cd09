#pragma once
#include <QString>
#include <QStringList>

#include <optional>

#include "server/UpdateLookup.h"

namespace server {

// tallowick-update-server [--address A] [--port P] [--database PATH] [--import CATALOG.csv]
//                         [--test-reply MODE]
struct ServerOptions {
    QString address = QStringLiteral("127.0.0.1");
    quint16 port = 8417;  // 0 takes a free port
    QString database;     // default: defaultDatabasePath()
    QString importFile;   // set: import this catalog and exit
    TestReply testReply;  // --test-reply empty | nomarker | error:CODE
};

inline constexpr const char* kServerUsage =
    "usage: tallowick-update-server [--address A] [--port P] [--database PATH] "
    "[--import CATALOG.csv] [--test-reply empty|nomarker|error:CODE]\n";

// Nothing when the arguments do not fit: an unknown option, a missing value, a port that is
// no number of 0 to 65535, an address that is no IP address (or "localhost"), a test reply of
// another mode, or an error code that is not 1 to 16 letters and digits.
std::optional<ServerOptions> parseServerOptions(const QStringList& arguments);

// $XDG_DATA_HOME/tallowick/update-server.sqlite, else ~/.local/share/tallowick/...
QString defaultDatabasePath();

}  // namespace server
