#include "state/SystemDateFormats.h"

#include <QDateTime>
#include <chrono>

#include "core/AnsiText.h"
#include "core/BasicDate.h"

namespace state {

core::DateFormats systemDateFormats(platform::Platform& platform) {
    core::DateFormats formats;
    const auto read = [&platform](std::uint32_t type, QString* into) {
        const std::string text = platform.environment.GetLocaleInfoA(type);
        if (!text.empty()) {
            *into = core::fromAnsi(platform.codePage, text);
        }
    };
    read(platform::localeinfo::ShortDate, &formats.shortDate);
    read(platform::localeinfo::TimeFormat, &formats.time);
    return formats;
}

QDateTime LocalNow(platform::Platform& platform) {
    const auto milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(
        platform.clock.now().time_since_epoch());
    return QDateTime::fromMSecsSinceEpoch(milliseconds.count());
}

QString NowText(platform::Platform& platform) {
    return core::formatDateTime(LocalNow(platform), systemDateFormats(platform));
}

}  // namespace state
