#include <QFile>

#include "Cli.h"
#include "core/AnsiText.h"
#include "state/modRegistry.h"

namespace cli {

// reg get|dword|set|import|export: the registry of the machine, read the way the program
// reads it.
int regCommand(Context& context) {
    const QStringList& args = context.arguments();
    const QString verb = args.value(0);
    const qsizetype count = args.size() - 1;
    const bool valid = ((verb == "get" || verb == "dword") && count == 2) ||
                       (verb == "set" && count == 3) ||
                       ((verb == "import" || verb == "export") && count == 1);
    if (!valid) {
        return kUsage;
    }
    auto* machine = context.machine();
    if (machine == nullptr) {
        return kFailed;
    }
    state::modRegistry registry(machine->platform());

    if (verb == "get") {
        Context::out(registry.GetStringValue(args[1], args[2]));
        return kOk;
    }
    if (verb == "dword") {
        Context::out(registry.GetDwordValue(args[1], args[2]).toString());
        return kOk;
    }
    if (verb == "set") {
        // reg.exe makes the key when it is missing; the program's own writes never need to.
        registry.CreateKey(args[1]);
        registry.SetStringValue(args[1], args[2], args[3]);
        if (registry.lastStatus() != platform::status::Success) {
            Context::err(QStringLiteral("reg set: status %1").arg(registry.lastStatus()));
            return kFailed;
        }
        return kOk;
    }
    auto& regEdit = machine->platform().regEdit;
    if (verb == "import") {
        const auto result = regEdit.importFile(QFile::encodeName(args[1]).toStdString());
        if (!result.ok) {
            Context::err(QString::fromStdString(result.message));
            return kFailed;
        }
        return kOk;
    }
    std::string text;
    const auto result =
        regEdit.exportKey(core::toAnsi(machine->platform().codePage, args[1]), &text);
    if (!result.ok) {
        Context::err(QString::fromStdString(result.message));
        return kFailed;
    }
    std::fputs(text.c_str(), stdout);
    return kOk;
}

}  // namespace cli
