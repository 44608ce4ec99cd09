#include <QDate>

#include "Cli.h"
#include "localisation/LanguageText.h"
#include "shell/CommandLine.h"
#include "shell/EntryFolders.h"
#include "shell/LanguageStart.h"
#include "state/ProductNames.h"
#include "state/modRegistry.h"

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
    auto* machine = context.machine();
    if (machine == nullptr) {
        return kFailed;
    }
    auto& platform = machine->platform();
    shell::ProcessState state;
    QString message;
    const QString switches = withLanguage ? QStringLiteral("/language=") + arguments[3] : QString();
    if (!shell::ParseCommandLine(state, switches, message, QDate::currentDate()) &&
        !message.isEmpty()) {
        Context::err(message);
        return kFailed;
    }
    shell::ComputeEntryFolders(state, state::product::installFolder(), platform.files,
                               platform.codePage);
    state::modRegistry registry(platform);
    localisation::LanguageText language(state.applicationId);
    if (!shell::StartLanguage(state, registry, platform, language)) {
        return kFailed;
    }
    Context::out(language.GetStrLocValue(arguments[1]).replace(QStringLiteral("\r\n"), "\n"));
    return kOk;
}

}  // namespace cli
