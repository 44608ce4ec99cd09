#include "Cli.h"
#include "ConsoleProgram.h"
#include "scan/ScanOSWord.h"
#include "scan/UpdateRecord.h"
#include "scan/modUpdateCOmponent.h"
#include "shell/UpdateLookupStart.h"
#include "state/ProductNames.h"
#include "state/SettingNames.h"
#include "state/modSettings.h"

namespace cli {

// lookup NAME PUBLISHER VERSION [FILEVERSION] [--server BASE]: one question to the update
// server of the installed program's language data (or BASE, "http://host:port"), as the scan
// asks it, and the answer's eleven fields, one NAME=value line each. The server's UID is kept
// in the settings as the scan keeps it.
int lookupCommand(Context& context) {
    QStringList arguments = context.arguments();
    QString server;
    const qsizetype option = arguments.indexOf(QLatin1String("--server"));
    if (option >= 0 && option + 1 < arguments.size()) {
        server = arguments.takeAt(option + 1);
        arguments.removeAt(option);
    }
    if (option >= 0 && server.isEmpty()) {
        return kUsage;
    }
    if (arguments.size() != 3 && arguments.size() != 4) {
        return kUsage;
    }
    return withProgram(context, {}, [&](ConsoleProgram& console) {
        shell::Program& program = console.program;
        if (!server.isEmpty()) {
            program.useServer(server);
        }
        const auto encode = [&program](const QString& text) {
            return scan::EncodeQueryValue(text, program.platform.codePage);
        };
        const QString packed = program.component.RetrieveUpdate(
            encode(arguments[0]), encode(arguments[1]), encode(arguments.value(3)),
            encode(arguments[2]), QString(), false,
            program.settings.ReadSetting(state::setting::UID, QString()),
            state::product::ownVersion(),
            encode(scan::ScanOSWord(program.platform.environment.osVersion())));
        const auto record = scan::UnpackUpdateRecord(packed);
        if (!record) {
            Context::err("the answer could not be read: " + packed);
            return kFailed;
        }
        program.settings.WriteSetting(state::setting::UID, record->UID);
        for (const auto& [name, value] : std::initializer_list<std::pair<const char*, QString>>{
                 {"FVR1", record->FVR1},
                 {"PVR1", record->PVR1},
                 {"FVR2", record->FVR2},
                 {"PVR2", record->PVR2},
                 {"HUR", record->HUR},
                 {"DUR", record->DUR},
                 {"COM", record->COM},
                 {"UID", record->UID},
                 {"ErrCode", record->ErrCode},
                 {"ErrDesc", record->ErrDesc},
                 {"Status", QString::number(record->Status)}}) {
            Context::out(QString::fromLatin1(name) + u'=' + value);
        }
        return kOk;
    });
}

}  // namespace cli
