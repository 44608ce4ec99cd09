#include "platform/portable/PortableShell.h"

#include <QString>
#include <QStringList>

namespace platform::portable {

namespace {

constexpr std::intptr_t kStarted = 42;

bool isExecutable(const std::string& file) {
    return QString::fromStdString(file).trimmed().endsWith(QLatin1String(".exe"),
                                                           Qt::CaseInsensitive);
}

// The parameters as the started program receives them: split at blanks, quotes kept
// together.
std::vector<std::string> splitParameters(const std::string& parameters) {
    std::vector<std::string> arguments;
    std::string current;
    bool quoted = false;
    bool any = false;
    for (const char c : parameters) {
        if (c == '"') {
            quoted = !quoted;
            any = true;
        } else if (c == ' ' && !quoted) {
            if (any) {
                arguments.push_back(current);
            }
            current.clear();
            any = false;
        } else {
            current += c;
            any = true;
        }
    }
    if (any) {
        arguments.push_back(current);
    }
    return arguments;
}

}  // namespace

std::intptr_t PortableShell::ShellExecuteA(std::uintptr_t, const std::string& verb,
                                           const std::string& file, const std::string& parameters,
                                           const std::string&, int showCommand) {
    std::vector<std::string> arguments = splitParameters(parameters);
    std::string program = file;
    if (!isExecutable(file)) {
        program = kBrowser;
        arguments.insert(arguments.begin(), file);
    }
    if (launcher_.launch(program, arguments, "shell.log")) {
        return kStarted;
    }
    launcher_.note(program, arguments,
                   "not started: " + verb + ", show " + std::to_string(showCommand) +
                       ", no program stands for it");
    return isExecutable(file) ? shellerror::FileNotFound : shellerror::NoAssociation;
}

}  // namespace platform::portable
