#include "InstalledLanguage.h"

#include <QDate>

#include "Cli.h"
#include "shell/CommandLine.h"
#include "shell/EntryFolders.h"
#include "shell/LanguageStart.h"
#include "state/ProductNames.h"
#include "state/modRegistry.h"

namespace cli {

bool startInstalledLanguage(platform::Platform& platform, const QString& switches,
                            shell::ProcessState& state, localisation::LanguageText& language) {
    QString message;
    if (!shell::ParseCommandLine(state, switches, message, QDate::currentDate()) &&
        !message.isEmpty()) {
        Context::err(message);
        return false;
    }
    shell::ComputeEntryFolders(state, state::product::installFolder(), platform.files,
                               platform.codePage);
    state::modRegistry registry(platform);
    return shell::StartLanguage(state, registry, platform, language);
}

}  // namespace cli
