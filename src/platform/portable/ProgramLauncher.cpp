#include "platform/portable/ProgramLauncher.h"

#include <QDateTime>
#include <QFile>
#include <QString>

#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>

#include <cstdlib>

extern char** environ;

namespace platform::portable {

namespace fs = std::filesystem;

ProgramLauncher::ProgramLauncher(fs::path machineFolder, const MachineFacts& facts)
    : machineFolder_(std::move(machineFolder)), facts_(facts) {}

std::optional<std::string> ProgramLauncher::hostProgram(const std::string& windowsProgram) const {
    const QString wanted = QString::fromStdString(windowsProgram);
    for (const auto& [windows, host] : facts_.programs) {
        if (QString::fromStdString(windows).compare(wanted, Qt::CaseInsensitive) == 0) {
            return host;
        }
    }
    return std::nullopt;
}

void ProgramLauncher::note(const std::string& windowsProgram,
                           const std::vector<std::string>& arguments, const std::string& remark) {
    QString line = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")) +
                   u'\t' + QString::fromStdString(windowsProgram);
    for (const auto& argument : arguments) {
        line += u'\t' + QString::fromStdString(argument);
    }
    if (!remark.empty()) {
        line += QStringLiteral("\t(") + QString::fromStdString(remark) + u')';
    }
    QFile log(QString::fromStdString((machineFolder_ / "run" / "launched.log").string()));
    if (log.open(QIODevice::WriteOnly | QIODevice::Append)) {
        log.write((line + u'\n').toUtf8());
    }
}

std::optional<pid_t> ProgramLauncher::launch(const std::string& windowsProgram,
                                             const std::vector<std::string>& arguments,
                                             const std::string& logName) {
    const auto host = hostProgram(windowsProgram);
    if (!host) {
        return std::nullopt;
    }
    std::vector<std::string> argv{*host};
    argv.insert(argv.end(), arguments.begin(), arguments.end());
    std::vector<char*> argvPointers;
    for (auto& argument : argv) {
        argvPointers.push_back(argument.data());
    }
    argvPointers.push_back(nullptr);

    // The child sees this machine, whatever the environment of the caller chose.
    std::vector<std::string> environment{"TALLOWICK_MACHINE=" + machineFolder_.string()};
    for (char** variable = environ; *variable != nullptr; ++variable) {
        if (std::string(*variable).rfind("TALLOWICK_MACHINE=", 0) != 0) {
            environment.emplace_back(*variable);
        }
    }
    std::vector<char*> environmentPointers;
    for (auto& variable : environment) {
        environmentPointers.push_back(variable.data());
    }
    environmentPointers.push_back(nullptr);

    const std::string output = (machineFolder_ / "run" / logName).string();
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&files, STDOUT_FILENO, output.c_str(),
                                     O_WRONLY | O_CREAT | O_APPEND, 0644);
    posix_spawn_file_actions_adddup2(&files, STDOUT_FILENO, STDERR_FILENO);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID);
    pid_t pid = 0;
    const int failed = posix_spawn(&pid, host->c_str(), &files, &attributes, argvPointers.data(),
                                   environmentPointers.data());
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    if (failed != 0) {
        return std::nullopt;
    }
    note(windowsProgram, arguments);
    return pid;
}

}  // namespace platform::portable
