#include "shell/Program.h"

#include "core/AnsiText.h"
#include "shell/CommandLine.h"
#include "shell/EntryFolders.h"
#include "shell/LanguageStart.h"
#include "shell/UpdateLookupStart.h"
#include "state/ProductNames.h"
#include "state/SystemDateFormats.h"

namespace shell {

namespace {

QString locateDataFolder(platform::Platform& platform, const QString& programFolder) {
    bool fallback = false;
    return state::locateDataFolder(platform, programFolder, state::product::name(), &fallback);
}

}  // namespace

Program::Program(platform::Platform& platform, const QString& programFolder, ProgramViews views)
    : platform(platform),
      programFolder(programFolder),
      box(platform.messageBox, state.productName),
      registry(platform),
      folders(platform, programFolder, state.productName),
      channel(platform, registry, folders, views.gate),
      settings(platform),
      language(state.applicationId),
      dataFolder(locateDataFolder(platform, programFolder)),
      files(platform, dataFolder, holder, state.productName),
      lists(platform.messageBox),
      ignore(holder, lists.ignoreEntryList, files, language, views.ignorePage, box),
      statistics(settings, language, ignore, views.statisticsPanel, box),
      tracking(registry, channel, holder, language,
               web::TrackingFacts{state.applicationId, state::product::key(),
                                  state::product::ownVersion(), &trackingRetry,
                                  [this] {
                                      return scanPage_ != nullptr ? scanPage_->totalItemsDetected()
                                                                  : QString();
                                  }}),
      trackingQueue(holder),
      component(platform, inet),
      log(platform, settings, dataFolder + state::product::activityLog()),
      results(platform.messageBox) {
    PrepareUpdateLookup(component, state, platform);
    results.InitList(6, scan::DetectionLists::kGrowBy);
}

bool Program::start(const QString& switches, QString* message) {
    QString errorText;
    if (!ParseCommandLine(state, switches, errorText, state::LocalNow(platform).date())) {
        if (message != nullptr) {
            *message = errorText;
        }
        return false;
    }
    ComputeEntryFolders(state, programFolder, platform.files, platform.codePage);
    // The switches may have put the lookup on its test path.
    PrepareUpdateLookup(component, state, platform);
    if (!StartLanguage(state, registry, platform, language)) {
        return false;
    }
    component.setServerBase(language.GetStrLocValue(QStringLiteral("strURL_SH_Corporate")));
    return true;
}

void Program::openDataFolder(bool makeFolders) {
    if (makeFolders) {
        folders.UpdateFileLocations(channel);
        platform.files.MkDir(core::toAnsi(platform.codePage, dataFolder));
        platform.files.MkDir(core::toAnsi(platform.codePage, dataFolder + "Settings"));
    }
    settings.setSettingsPath(dataFolder + state::product::settingsFile());
    files.LoadFiles(dataFolder + state::product::ignoreListFile(), holder.lstIgnoreListFile);
}

void Program::useServer(const QString& base) {
    language.SetCodeString(QStringLiteral("strURL_SH_Corporate"), base);
    component.setServerBase(base);
}

scan::ScanParts Program::scanParts(scan::ScanPageView& page, state::MainWindowView& window) {
    scanPage_ = &page;
    return scan::ScanParts{
        platform, settings, registry, channel,           tracking,      language,
        ignore,   lists,    results,  component,         log,           control,
        page,     window,   box,      state.productName, programFolder, dataFolder};
}

}  // namespace shell
