#include "service/CommandRunner.h"

#include "core/AnsiText.h"
#include "service/Commands.h"

namespace service {

CommandRunner::CommandRunner(platform::Platform& platform, state::modRegistry& registry)
    : platform_(platform), registry_(registry) {}

std::string CommandRunner::ansi(const QString& text) const {
    return core::toAnsi(platform_.codePage, text);
}

QString CommandRunner::registryOutcome() const {
    const long status = registry_.lastStatus();
    return status == platform::status::Success ? QString()
                                               : QStringLiteral("registry status %1").arg(status);
}

QString CommandRunner::run(const QStringList& fields) {
    const auto shape = commandShape(fields.value(0));
    if (!shape || fields.size() != shape->fields) {
        return QStringLiteral("malformed command");
    }
    const auto outcome = [](bool done, const char* what) {
        return done ? QString() : QLatin1String(what);
    };
    const auto flag = [&fields] {
        return fields.last().compare(QLatin1String("True"), Qt::CaseInsensitive) == 0;
    };
    auto& files = platform_.files;
    switch (shape->command) {
        case Command::RegSetString:
            registry_.SetStringValue(fields[1], fields[2], fields[3]);
            return registryOutcome();
        case Command::RegDeleteVal:
            // A value that is not there is as good as deleted.
            registry_.DeleteValue(fields[1], fields[2]);
            return registry_.lastStatus() == platform::status::FileNotFound ? QString()
                                                                            : registryOutcome();
        case Command::RegCreateKey:
            registry_.CreateKey(fields[1]);
            return registryOutcome();
        case Command::Kill:
            return outcome(!files.FileExists(ansi(fields[1])) || files.Kill(ansi(fields[1])),
                           "file not deleted");
        case Command::FsoCopyFolder:
            return outcome(files.CopyFolder(ansi(fields[1]), ansi(fields[2]), flag()),
                           "folder not copied");
        case Command::FsoDeleteFolder:
            return outcome(files.DeleteFolder(ansi(fields[1]), flag()), "folder not deleted");
    }
    return QStringLiteral("malformed command");
}

}  // namespace service
