#include "server/ServerOptions.h"

#include <QDir>
#include <QHostAddress>
#include <QRegularExpression>

namespace server {

std::optional<ServerOptions> parseServerOptions(const QStringList& arguments) {
    ServerOptions options;
    options.database = defaultDatabasePath();
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& option = arguments[i];
        if (i + 1 >= arguments.size()) {
            return std::nullopt;
        }
        const QString& value = arguments[++i];
        if (option == u"--address") {
            if (value != u"localhost" && QHostAddress(value).isNull()) {
                return std::nullopt;
            }
            options.address = value;
        } else if (option == u"--port") {
            bool number = false;
            const uint port = value.toUInt(&number);
            if (!number || port > 65535) {
                return std::nullopt;
            }
            options.port = quint16(port);
        } else if (option == u"--database" && !value.isEmpty()) {
            options.database = value;
        } else if (option == u"--import" && !value.isEmpty()) {
            options.importFile = value;
        } else if (option == u"--test-reply") {
            static const QRegularExpression code(QStringLiteral("^[A-Za-z0-9]{1,16}$"));
            if (value == u"empty") {
                options.testReply = {TestReply::Mode::Empty, {}};
            } else if (value == u"nomarker") {
                options.testReply = {TestReply::Mode::NoMarker, {}};
            } else if (value.startsWith(u"error:") && code.match(value.mid(6)).hasMatch()) {
                options.testReply = {TestReply::Mode::Error, value.mid(6)};
            } else {
                return std::nullopt;
            }
        } else {
            return std::nullopt;
        }
    }
    return options;
}

QString defaultDatabasePath() {
    QString data = qEnvironmentVariable("XDG_DATA_HOME");
    if (data.isEmpty()) {
        data = QDir::homePath() + QStringLiteral("/.local/share");
    }
    return data + QStringLiteral("/tallowick/update-server.sqlite");
}

}  // namespace server
