#pragma once
#include <QString>

#include "platform/Platform.h"
#include "state/DataFolders.h"
#include "state/ServiceChannel.h"
#include "state/ServiceGate.h"
#include "state/modRegistry.h"

namespace state {

// "stopped", "startpend", "stoppend", "running", "contpend", "pausepend", "paused" for the
// service states 1 to 7; "" for any other.
QString ServiceStateText(std::uint32_t state);

// The client of the privileged service. A send drops the command text into
// <data folder>Service\SentData.dat and waits until the service has taken it, so a caller can
// read back what it wrote at once. The waits turn the message loop, so a timer may send again
// from inside a send; its text then waits until the outer one is taken, which keeps the order.
class modServiceCom final : public ServiceChannel {
public:
    modServiceCom(platform::Platform& platform, modRegistry& registry, const DataFolders& folders,
                  ServiceGate& gate);

    // Returns when the service has taken the text. Does nothing once the service is gone.
    // While an installer or uninstaller works (the product key holds Install or Uninstall)
    // the service is not checked first. A command file that can't be written goes to the
    // procedure's handler: its standard line in a box titled with the product name.
    bool SendToService(const QString& commandText) override;

    // True when the product's service runs; found tells that it is installed. All
    // callers ask with state 3, services in any state. With debug mode on, a failing call of
    // the service manager is shown.
    bool EnumSystemServices(std::uint32_t state, bool& found);

    // Clears the file's attributes, deletes it, writes the text in the system code page and
    // gives the message loop a turn. 0, or Basic's error number of the failed write.
    int WriteServiceFile(const QString& path, const QString& text);

    // Set when the program has given up on the service: later sends do nothing.
    bool serviceGone() const { return serviceGone_; }
    void setServiceGone(bool gone) { serviceGone_ = gone; }
    void setDebugMode(bool on) { debugMode_ = on; }

private:
    bool productValueExists(const QString& name);
    void waitWhileCommandFileExists(const std::string& commandFile);
    void showDebugFailure(const QString& text);

    platform::Platform& platform_;
    modRegistry& registry_;
    const DataFolders& folders_;
    ServiceGate& gate_;
    bool serviceGone_ = false;
    bool debugMode_ = false;
};

}  // namespace state
