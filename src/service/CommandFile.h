#pragma once
#include <QString>

#include <optional>
#include <string>

#include "platform/Platform.h"
#include "service/CommandPolicy.h"
#include "service/CommandRunner.h"
#include "service/ServiceLog.h"

namespace service {

// The command file that clients drop: its text in the system code page, commands separated by
// CR LF. Taking it carries out each command the policy allows, in order, logs each one it
// refuses or that fails, and deletes the file in every case, so a client never waits on a bad
// file.
class CommandFile {
public:
    // The largest file the service reads; a larger one is refused whole.
    static constexpr std::uint64_t kSizeLimit = 64 * 1024;

    CommandFile(platform::Platform& platform, const CommandPolicy& policy, CommandRunner& runner,
                ServiceLog& log, QString path);

    // False when there was no file to take.
    bool take();

private:
    void carryOut(const QString& line);

    platform::Platform& platform_;
    const CommandPolicy& policy_;
    CommandRunner& runner_;
    ServiceLog& log_;
    const std::string path_;
    // The contents of a file that could not be deleted, so that it is not carried out again
    // and again while it stays.
    std::optional<std::string> stuck_;
};

}  // namespace service
