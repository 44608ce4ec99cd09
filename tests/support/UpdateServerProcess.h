#pragma once
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace testing_support {

// The real update server as a process on a free loopback port, with its own database in a
// temporary folder: the catalog is imported first, then the server runs until the object
// goes.
class UpdateServerProcess {
public:
    UpdateServerProcess(const QString& program, const QString& catalog,
                        const QStringList& options = {});
    ~UpdateServerProcess();

    bool running() const { return !base_.isEmpty(); }
    // "http://127.0.0.1:<port>", without a trailing "/".
    const QString& base() const { return base_; }
    QString databasePath() const { return dir_.filePath("server.sqlite"); }
    // What the server printed on its error stream so far.
    QString errors();

private:
    QTemporaryDir dir_;
    QProcess process_;
    QString base_;
};

}  // namespace testing_support
