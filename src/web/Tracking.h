#pragma once
#include <QString>

#include <functional>

#include "localisation/LanguageText.h"
#include "state/ServiceChannel.h"
#include "state/lst.h"
#include "state/modRegistry.h"
#include "web/TrackingEvents.h"

namespace web {

// What a tracking URL says of this installation besides the event.
struct TrackingFacts {
    QString applicationId = QStringLiteral("TW");
    QString productKey;           // HKEY_LOCAL_MACHINE\Software\<product name>
    QString applicationVersion;   // major.minor.revision
    const bool* retry = nullptr;  // a forced first scan is being tried again
    // The caption of lblTotalItemsDetected, whose number goes out as the item count.
    std::function<QString()> itemsDetected;
};

// Usage events for the maker's site: fire-and-forget GETs, queued in lst.lstURLs and sent
// one at a time by the tracking queue. The installer's values are read fresh for each event;
// none of the values is URL-encoded.
class Tracking {
public:
    Tracking(state::modRegistry& registry, state::ServiceChannel& service, state::lst& lst,
             const localisation::LanguageText& language, TrackingFacts facts);

    void SendTracking(const QString& action, const QString& origin, const QString& source);
    // Appends the installation's facts to a URL of the caller's, "?source=" or "&source="
    // first; the URL is changed and returned.
    QString BuildTrackingQuery(QString& url, const QString& source);
    void PostSilentURL(const QString& url);
    // Sends the event only while the guard value does not exist, and has the service write
    // the guard in either case.
    void SendOnce(const QString& action, const TrackingGuard& guard);
    // The guard value does not exist yet: its event has not gone out on this machine.
    bool guardOpen(const TrackingGuard& guard);
    // Has the service write the guard value.
    void closeGuard(const TrackingGuard& guard);

    // The last item count read from lblTotalItemsDetected, kept for everyone.
    qint16 itemCount() const { return itemCount_; }

private:
    QString fact(const char* value);
    void refreshItemCount();
    QString factsQuery(const QString* action, const QString* origin);

    state::modRegistry& registry_;
    state::ServiceChannel& service_;
    state::lst& lst_;
    const localisation::LanguageText& language_;
    TrackingFacts facts_;
    qint16 itemCount_ = 0;
};

}  // namespace web
