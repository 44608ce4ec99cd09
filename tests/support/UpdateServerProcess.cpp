#include "support/UpdateServerProcess.h"

namespace testing_support {

UpdateServerProcess::UpdateServerProcess(const QString& program, const QString& catalog,
                                         const QStringList& options) {
    if (QProcess::execute(program, {"--database", databasePath(), "--import", catalog}) != 0) {
        return;
    }
    process_.start(program, QStringList{"--port", "0", "--database", databasePath()} + options);
    const QString prefix = QStringLiteral("listening on ");
    while (process_.canReadLine() || process_.waitForReadyRead(10000)) {
        if (!process_.canReadLine()) {
            continue;
        }
        const QString line = QString::fromUtf8(process_.readLine()).trimmed();
        if (line.startsWith(prefix)) {
            base_ = line.mid(prefix.size());
            break;
        }
    }
}

UpdateServerProcess::~UpdateServerProcess() {
    process_.terminate();
    if (!process_.waitForFinished(5000)) {
        process_.kill();
        process_.waitForFinished(5000);
    }
}

QString UpdateServerProcess::errors() {
    return QString::fromUtf8(process_.readAllStandardError());
}

}  // namespace testing_support
