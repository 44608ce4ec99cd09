#include "Cli.h"
#include "InstalledLanguage.h"
#include "localisation/LanguageText.h"
#include "platform/net/InetControl.h"
#include "scan/ScanOSWord.h"
#include "scan/UpdateComponent.h"
#include "scan/UpdateRecord.h"
#include "state/DataFolders.h"
#include "state/ProductNames.h"
#include "state/SettingNames.h"
#include "state/modSettings.h"

namespace cli {

// lookup NAME PUBLISHER VERSION [FILEVERSION]: one question to the update server of the
// installed program's language data, as the scan asks it, and the answer's eleven fields,
// one NAME=value line each. The server's UID is kept in the settings as the scan keeps it.
int lookupCommand(Context& context) {
    const QStringList& arguments = context.arguments();
    if (arguments.size() != 3 && arguments.size() != 4) {
        return kUsage;
    }
    auto* machine = context.machine();
    if (machine == nullptr) {
        return kFailed;
    }
    auto& platform = machine->platform();
    shell::ProcessState state;
    localisation::LanguageText language(state.applicationId);
    if (!startInstalledLanguage(platform, QString(), state, language)) {
        return kFailed;
    }

    bool fallback = false;
    state::modSettings settings(platform);
    settings.setSettingsPath(
        state::locateDataFolder(platform, state.programFolder, state::product::name(), &fallback) +
        state::product::settingsFile());
    platform::net::InetControl inet;
    scan::modUpdateCOmponent component(platform, inet);
    component.setAccessKey(QLatin1String(scan::modUpdateCOmponent::kAccessKey));
    component.setServerBase(language.GetStrLocValue(QStringLiteral("strURL_SH_Corporate")));
    const auto encode = [&platform](const QString& text) {
        return scan::EncodeQueryValue(text, platform.codePage);
    };
    const QString packed = component.RetrieveUpdate(
        encode(arguments[0]), encode(arguments[1]), encode(arguments.value(3)),
        encode(arguments[2]), QString(), false,
        settings.ReadSetting(state::setting::UID, QString()), state::product::ownVersion(),
        encode(scan::ScanOSWord(platform.environment.osVersion())));
    const auto record = scan::UnpackUpdateRecord(packed);
    if (!record) {
        Context::err("the answer could not be read: " + packed);
        return kFailed;
    }
    settings.WriteSetting(state::setting::UID, record->UID);
    for (const auto& [name, value] : std::initializer_list<std::pair<const char*, QString>>{
             {"FVR1", record->FVR1},
             {"PVR1", record->PVR1},
             {"FVR2", record->FVR2},
             {"PVR2", record->PVR2},
             {"HUR", record->HUR},
             {"DUR", record->DUR},
             {"COM", record->COM},
             {"UID", record->UID},
             {"ErrCode", record->ErrCode},
             {"ErrDesc", record->ErrDesc},
             {"Status", QString::number(record->Status)}}) {
        Context::out(QString::fromLatin1(name) + u'=' + value);
    }
    return kOk;
}

}  // namespace cli
