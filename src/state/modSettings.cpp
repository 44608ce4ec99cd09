#include "state/modSettings.h"

#include "core/AnsiText.h"

namespace state {

namespace {

// The INI call's buffer: 255 characters and the terminator.
constexpr std::uint32_t kIniBuffer = 256;

}  // namespace

modSettings::modSettings(platform::Platform& platform) : platform_(platform) {}

std::string modSettings::ansi(const QString& text) const {
    return core::toAnsi(platform_.codePage, text);
}

QString modSettings::GetIniValue(const QString& path, const QString& section, const QString& key,
                                 const QString& defaultValue) {
    std::string value;
    const std::uint32_t length = platform_.profile.GetPrivateProfileStringA(
        ansi(section), ansi(key), ansi(defaultValue), kIniBuffer, &value, ansi(path));
    return core::fromAnsi(platform_.codePage, value.substr(0, length));
}

void modSettings::SetIniValue(const QString& path, const QString& section, const QString& key,
                              const QString& value) {
    platform_.profile.WritePrivateProfileStringA(ansi(section), ansi(key), ansi(value), ansi(path));
}

void modSettings::DeleteIniKey(const QString& path, const QString& section, const QString& key) {
    platform_.profile.WritePrivateProfileStringA(ansi(section), ansi(key), std::nullopt,
                                                 ansi(path));
}

QString modSettings::ReadSetting(const QString& section, const QString& key,
                                 const QString& defaultValue) {
    return settingsPath_.isEmpty() ? defaultValue
                                   : GetIniValue(settingsPath_, section, key, defaultValue);
}

void modSettings::WriteSetting(const QString& section, const QString& key, const QString& value) {
    if (!settingsPath_.isEmpty()) {
        SetIniValue(settingsPath_, section, key, value);
    }
}

void modSettings::DeleteSetting(const QString& section, const QString& key) {
    if (!settingsPath_.isEmpty()) {
        DeleteIniKey(settingsPath_, section, key);
    }
}

}  // namespace state
