#pragma once
#include <QObject>
#include <QTimer>

#include <memory>

#include "platform/net/InetControl.h"
#include "state/lst.h"

namespace web {

// The hidden form that sends one queued URL: setting txtURL starts an asynchronous GET, and
// Timer1 polls every millisecond until it has ended. The reply is not looked at.
class frmTracker : public QObject {
    Q_OBJECT
public:
    frmTracker();

    void setTxtURL(const QString& url);
    QTimer Timer1;

signals:
    // The request has ended, answered or not.
    void done();

private:
    void Timer1_Timer();

    std::unique_ptr<platform::net::InetControl> http_;
};

// Sends the queue lst.lstURLs one URL at a time, in order, from the tick of tmrURL (every
// 333 ms). A request that has not ended after 61 ticks (about 20 seconds) no longer holds
// the queue: the next one goes out and a lost event stays lost.
class TrackingQueue : public QObject {
    Q_OBJECT
public:
    static constexpr int kInterval = 333;
    static constexpr int kReleaseTicks = 60;

    explicit TrackingQueue(state::lst& lst);
    ~TrackingQueue() override;

    // The queue's part of the tick of tmrURL.
    void tick();
    QTimer tmrURL;

    bool busy() const { return TrackerBusy_ || TrackerBusy2_; }

private:
    void loadTracker();

    state::lst& lst_;
    bool TrackerBusy_ = false;
    bool TrackerBusy2_ = false;
    int TrackerWait_ = 0;
    std::unique_ptr<frmTracker> tracker_;
};

}  // namespace web
