#include "service/CommandPolicy.h"

#include "service/Commands.h"
#include "service/WindowsPath.h"
#include "state/DataFolders.h"
#include "state/ProductNames.h"
#include "state/modRegistry.h"

namespace service {

namespace {

using state::product::name;

// The key below HKEY_LOCAL_MACHINE, element by element; nothing for another root or a
// malformed path.
std::optional<QStringList> machineKey(const QString& path) {
    const qsizetype separator = path.indexOf(u'\\');
    if (separator < 0 || state::modRegistry::GetMainKeyHandle(path.left(separator)) !=
                             platform::hkey::LocalMachine) {
        return std::nullopt;
    }
    const QStringList elements = path.mid(separator + 1).split(u'\\');
    for (const QString& element : elements) {
        if (element.isEmpty()) {
            return std::nullopt;
        }
    }
    return elements;
}

const QStringList kRunKey = {"Software", "Microsoft", "Windows", "CurrentVersion", "Run"};

bool isFlag(const QString& text) {
    return text.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0 ||
           text.compare(QLatin1String("False"), Qt::CaseInsensitive) == 0;
}

}  // namespace

CommandPolicy::CommandPolicy(ServiceScope scope) : scope_(std::move(scope)) {
    dataFolder_ = pathElements(scope_.dataFolder).value_or(QStringList());
    programFolder_ = pathElements(scope_.programFolder).value_or(QStringList());
    for (const QString& temp : scope_.tempFolders) {
        if (const auto elements = pathElements(temp)) {
            tempFolders_ << *elements;
        }
    }
}

QString CommandPolicy::refusal(const QStringList& fields) const {
    const auto shape = commandShape(fields.value(0));
    if (!shape) {
        return QStringLiteral("unknown command");
    }
    if (fields.size() != shape->fields) {
        return QStringLiteral("%1 fields where %2 takes %3")
            .arg(fields.size())
            .arg(QLatin1String(shape->name))
            .arg(shape->fields);
    }
    switch (shape->command) {
        case Command::RegSetString:
        case Command::RegDeleteVal:
        case Command::RegCreateKey:
            return registryRefusal(fields);
        case Command::Kill:
        case Command::FsoCopyFolder:
        case Command::FsoDeleteFolder:
            return fileRefusal(fields);
    }
    return QStringLiteral("unknown command");
}

QString CommandPolicy::registryRefusal(const QStringList& fields) const {
    const auto key = machineKey(fields[1]);
    if (!key) {
        return QStringLiteral("key outside HKEY_LOCAL_MACHINE or malformed");
    }
    const bool createKey = fields.size() == 2;
    if (samePath(*key, {"Software", name()})) {
        return {};
    }
    if (samePath(*key, kRunKey)) {
        if (createKey || fields[2].compare(name(), Qt::CaseInsensitive) == 0) {
            return {};
        }
        return QStringLiteral("value of the Run key that is not the product's");
    }
    for (const QString& sibling : state::product::siblings()) {
        if (!createKey && samePath(*key, {"Software", sibling})) {
            if (state::product::bundleMarkers().contains(fields[2], Qt::CaseInsensitive)) {
                return {};
            }
            return QStringLiteral("value of a sibling's key that is not a bundle marker");
        }
    }
    return QStringLiteral("key not open to the service");
}

bool CommandPolicy::isOlderDataFolder(const QStringList& folder) const {
    for (const QString& older : state::olderDataFolders()) {
        if (samePath(folder, programFolder_ + QStringList{older})) {
            return true;
        }
    }
    return false;
}

bool CommandPolicy::isOlderDataMove(const QStringList& source, const QStringList& target) const {
    return isOlderDataFolder(source) && samePath(target, dataFolder_ + QStringList{source.last()});
}

QString CommandPolicy::fileRefusal(const QStringList& fields) const {
    if (dataFolder_.isEmpty()) {
        return QStringLiteral("no data folder");
    }
    const Command command = commandShape(fields[0])->command;
    const bool hasFlag = command != Command::Kill;
    if (hasFlag && !isFlag(fields.last())) {
        return QStringLiteral("flag that is not True or False");
    }
    std::vector<QStringList> paths;
    for (qsizetype i = 1; i < fields.size() - (hasFlag ? 1 : 0); ++i) {
        const auto path = pathElements(fields[i]);
        if (!path) {
            return QStringLiteral("path that is not absolute or has \"..\" or wildcards");
        }
        paths.push_back(*path);
    }
    const auto inData = [this](const QStringList& path) { return liesBelow(path, dataFolder_); };
    switch (command) {
        case Command::Kill:
            for (const auto& temp : tempFolders_) {
                if (liesBelow(paths[0], temp)) {
                    return {};
                }
            }
            return inData(paths[0]) ? QString()
                                    : QStringLiteral("file outside the data and temp folders");
        case Command::FsoCopyFolder:
            return (inData(paths[0]) && inData(paths[1])) || isOlderDataMove(paths[0], paths[1])
                       ? QString()
                       : QStringLiteral("copy outside the data folder");
        default:
            return inData(paths[0]) || isOlderDataFolder(paths[0])
                       ? QString()
                       : QStringLiteral("folder outside the data folder");
    }
}

}  // namespace service
