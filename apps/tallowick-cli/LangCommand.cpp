#include "Cli.h"
#include "ConsoleProgram.h"

namespace cli {

// lang get NAME [--language ID]: the value of a language variable as the installed program
// sees it, in the language given, or else the one it would start in. Line breaks in the value
// come out as line breaks.
int langCommand(Context& context) {
    const QStringList& arguments = context.arguments();
    const bool withLanguage = arguments.size() == 4 && arguments[2] == QLatin1String("--language");
    if (arguments.value(0) != QLatin1String("get") || (arguments.size() != 2 && !withLanguage)) {
        return kUsage;
    }
    const QString switches = withLanguage ? QStringLiteral("/language=") + arguments[3] : QString();
    return withProgram(context, {true, false, switches}, [&](ConsoleProgram& console) {
        Context::out(console.program.language.GetStrLocValue(arguments[1])
                         .replace(QStringLiteral("\r\n"), "\n"));
        return kOk;
    });
}

}  // namespace cli
