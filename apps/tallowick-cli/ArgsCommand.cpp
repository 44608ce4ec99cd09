#include <QDate>

#include "Cli.h"
#include "shell/CommandLine.h"

namespace cli {

namespace {
QString yesNo(bool flag) {
    return flag ? QStringLiteral("true") : QStringLiteral("false");
}
}  // namespace

// args "COMMAND LINE": what the switch parser makes of a command line, as name=value lines.
int argsCommand(Context& context) {
    if (context.arguments().size() != 1) {
        return kUsage;
    }
    shell::ProcessState state;
    QString message;
    const bool silent =
        shell::ParseCommandLine(state, context.arguments()[0], message, QDate::currentDate());
    Context::out("silent=" + yesNo(silent));
    Context::out("message=" + message);
    Context::out("languageId=" + state.languageId);
    Context::out("production=" + yesNo(state.production));
    Context::out("encryption=" + yesNo(state.encryption));
    Context::out("resolve=" + yesNo(state.resolve));
    Context::out("loaderFileName=" + state.loaderFileName);
    Context::out("failFonts=" + yesNo(state.failFonts));
    Context::out("debugUnlock=" + yesNo(state.debugUnlock));
    Context::out("delay=" + yesNo(state.delay));
    Context::out("freeze=" + yesNo(state.freeze));
    Context::out("testModeL5291=" + yesNo(state.testModeL5291));
    Context::out("testModeU5291=" + yesNo(state.testModeU5291));
    Context::out("testModeA5291=" + yesNo(state.testModeA5291));
    return kOk;
}

}  // namespace cli
