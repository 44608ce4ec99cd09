#pragma once
#include <QString>
#include <QStringList>

#include <filesystem>
#include <optional>
#include <utility>
#include <vector>

namespace setup {

// What one run of the installer is asked to do.
struct SetupOptions {
    enum class Action { Install, Uninstall };
    Action action = Action::Install;
    std::filesystem::path machineFolder;
    // The files that go into the install folder, sub-folders and all.
    std::filesystem::path dataFolder;
    // Where the host programs that stand for the product's executables are looked for.
    std::filesystem::path programsFolder;
    bool start = true;
    // Values for the product key, in the order given.
    std::vector<std::pair<QString, QString>> values;
};

// install [--machine DIR] [--data DIR] [--no-start] [--value NAME=DATA]...
// uninstall [--machine DIR]
// Starts from defaults; nothing when the arguments do not fit, a --value without "=" or with
// an empty name included.
std::optional<SetupOptions> parseSetupOptions(const QStringList& arguments,
                                              const SetupOptions& defaults);

}  // namespace setup
