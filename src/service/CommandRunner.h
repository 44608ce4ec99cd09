#pragma once
#include <QString>
#include <QStringList>

#include "platform/Platform.h"
#include "state/modRegistry.h"

namespace service {

// Carries out one command line that the policy let through.
class CommandRunner {
public:
    CommandRunner(platform::Platform& platform, state::modRegistry& registry);

    // "" when the command did what it says; otherwise what went wrong.
    QString run(const QStringList& fields);

private:
    std::string ansi(const QString& text) const;
    QString registryOutcome() const;

    platform::Platform& platform_;
    state::modRegistry& registry_;
};

}  // namespace service
