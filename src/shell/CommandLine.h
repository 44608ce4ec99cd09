#pragma once
#include <QDate>
#include <QString>

#include "shell/ProcessState.h"

namespace shell {

// Reads the developer switches of the command line ("/language=de /NOPRODUCTION") into the
// process state. True when the program can go on in silence; otherwise errorText is the
// message for the user. Words the start-up looks for (boot, install, ...) are unknown here
// and only noted.
bool ParseCommandLine(ProcessState& state, const QString& commandText, QString& errorText,
                      const QDate& today);

// The DX switch unlocks debug mode with a code that is valid on one day only.
bool IsDebugCodeValid(const QString& code, const QDate& today);

}  // namespace shell
