#pragma once
#include <QString>

#include "state/ServiceChannel.h"
#include "state/modRegistry.h"

namespace state {

// The language ID stored under the product key's value "Language"; a value that can't be
// read counts as "".
QString GetStoredLanguage(modRegistry& registry, const QString& productKey);

// Stores the ID through the service, and directly when the service did not; true when the
// registry holds `id` afterwards.
bool SaveLanguage(modRegistry& registry, ServiceChannel& service, const QString& productKey,
                  const QString& id);

}  // namespace state
