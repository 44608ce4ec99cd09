#pragma once
#include <QString>

#include <cstdint>

#include "localisation/LanguageText.h"
#include "platform/Platform.h"
#include "state/ActivityLog.h"
#include "state/UniMessageBox.h"
#include "state/lst.h"
#include "state/modSettings.h"

namespace scan {

// What the links of a result row need of the results page.
class ResultsPageView {
public:
    virtual ~ResultsPageView() = default;
    // The notice before a download page opens, modal; its answer is not read.
    virtual void showUpdatePrompt() = 0;
    // The main window, owner of what the shell shows.
    virtual std::uintptr_t windowHandle() = 0;
};

// Ignore Program on a row of the results: the line goes into the hidden ignore list only;
// the file follows at the next save and the page at the next load.
void IgnoreProgram(state::lst& lst, state::ActivityLog& log, const QString& name,
                   const QString& publisher, const QString& path, const QString& version);

// The other links of a result row. Each gets the row's own strings, so none of them looks
// into ResultsList. The program downloads nothing itself: the browser opens the pages.
class ResultsActions {
public:
    ResultsActions(platform::Platform& platform, state::modSettings& settings,
                   state::ActivityLog& log, const localisation::LanguageText& language,
                   ResultsPageView& view, const state::UniMessageBox& box);

    void GetUpdate(const QString& name, const QString& publisher, const QString& address);
    // Opens the server's report page; the values go out unescaped, as the server expects them.
    void ReportError(const QString& name, const QString& publisher, const QString& installed,
                     const QString& available);
    void ReadMore(const QString& first, const QString& second, const QString& third,
                  const QString& fourth);

private:
    void open(const QString& target);

    platform::Platform& platform_;
    state::modSettings& settings_;
    state::ActivityLog& log_;
    const localisation::LanguageText& language_;
    ResultsPageView& view_;
    const state::UniMessageBox& box_;
};

}  // namespace scan
