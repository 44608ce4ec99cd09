#include "Cli.h"
#include "ConsoleProgram.h"

namespace cli {

// settings get SECTION KEY [DEFAULT] | settings set SECTION KEY VALUE | settings delete SECTION
// KEY: one key of the settings file in the data folder, as the program reads and writes it;
// get prints the value, or the default (empty when none is given) for a key that is not there;
// set fails when the key does not read back.
int settingsCommand(Context& context) {
    const QStringList& arguments = context.arguments();
    const QString action = arguments.value(0);
    const bool fits =
        (action == QLatin1String("get") && (arguments.size() == 3 || arguments.size() == 4)) ||
        (action == QLatin1String("set") && arguments.size() == 4) ||
        (action == QLatin1String("delete") && arguments.size() == 3);
    if (!fits) {
        return kUsage;
    }
    const bool set = action == QLatin1String("set");
    return withProgram(context, {false, set, {}}, [&](ConsoleProgram& console) {
        state::modSettings& settings = console.program.settings;
        if (action == QLatin1String("get")) {
            Context::out(settings.ReadSetting(arguments[1], arguments[2], arguments.value(3)));
        } else if (set) {
            settings.WriteSetting(arguments[1], arguments[2], arguments[3]);
            if (settings.ReadSetting(arguments[1], arguments[2], QString()) !=
                arguments[3].trimmed()) {
                Context::err(settings.settingsPath() + ": the key could not be written");
                return kFailed;
            }
        } else {
            settings.DeleteSetting(arguments[1], arguments[2]);
        }
        return kOk;
    });
}

}  // namespace cli
