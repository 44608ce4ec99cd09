#pragma once
#include <QSet>

#include <functional>

#include "Cli.h"
#include "scan/QuietViews.h"
#include "shell/Program.h"
#include "state/ServiceGate.h"

namespace cli {

// When a send finds the service stopped, it is started, as the service handler form would;
// when it can't be, the console says why and ends.
class ConsoleServiceGate final : public state::ServiceGate {
public:
    explicit ConsoleServiceGate(platform::Platform& platform) : platform_(platform) {}
    void ServiceRecovery(bool found) override;

private:
    platform::Platform& platform_;
};

// The ignore page and the statistics panel on the console: the rows to remove are checked
// beforehand, and the panel's captions are kept for printing.
class ConsolePages final : public scan::QuietListPages {
public:
    void beginRows() override { rows_ = 0; }
    void addRow(const QStringList&) override { ++rows_; }
    int rowCount() override { return rows_; }
    bool rowChecked(int row) override { return checked.contains(row); }
    void setScanNowData(int index, const QString& caption) override;

    QSet<int> checked;
    QString captions[6];

private:
    int rows_ = 0;
};

// The installed program of the context's machine, shown on the console.
class ConsoleProgram {
public:
    explicit ConsoleProgram(platform::portable::Machine& machine);

    platform::Platform& platform;
    ConsoleServiceGate gate{platform};
    ConsolePages pages;
    shell::Program program;
};

// How a command uses the installed program: started as the program starts (switches, language)
// or only with its data; its data folder made, as every run that writes makes it, or only read.
struct ProgramUse {
    bool language = true;
    bool makeFolders = true;
    QString switches;
};

// Runs `work` on the installed program of the context's machine; 1 when there is no machine or
// the program can't start.
int withProgram(Context& context, const ProgramUse& use,
                const std::function<int(ConsoleProgram&)>& work);

}  // namespace cli
