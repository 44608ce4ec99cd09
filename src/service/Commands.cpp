#include "service/Commands.h"

namespace service {

std::optional<CommandShape> commandShape(const QString& name) {
    static constexpr CommandShape kShapes[] = {
        {Command::RegSetString, "RegSetString", 4},        // key path, value name, data
        {Command::RegDeleteVal, "RegDeleteVal", 3},        // key path, value name
        {Command::RegCreateKey, "RegCreateKey", 2},        // key path
        {Command::Kill, "Kill", 2},                        // file path
        {Command::FsoCopyFolder, "FsoCopyFolder", 4},      // source, target, overwrite
        {Command::FsoDeleteFolder, "FsoDeleteFolder", 3},  // folder, force
    };
    for (const auto& shape : kShapes) {
        if (name == QLatin1String(shape.name)) {
            return shape;
        }
    }
    return std::nullopt;
}

}  // namespace service
