#include "setup/SetupOptions.h"

namespace setup {

namespace {

std::filesystem::path hostFolder(const QString& argument) {
    return std::filesystem::absolute(argument.toStdString());
}

}  // namespace

std::optional<SetupOptions> parseSetupOptions(const QStringList& arguments,
                                              const SetupOptions& defaults) {
    SetupOptions options = defaults;
    const QString action = arguments.value(0);
    if (action == QLatin1String("install")) {
        options.action = SetupOptions::Action::Install;
    } else if (action == QLatin1String("uninstall")) {
        options.action = SetupOptions::Action::Uninstall;
    } else {
        return std::nullopt;
    }
    const bool install = options.action == SetupOptions::Action::Install;
    for (qsizetype i = 1; i < arguments.size(); ++i) {
        const QString& argument = arguments[i];
        const bool hasValue = i + 1 < arguments.size();
        if (argument == QLatin1String("--machine") && hasValue) {
            options.machineFolder = hostFolder(arguments[++i]);
        } else if (install && argument == QLatin1String("--data") && hasValue) {
            options.dataFolder = hostFolder(arguments[++i]);
        } else if (install && argument == QLatin1String("--no-start")) {
            options.start = false;
        } else if (install && argument == QLatin1String("--value") && hasValue) {
            const QString& pair = arguments[++i];
            const qsizetype equals = pair.indexOf('=');
            if (equals <= 0) {
                return std::nullopt;
            }
            options.values.emplace_back(pair.left(equals), pair.mid(equals + 1));
        } else {
            return std::nullopt;
        }
    }
    return options;
}

}  // namespace setup
