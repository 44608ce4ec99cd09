#include "service/ServiceLog.h"

#include <QDateTime>

#include "core/AnsiText.h"

namespace service {

namespace {

// A log that nobody reads must not fill the disk: past this size it starts anew.
constexpr std::uint64_t kLogLimit = 1024 * 1024;

}  // namespace

ServiceLog::ServiceLog(platform::Platform& platform, QString path)
    : platform_(platform), path_(std::move(path)) {}

void ServiceLog::write(const QString& line) {
    const std::string file = core::toAnsi(platform_.codePage, path_);
    if (platform_.files.FileLen(file).value_or(0) > kLogLimit) {
        platform_.files.Kill(file);
    }
    const auto now =
        QDateTime::fromMSecsSinceEpoch(std::chrono::duration_cast<std::chrono::milliseconds>(
                                           platform_.clock.now().time_since_epoch())
                                           .count());
    const QString stamped =
        now.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss")) + u' ' + line + QStringLiteral("\r\n");
    platform_.files.appendFile(file, core::toAnsi(platform_.codePage, stamped));
}

}  // namespace service
