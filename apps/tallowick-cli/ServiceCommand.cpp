#include "Cli.h"
#include "ConsoleProgram.h"
#include "service/ServiceControl.h"
#include "state/ServiceCommands.h"

namespace cli {

namespace {

QString stateWord(service::ServiceState state) {
    switch (state) {
        case service::ServiceState::Running:
            return QStringLiteral("running");
        case service::ServiceState::Stopped:
            return QStringLiteral("stopped");
        default:
            return QStringLiteral("not installed");
    }
}

int reportControl(platform::Platform& platform, long status) {
    if (status != platform::status::Success) {
        Context::err(service::controlStatusText(status));
        return kFailed;
    }
    Context::out(stateWord(service::productServiceState(platform)));
    return kOk;
}

}  // namespace

// service status|start|stop|send COMMAND...: the state of the product's service as one word
// ("running", "stopped", "not installed"); start and stop print the state they reached; send
// hands the commands, one argument each, to the service as one text and returns when the
// service has taken it.
int serviceCommand(Context& context) {
    const QStringList& arguments = context.arguments();
    const QString action = arguments.value(0);
    const bool send = action == QLatin1String("send") && arguments.size() >= 2;
    if (!send &&
        (arguments.size() != 1 || !QStringList{"status", "start", "stop"}.contains(action))) {
        return kUsage;
    }
    auto* machine = context.machine();
    if (machine == nullptr) {
        return kFailed;
    }
    auto& platform = machine->platform();
    if (action == QLatin1String("status")) {
        Context::out(stateWord(service::productServiceState(platform)));
        return kOk;
    }
    if (action == QLatin1String("start")) {
        return reportControl(platform, service::startProductService(platform));
    }
    if (action == QLatin1String("stop")) {
        return reportControl(platform, service::stopProductService(platform));
    }
    return withProgram(context, {false, true, {}}, [&](ConsoleProgram& console) {
        // A text that could not be handed over has been told on standard error by the channel.
        if (!console.program.channel.SendToService(
                state::servicecommand::commandText(arguments.mid(1)))) {
            return kFailed;
        }
        Context::out(QStringLiteral("taken"));
        return kOk;
    });
}

}  // namespace cli
