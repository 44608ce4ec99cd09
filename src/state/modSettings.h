#pragma once
#include <QString>

#include "platform/Platform.h"
#include "state/SettingNames.h"

namespace state {

// The settings file, key by key through the system's INI calls: no cache and no save-all
// step, so a setting is stored the moment it changes and read fresh each time. A key that was
// never written, or a file that is missing or damaged, reads as the default its reader passes.
class modSettings {
public:
    explicit modSettings(platform::Platform& platform);

    // The settings file, <data folder>Settings\Tallowick.ini, known once the data folder is;
    // before that ReadSetting gives every default and WriteSetting does nothing.
    void setSettingsPath(const QString& path) { settingsPath_ = path; }
    const QString& settingsPath() const { return settingsPath_; }

    // At most 255 characters; a longer value is cut.
    QString GetIniValue(const QString& path, const QString& section, const QString& key,
                        const QString& defaultValue);
    // A write to a file without rights fails in silence.
    void SetIniValue(const QString& path, const QString& section, const QString& key,
                     const QString& value);
    void DeleteIniKey(const QString& path, const QString& section, const QString& key);

    QString ReadSetting(const QString& section, const QString& key, const QString& defaultValue);
    void WriteSetting(const QString& section, const QString& key, const QString& value);
    void DeleteSetting(const QString& section, const QString& key);
    QString ReadSetting(setting::Key key, const QString& defaultValue) {
        return ReadSetting(key.section, key.name, defaultValue);
    }
    void WriteSetting(setting::Key key, const QString& value) {
        WriteSetting(key.section, key.name, value);
    }
    // A switch of the settings is on when its text, read with the reader's default, is "1".
    bool IsSettingOn(setting::Key key, const char* defaultValue) {
        return ReadSetting(key, QLatin1String(defaultValue)) == QLatin1String("1");
    }

private:
    std::string ansi(const QString& text) const;

    platform::Platform& platform_;
    QString settingsPath_;
};

}  // namespace state
