#include "scan/ScanDriver.h"

#include <limits>
#include <memory>

#include "core/BasicDate.h"
#include "core/BasicNumber.h"
#include "core/BasicText.h"
#include "platform/MessageBox.h"
#include "scan/DetectionDumps.h"
#include "scan/Discovery.h"
#include "scan/ScanOSWord.h"
#include "scan/UpdateRecord.h"
#include "scan/VersionCompare.h"
#include "state/FileHelpers.h"
#include "state/ProductNames.h"
#include "state/ServiceCommands.h"
#include "state/SettingNames.h"
#include "state/SystemDateFormats.h"
#include "web/TrackingEvents.h"

namespace scan {

namespace {

// Lookups in a row without an answer, or with a page that the reader can't cut, before the
// scan gives up on the connection or the server.
constexpr int kEmptyRepliesToFail = 2;
constexpr int kBrokenRepliesToFail = 3;
// The server's own failures; its other codes skip a program quietly.
const QStringList kServerFailureCodes{"4000", "4010", "4001", "4014"};
// Written when a scan has closed, so that the start-up stops forcing one.
constexpr const char* kForcedScanDone = "30000";

// The date and the time of now, two blanks between them, as the activity log writes them.
QString logTime(platform::Platform& platform) {
    const QDateTime now = state::LocalNow(platform);
    const core::DateFormats formats = state::systemDateFormats(platform);
    return core::formatDate(now, formats) + QStringLiteral("  ") + core::formatTime(now, formats);
}

}  // namespace

ScanDriver::ScanDriver(ScanParts parts) : parts_(std::move(parts)) {}

QString ScanDriver::text(const char* name) const {
    return parts_.language.GetStrLocValue(QString::fromLatin1(name));
}

QString ScanDriver::productKey() const {
    return QStringLiteral("HKEY_LOCAL_MACHINE\\Software\\") + parts_.productName;
}

void ScanDriver::setProductValue(const char* value, const QString& data) {
    parts_.service.SendToService(
        state::servicecommand::RegSetString(productKey(), QString::fromLatin1(value), data));
}

void ScanDriver::cmdScanNow_Click() {
    parts_.control.unattendedScan = false;
    parts_.control.ScanBusy = true;
    InitiateScan(false);
    pump();
    parts_.control.ScanBusy = false;
}

void ScanDriver::InitiateScan(bool silent) {
    ScanPageView& view = parts_.view;
    parts_.window.disableControls();
    if (!parts_.control.bInProcess) {
        parts_.window.stopCoSellTimer();
        if (parts_.settings.IsSettingOn(state::setting::InternetConnectionReminder,
                                        state::setting::On) &&
            !silent && !parts_.control.unattendedScan) {
            view.showInternetReminder();
        }
        parts_.service.SendToService(state::servicecommand::RegDeleteVal(
            productKey(), QLatin1String(state::productvalue::SilentScan)));
        view.showScan();
        pump();
        StartScan(silent);
        pump();
    }
    parts_.window.enableControls();
}

void ScanDriver::StartScan(bool silent) {
    QStringList scanLog;
    prepare(scanLog);
    detect(scanLog);
    const bool lookupFailed = lookUp(ScanOSWord(parts_.platform.environment.osVersion()), scanLog);
    close(silent, lookupFailed, scanLog);
}

void ScanDriver::prepare(QStringList& scanLog) {
    ScanControl& control = parts_.control;
    ScanPageView& view = parts_.view;
    control.bInProcess = true;
    view.scanPhase(1);
    parts_.ignoreList.LoadIgnoredToList();
    pump();
    view.showScanLayout(text("strLoc_TW_ReportError"));
    pump();
    control.ScanCancelled = false;

    parts_.lists.uninstallKeyList.Clear();
    parts_.lists.detectedProgramList.Clear();
    view.clearResults();
    view.setTotalItemsDetected(QStringLiteral("0"));

    if (parts_.tracking.guardOpen(web::trackingguard::ScanTr1)) {
        parts_.tracking.SendTracking(QLatin1String(web::trackingevent::ScanStarted), QString(),
                                     QStringLiteral("Application"));
        parts_.tracking.closeGuard(web::trackingguard::ScanTr1);
    }
    view.showRunning(true);
    pump();
    parts_.log.ClearLargeLogfile();
    pump();
    scanLog << QString() << QString()
            << QStringLiteral("Starting Computer Scan on ") + logTime(parts_.platform);
}

void ScanDriver::detect(QStringList& scanLog) {
    parts_.view.scanPhase(2);
    state::FileHelpers files(parts_.platform);
    std::unique_ptr<DetectionDumps> dumps;
    if (parts_.control.DebugDumps) {
        dumps = std::make_unique<DetectionDumps>(parts_.platform, files, parts_.dataFolder);
        dumps->begin(parts_.lists.ignoreEntryList);
    }
    ProgramFilter filter(parts_.lists.detectedProgramList, parts_.lists.ignoreEntryList, scanLog,
                         [&dumps](const QString& entry) {
                             if (dumps) {
                                 dumps->write(entry);
                             }
                         });
    Discovery discovery(
        parts_.platform, parts_.registry, parts_.control,
        [this](const QString& name) { return parts_.language.GetStrLocValue(name); },
        parts_.lists.uninstallKeyList, filter);
    discovery.run();
    pump();
    if (dumps) {
        dumps->finish(parts_.lists.detectedProgramList);
    }
}

bool ScanDriver::lookUp(const QString& osWord, QStringList& scanLog) {
    ScanPageView& view = parts_.view;
    state::clsList& work = parts_.lists.detectedProgramList;
    const platform::CodePage& codePage = parts_.platform.codePage;
    const auto encode = [&codePage](const QString& text) {
        return EncodeQueryValue(text, codePage);
    };
    const int n = work.Count();
    view.scanPhase(3);
    view.setProgressMaximum(n);
    parts_.ResultsList.Clear();
    scanLog << QString();

    int emptyReplies = 0;
    int brokenReplies = 0;
    int serverErrors = 0;
    // A lookup that answers with no record leaves the one before in force.
    UpdateRecord record;
    for (int i = 1; i <= n && parts_.control.bInProcess; ++i) {
        const int at = i - 1;
        const WorkRow row{core::trim(work.SubItemText(at, 3)), core::trim(work.SubItemText(at, 4)),
                          core::trim(work.SubItemText(at, 6)), core::trim(work.SubItemText(at, 5)),
                          core::trim(work.SubItemText(at, 2)), core::trim(work.ItemText(at)),
                          core::trim(work.SubItemText(at, 1))};
        const QString beta = QStringLiteral(" beta");
        const bool isBeta = core::lcase(row.name).contains(beta) ||
                            core::lcase(row.exePath).contains(beta) ||
                            core::lcase(row.folder).contains(beta);
        if (!row.name.isEmpty() && !row.publisher.isEmpty() && !row.version.isEmpty()) {
            const QString packed = parts_.component.RetrieveUpdate(
                encode(row.name), encode(row.publisher), encode(row.fileVersion),
                encode(row.version), encode(row.exeName), isBeta,
                parts_.settings.ReadSetting(state::setting::UID, QString()),
                state::product::ownVersion(), encode(osWord));
            if (const auto unpacked = UnpackUpdateRecord(packed)) {
                record = *unpacked;
            }
            switch (record.Status) {
                case updatestatus::Parsed:
                    classify(row, record, scanLog);
                    break;
                case updatestatus::EmptyReply:
                    ++emptyReplies;
                    break;
                case updatestatus::NoMarker:
                    ++brokenReplies;
                    break;
                case updatestatus::ServerError:
                    serverErrors += kServerFailureCodes.contains(record.ErrCode) ? 1 : 0;
                    break;
                default:
                    break;
            }
        }

        QString notice;
        if (emptyReplies >= n || emptyReplies >= kEmptyRepliesToFail) {
            notice = QStringLiteral("frmUnableToCheck");
        } else if (brokenReplies >= n || brokenReplies >= kBrokenRepliesToFail ||
                   serverErrors >= n || serverErrors >= kBrokenRepliesToFail) {
            notice = QStringLiteral("frmUnableToDetermine");
        }
        if (!notice.isEmpty()) {
            view.showNotice(notice);
            return true;
        }
        view.showProgress(i, n);
        if (i == 1) {
            view.showRunning(false);
            view.enableStop(true);
        }
    }
    return false;
}

void ScanDriver::classify(const WorkRow& row, const UpdateRecord& record, QStringList& scanLog) {
    parts_.settings.WriteSetting(state::setting::UID, record.UID);
    pump();
    ScanResult result{row.name,
                      row.publisher,
                      row.version,
                      record.PVR1,
                      DownloadAddress(record, row.name),
                      row.exePath.isEmpty() ? row.folder : row.exePath,
                      record.COM};
    const bool productBehind = IsVersionNewer(row.version, record.PVR1);
    // Only the file is behind: both texts name the file versions too.
    const bool fileBehind =
        !productBehind && !row.fileVersion.isEmpty() && !record.FVR1.isEmpty() &&
        IsVersionNewer(row.fileVersion, record.FVR1) && record.PVR1 == row.version;
    if (!productBehind && !fileBehind) {
        return;
    }
    if (fileBehind) {
        result.installedText = row.version + QStringLiteral(" (") + row.fileVersion + u')';
        result.availableText = record.PVR1 + QStringLiteral(" (") + record.FVR1 + u')';
    }
    parts_.view.addResult(result);
    state::clsList& results = parts_.ResultsList;
    const int at = results.ItemAdd(result.name) - 1;
    const QString subItems[] = {result.publisher,       result.installedText, result.availableText,
                                result.downloadAddress, result.path,          result.comment};
    for (int sub = 1; sub <= 6; ++sub) {
        results.SubItemSet(at, sub, subItems[sub - 1]);
    }
    scanLog << QStringLiteral("   Update Found: ") + core::trim(result.name) +
                   QStringLiteral(" (") + core::trim(result.publisher) + QStringLiteral(") ") +
                   core::trim(result.availableText) + QStringLiteral(" (") +
                   core::trim(result.installedText) + QStringLiteral("), ") +
                   core::trim(result.path);
    parts_.view.setTotalItemsDetected(QString::number(results.Count()));
    pump();
}

void ScanDriver::close(bool silent, bool lookupFailed, QStringList& scanLog) {
    using namespace state::setting;
    ScanControl& control = parts_.control;
    ScanPageView& view = parts_.view;
    state::modSettings& settings = parts_.settings;
    view.scanPhase(4);
    view.showRunning(false);
    view.enableStop(true);

    const int count = parts_.ResultsList.Count();
    if (!lookupFailed) {
        if (count == 0 && !control.ScanCancelled) {
            view.showEmptyLayout();
        } else if (count == 0) {
            view.showStartPage();
            pump();
        }
        settings.WriteSetting(UpdatesAvailable, QString::number(count));
        control.itemCount = qint16(count);
        setProductValue(state::productvalue::ItemCount, QString::number(count));
    } else if (count == 0) {
        view.showStartPage();
        pump();
    }

    settings.WriteSetting(LastScan, state::NowText(parts_.platform));
    // A count that is no number stays as it is.
    if (const auto scans = core::cLng(settings.ReadSetting(NumberOfScans, ZeroCount));
        scans && *scans < std::numeric_limits<qint32>::max()) {
        settings.WriteSetting(NumberOfScans, QString::number(*scans + 1));
    }

    scanLog << QStringLiteral("Scan Complete. (") + logTime(parts_.platform) + u')';
    if (settings.IsSettingOn(LogAllActivity, On)) {
        for (const QString& line : scanLog) {
            parts_.log.write(line);
        }
        parts_.log.write(QString());
    }

    view.setTotalItemsDetected(QString::number(count));
    view.finishScanLayout();
    pump();
    control.bInProcess = false;

    if (settings.IsSettingOn(PlaySoundWhenDone, On) && count > 0) {
        view.playSound(parts_.programFolder + QStringLiteral("\\ErrorFound.wav"));
    }
    if (count > 0 && settings.IsSettingOn(ShowPrintReport, On) &&
        (!silent || settings.IsSettingOn(SchedulerAction, Off))) {
        parts_.window.RestoreWindow();
        pump();
        pump();
    }
    parts_.tracking.SendOnce(QLatin1String(web::trackingevent::ScanFinished),
                             web::trackingguard::ScanTr);

    const QString email = control.newsletterEmail;
    if (email.size() > 5 && email != QLatin1String(ScanControl::kNoNewsletterAddress)) {
        QString url = text("strURL_SH_2122") + QString::number(count) + QStringLiteral("&Email2=") +
                      email + QStringLiteral("&FirstName2=") + control.newsletterFirstName;
        parts_.tracking.PostSilentURL(
            parts_.tracking.BuildTrackingQuery(url, QStringLiteral("Installer")));
    }
    control.newsletterEmail.clear();

    if (!lookupFailed) {
        setProductValue(state::productvalue::ForcedScan, QLatin1String(kForcedScanDone));
    }
}

void ScanDriver::cmdStopScan_Click() {
    using namespace platform::mbstyle;
    if (parts_.box.UniMsgBox(text("strLoc_TW_SureYouWantToStop"), YesNo | IconQuestion) !=
        platform::mbresult::Yes) {
        return;
    }
    ScanControl& control = parts_.control;
    if (parts_.tracking.guardOpen(web::trackingguard::ScanTr)) {
        parts_.tracking.SendTracking(QLatin1String(web::trackingevent::ScanCancelled), QString(),
                                     QStringLiteral("Application"));
        control.installRun = false;
        control.repeatFirstRun = false;
        parts_.tracking.closeGuard(web::trackingguard::ScanTr);
    }
    control.ScanCancelled = true;
    control.bInProcess = false;
    parts_.view.enableStop(false);
}

}  // namespace scan
