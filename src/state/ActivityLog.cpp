#include "state/ActivityLog.h"

#include "core/AnsiText.h"
#include "core/BasicNumber.h"
#include "state/FileHelpers.h"
#include "state/MessageLoop.h"

namespace state {

ActivityLog::ActivityLog(platform::Platform& platform, modSettings& settings, QString path)
    : platform_(platform), settings_(settings), path_(std::move(path)) {}

void ActivityLog::write(const QString& line) {
    if (!settings_.IsSettingOn(setting::LogAllActivity, setting::On)) {
        return;
    }
    platform_.files.appendFile(core::toAnsi(platform_.codePage, path_),
                               core::toAnsi(platform_.codePage, line + QStringLiteral("\r\n")));
    pumpEvents();
}

void ActivityLog::empty() {
    platform_.files.Kill(core::toAnsi(platform_.codePage, path_));
    FileHelpers(platform_).CreateBlankFile(path_);
}

void ActivityLog::ClearLargeLogfile() {
    if (!settings_.IsSettingOn(setting::ClearLargeLogfile, setting::On)) {
        return;
    }
    const auto size = platform_.files.FileLen(core::toAnsi(platform_.codePage, path_));
    if (!size) {
        return;
    }
    const double megabytes =
        core::val(settings_.ReadSetting(setting::MaximumLogSize, setting::MaximumLogSizeDefault));
    if (megabytes * 1024 * 1024 <= double(*size)) {
        empty();
    }
}

void ActivityLog::clear() {
    if (platform_.files.FileExists(core::toAnsi(platform_.codePage, path_))) {
        empty();
    }
}

}  // namespace state
