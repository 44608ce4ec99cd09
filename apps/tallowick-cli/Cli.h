#pragma once
#include <QString>
#include <QStringList>

#include <memory>

#include "ConsoleAnswers.h"
#include "platform/portable/Machine.h"

namespace cli {

// Exit statuses of the console front end.
inline constexpr int kOk = 0;
inline constexpr int kFailed = 1;
inline constexpr int kUsage = 2;

// What every command has at hand: its arguments, the output streams, and the machine,
// opened on first use.
class Context {
public:
    explicit Context(QStringList arguments) : arguments_(std::move(arguments)) {}

    const QStringList& arguments() const { return arguments_; }
    // The machine of TALLOWICK_MACHINE, its boxes answered on the console; null after printing
    // why it could not be opened.
    platform::portable::Machine* machine();

    static void out(const QString& line);
    static void err(const QString& line);

private:
    QStringList arguments_;
    ConsoleAnswers answers_;
    std::unique_ptr<platform::portable::Machine> machine_;
};

int machineCommand(Context& context);
int regCommand(Context& context);
int verinfoCommand(Context& context);
int argsCommand(Context& context);
int programsCommand(Context& context);
int serviceCommand(Context& context);
int settingsCommand(Context& context);
int langCommand(Context& context);
int compareCommand(Context& context);
int lookupCommand(Context& context);
int ignoreCommand(Context& context);
int statsCommand(Context& context);
int scanCommand(Context& context);

}  // namespace cli
