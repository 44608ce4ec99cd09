#include "service/CommandFile.h"

#include "core/AnsiText.h"
#include "core/BasicText.h"

namespace service {

namespace {

// Enough of a refused line to recognise it in the log.
constexpr int kLoggedLength = 300;

}  // namespace

CommandFile::CommandFile(platform::Platform& platform, const CommandPolicy& policy,
                         CommandRunner& runner, ServiceLog& log, QString path)
    : platform_(platform),
      policy_(policy),
      runner_(runner),
      log_(log),
      path_(core::toAnsi(platform.codePage, path)) {}

bool CommandFile::take() {
    const auto size = platform_.files.FileLen(path_);
    if (!size) {
        return false;
    }
    const auto bytes = *size > kSizeLimit ? std::nullopt : platform_.files.readFile(path_);
    if (bytes && bytes == stuck_) {
        return false;
    }
    if (*size > kSizeLimit) {
        log_.write(QStringLiteral("refused: command file of %1 bytes, over %2")
                       .arg(*size)
                       .arg(kSizeLimit));
    } else if (bytes) {
        const QString text = core::fromAnsi(platform_.codePage, *bytes);
        for (const QString& line : core::split(text, QStringLiteral("\r\n"))) {
            if (!line.isEmpty()) {
                carryOut(line);
            }
        }
    } else {
        log_.write(QStringLiteral("refused: command file can't be read"));
    }
    platform_.files.SetAttr(path_, platform::fileattr::Normal);
    stuck_.reset();
    if (!platform_.files.Kill(path_)) {
        log_.write(QStringLiteral("command file can't be deleted"));
        stuck_ = bytes;
    }
    return true;
}

void CommandFile::carryOut(const QString& line) {
    const QStringList fields = line.split(u'|');
    const QString shown = core::left(line, kLoggedLength);
    if (const QString why = policy_.refusal(fields); !why.isEmpty()) {
        log_.write(QStringLiteral("refused: ") + why + QStringLiteral(": ") + shown);
        return;
    }
    if (const QString failure = runner_.run(fields); !failure.isEmpty()) {
        log_.write(QStringLiteral("failed: ") + failure + QStringLiteral(": ") + shown);
    }
}

}  // namespace service
