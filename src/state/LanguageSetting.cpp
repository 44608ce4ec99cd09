#include "state/LanguageSetting.h"

#include "state/ServiceCommands.h"
#include "state/SettingNames.h"

namespace state {

namespace {

const QString kValue = QString::fromLatin1(productvalue::Language);

}  // namespace

QString GetStoredLanguage(modRegistry& registry, const QString& productKey) {
    const QString value = registry.GetStringValue(productKey, kValue);
    return IsFailureWord(value) ? QString() : value;
}

bool SaveLanguage(modRegistry& registry, ServiceChannel& service, const QString& productKey,
                  const QString& id) {
    service.SendToService(servicecommand::RegSetString(productKey, kValue, id));
    if (GetStoredLanguage(registry, productKey) == id) {
        return true;
    }
    registry.CreateKey(productKey);
    registry.SetStringValue(productKey, kValue, id);
    return GetStoredLanguage(registry, productKey) == id;
}

}  // namespace state
