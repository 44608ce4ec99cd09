#pragma once

namespace state {

// The main window's own calls, which the work of its pages needs: what must not start while a
// scan runs, the timer that starts the due silent scan, and the way back from the tray.
class MainWindowView {
public:
    virtual ~MainWindowView() = default;
    // The navigation and the buttons that must not start anything while a scan runs.
    virtual void disableControls() = 0;
    virtual void enableControls() = 0;
    // The timer that starts a silent scan when one is due.
    virtual void stopCoSellTimer() = 0;
    // Brings the main window back from the tray.
    virtual void RestoreWindow() = 0;
};

// A main window that nobody sees: the console's, a benchmark's.
class NoMainWindow : public MainWindowView {
public:
    void disableControls() override {}
    void enableControls() override {}
    void stopCoSellTimer() override {}
    void RestoreWindow() override {}
};

}  // namespace state
