#include "web/Tracking.h"

#include "core/BasicNumber.h"
#include "core/BasicText.h"
#include "state/ServiceCommands.h"
#include "state/SettingNames.h"

namespace web {

namespace {

// A fixed constant of the product, the same in every URL.
const QString kProductConstant = QStringLiteral("QXRUVEK3094");

}  // namespace

Tracking::Tracking(state::modRegistry& registry, state::ServiceChannel& service, state::lst& lst,
                   const localisation::LanguageText& language, TrackingFacts facts)
    : registry_(registry),
      service_(service),
      lst_(lst),
      language_(language),
      facts_(std::move(facts)) {}

// A value the installer left; one that can't be read counts as empty. Every value passes
// through the buffer txtAppData, as it always has.
QString Tracking::fact(const char* value) {
    lst_.txtAppData = registry_.GetStringValue(facts_.productKey, QString::fromLatin1(value));
    const QString trimmed = core::trim(lst_.txtAppData);
    return state::IsFailureWord(trimmed) ? QString() : trimmed;
}

void Tracking::refreshItemCount() {
    const QString caption = facts_.itemsDetected ? facts_.itemsDetected() : QString();
    const auto count = core::cLng(caption);
    if (count && *count >= -32768 && *count <= 32767) {
        itemCount_ = qint16(*count);
    }
}

// The facts in their order, with the event's action and origin where the tracking page
// takes them.
QString Tracking::factsQuery(const QString* action, const QString* origin) {
    using namespace state::productvalue;
    QString query = QStringLiteral("&application=") + facts_.applicationId;
    if (action != nullptr) {
        query += QStringLiteral("&action=") + *action;
    }
    // The key "aid" twice, the second carrying PID: the tracking page reads it so.
    query += QStringLiteral("&aid=") + fact(AID) + QStringLiteral("&aid=") + fact(PID) +
             QStringLiteral("&installer=") + fact(Installer);
    if (origin != nullptr) {
        query += QStringLiteral("&origin=") + *origin;
    }
    const bool retry = facts_.retry != nullptr && *facts_.retry;
    query += QStringLiteral("&itemcount=") + QString::number(itemCount_) +
             QStringLiteral("&applicationversion=") + facts_.applicationVersion +
             QStringLiteral("&installerexename=") + fact(InstallerExe) +
             QStringLiteral("&referrerapplication=") + fact(RefApp) +
             QStringLiteral("&referrerinstaller=") + fact(RefInst) +
             QStringLiteral("&installdate=") + fact(InstallDate) + QStringLiteral("&retry=") +
             (retry ? QStringLiteral("True") : QStringLiteral("False")) +
             QStringLiteral("&trigger=") + fact(Trigger) + QStringLiteral("&wait=") + fact(Wait) +
             QStringLiteral("&pc=") + kProductConstant;
    return query;
}

void Tracking::SendTracking(const QString& action, const QString& origin, const QString& source) {
    refreshItemCount();
    const QString base = language_.GetStrLocValue(QStringLiteral("strURL_SH_Corporate")) + u'/' +
                         core::lcase(facts_.applicationId);
    PostSilentURL(base + QStringLiteral("/tr.asp?source=") + source + factsQuery(&action, &origin));
}

QString Tracking::BuildTrackingQuery(QString& url, const QString& source) {
    refreshItemCount();
    url += (url.contains(u'?') ? QStringLiteral("&source=") : QStringLiteral("?source=")) + source +
           factsQuery(nullptr, nullptr);
    return url;
}

void Tracking::PostSilentURL(const QString& url) {
    lst_.lstURLs.append(url);
}

void Tracking::SendOnce(const QString& action, const TrackingGuard& guard) {
    if (guardOpen(guard)) {
        SendTracking(action, QString(), QStringLiteral("Application"));
    }
    closeGuard(guard);
}

bool Tracking::guardOpen(const TrackingGuard& guard) {
    lst_.txtAppData = registry_.GetStringValue(facts_.productKey, QString::fromLatin1(guard.value));
    return state::IsFailureWord(core::trim(lst_.txtAppData));
}

void Tracking::closeGuard(const TrackingGuard& guard) {
    service_.SendToService(state::servicecommand::RegSetString(
        facts_.productKey, QString::fromLatin1(guard.value), QString::fromLatin1(guard.number)));
}

}  // namespace web
