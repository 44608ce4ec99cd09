#include "platform/events/SignalEvents.h"

#include <sys/socket.h>
#include <unistd.h>

#include <csignal>

namespace platform::events {

namespace {

int sockets[2] = {-1, -1};
bool onceOnly = false;

void onSignal(int number) {
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = ::write(sockets[1], &byte, 1);
    if (onceOnly) {
        std::signal(number, SIG_DFL);
    }
}

}  // namespace

SignalEvents::SignalEvents(std::initializer_list<int> numbers, std::function<void()> handler,
                           bool once)
    : signals_(numbers) {
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, sockets) != 0) {
        return;
    }
    onceOnly = once;
    notifier_ = std::make_unique<QSocketNotifier>(sockets[0], QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, [handler = std::move(handler)] {
        char byte = 0;
        [[maybe_unused]] const ssize_t got = ::read(sockets[0], &byte, 1);
        handler();
    });
    struct sigaction action {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (const int number : signals_) {
        sigaction(number, &action, nullptr);
    }
}

SignalEvents::~SignalEvents() {
    for (const int number : signals_) {
        std::signal(number, SIG_DFL);
    }
    notifier_.reset();
    for (int& end : sockets) {
        if (end >= 0) {
            ::close(end);
            end = -1;
        }
    }
}

}  // namespace platform::events
