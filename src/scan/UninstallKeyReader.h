#pragma once
#include <optional>

#include "platform/Platform.h"
#include "scan/Candidate.h"
#include "scan/VersionWords.h"
#include "state/modRegistry.h"

namespace scan {

// Reads one uninstall key into a candidate, step by step in the order the program has
// always used; later steps reuse what earlier ones found, so the order matters.
class UninstallKeyReader {
public:
    UninstallKeyReader(platform::Platform& platform, state::modRegistry& registry,
                       VersionInfoReader& versionReader, StringLookup getStrLocValue);

    // keyPath is the full path, root name first. Nothing when the key is a system component.
    std::optional<Candidate> read(const QString& keyPath);

private:
    bool fileExists(const QString& path);
    bool folderExists(const QString& path);

    platform::Platform& platform_;
    state::modRegistry& registry_;
    VersionInfoReader& versionReader_;
    StringLookup getStrLocValue_;
};

}  // namespace scan
