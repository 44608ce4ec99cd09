#pragma once
#include <QString>

#include "platform/Platform.h"
#include "state/modSettings.h"

namespace state {

// What the log's two links on the settings page need of the page.
class ActivityLogView {
public:
    virtual ~ActivityLogView() = default;
    // Asks strLoc_SH_SureClearLogFile with Yes and No; true for Yes.
    virtual bool confirmClearLog() = 0;
    // Opens the log file in the user's viewer.
    virtual void showLogFile(const QString& path) = 0;
};

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

    // The text box of the limit, outside the loading state: stores the text as typed; text
    // that is not a number puts "2" back into the box.
    void txtLogSize_Change(const QString& text, const std::function<void(const QString&)>& setBox);
    void lblCmdClearLog_Click(ActivityLogView& view);
    void lblCmdViewLog_Click(ActivityLogView& view);

private:
    void empty();

    platform::Platform& platform_;
    modSettings& settings_;
    const QString path_;
};

}  // namespace state
