#pragma once
#include <QString>

#include <map>
#include <string>

#include "platform/Platform.h"

namespace localisation {

// The three shipped states of one language's file, assembled from the sources in
// <parentFolder>localized\ into <parentFolder><application ID>\localized\<id>\, which must
// exist: "ini" plain with variables open, "inr" resolved, "inx" resolved and scrambled. Each
// is the file's bytes. On failure the map is empty and errorText says why.
std::map<std::string, std::string> BuildLanguageFiles(platform::Platform& platform,
                                                      const QString& parentFolder,
                                                      const QString& applicationId,
                                                      const QString& languageId,
                                                      QString& errorText);

}  // namespace localisation
