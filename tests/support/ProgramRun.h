#pragma once
#include <QByteArray>
#include <QString>
#include <QStringList>

namespace testing_support {

// What a program run as a process left: its exit status (-1 when it crashed or did not end
// within 30 seconds) and its output.
struct ProgramRun {
    int status;
    QString out;
    QString err;
};

// Runs a host program on a machine folder (TALLOWICK_MACHINE), as a script would, with
// `input` on its standard input.
ProgramRun runProgram(const QString& program, const QStringList& arguments,
                      const QString& machineFolder, const QByteArray& input = {});

}  // namespace testing_support
