#include "web/TrackingQueue.h"

#include "state/MessageLoop.h"

namespace web {

frmTracker::frmTracker() {
    connect(&Timer1, &QTimer::timeout, this, &frmTracker::Timer1_Timer);
}

void frmTracker::setTxtURL(const QString& url) {
    http_ = std::make_unique<platform::net::InetControl>();
    Timer1.start(1);
    http_->Execute(url);
}

void frmTracker::Timer1_Timer() {
    if (http_ && !http_->StillExecuting()) {
        Timer1.stop();
        emit done();
    }
}

TrackingQueue::TrackingQueue(state::lst& lst) : lst_(lst) {
    tmrURL.setInterval(kInterval);
    connect(&tmrURL, &QTimer::timeout, this, &TrackingQueue::tick);
    loadTracker();
}

TrackingQueue::~TrackingQueue() = default;

void TrackingQueue::loadTracker() {
    tracker_ = std::make_unique<frmTracker>();
    connect(tracker_.get(), &frmTracker::done, this, [this] {
        TrackerWait_ = 0;
        TrackerBusy_ = false;
        TrackerBusy2_ = false;
    });
}

void TrackingQueue::tick() {
    if (lst_.lstURLs.isEmpty()) {
        return;
    }
    if (++TrackerWait_ > kReleaseTicks) {
        TrackerBusy_ = false;
        TrackerBusy2_ = false;
    }
    if (TrackerBusy_ || TrackerBusy2_) {
        return;
    }
    TrackerBusy_ = true;
    TrackerBusy2_ = true;
    TrackerWait_ = 0;
    // A fresh form for every request, so a request that never ended is dropped with it.
    tracker_->Timer1.stop();
    tracker_.reset();
    state::pumpEvents();
    loadTracker();
    tracker_->setTxtURL(lst_.lstURLs.constFirst());
    state::pumpEvents();
    lst_.lstURLs.removeFirst();
    TrackerBusy2_ = false;
}

}  // namespace web
