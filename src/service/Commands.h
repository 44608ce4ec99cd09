#pragma once
#include <QString>

#include <optional>

namespace service {

// The commands of the command file. A line is the command and its fields separated by "|".
enum class Command {
    RegSetString,
    RegDeleteVal,
    RegCreateKey,
    Kill,
    FsoCopyFolder,
    FsoDeleteFolder
};

struct CommandShape {
    Command command;
    const char* name;
    int fields;  // the command's own name included
};

// The shape of a command by its exact name; nothing for an unknown one.
std::optional<CommandShape> commandShape(const QString& name);

}  // namespace service
