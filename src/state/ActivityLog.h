#pragma once
#include <QString>

#include "platform/Platform.h"
#include "state/modSettings.h"

namespace state {

// <data folder>Tallowick Log.txt: what the program did, for the user. Each line is appended at
// the moment of the action, in the system code page with CR LF, and only while LogAllActivity
// is 1. There is no rotation: a log over its limit is emptied.
class ActivityLog {
public:
    ActivityLog(platform::Platform& platform, modSettings& settings, QString path);

    const QString& path() const { return path_; }

    // Appends the line, making the file when it is missing.
    void write(const QString& line);
    // With ClearLargeLogfile 1, a log of MaximumLogSize megabytes or more is emptied.
    void ClearLargeLogfile();

    // Empties the log when there is one.
    void clear();

private:
    void empty();

    platform::Platform& platform_;
    modSettings& settings_;
    const QString path_;
};

}  // namespace state
