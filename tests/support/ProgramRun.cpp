#include "support/ProgramRun.h"

#include <QProcess>
#include <QProcessEnvironment>

namespace testing_support {

ProgramRun runProgram(const QString& program, const QStringList& arguments,
                      const QString& machineFolder, const QByteArray& input) {
    QProcess process;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert("TALLOWICK_MACHINE", machineFolder);
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    const bool ended = process.waitForFinished(30000);
    return {ended && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

}  // namespace testing_support
