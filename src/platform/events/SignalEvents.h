#pragma once
#include <QSocketNotifier>

#include <functional>
#include <initializer_list>
#include <memory>
#include <vector>

namespace platform::events {

// Turns the process's signals (SIGINT, SIGTERM) into a call on the event loop: the handler
// only writes a byte to a socket pair, and `onSignal` runs when the loop reads it. With
// `once`, a signal's next arrival takes its default action again, so that a second Ctrl-C
// ends the process as it normally would. The default actions come back when the object goes.
// One object at a time per process.
class SignalEvents {
public:
    SignalEvents(std::initializer_list<int> numbers, std::function<void()> onSignal,
                 bool once = false);
    ~SignalEvents();
    SignalEvents(const SignalEvents&) = delete;
    SignalEvents& operator=(const SignalEvents&) = delete;

private:
    std::vector<int> signals_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace platform::events
