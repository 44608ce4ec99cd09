#include "state/RuntimeErrors.h"

#include "localisation/BasicErrors.h"
#include "state/SystemDateFormats.h"
#include "state/UniMessageBox.h"

namespace state {

RuntimeError BasicFault(int number) {
    RuntimeError fault;
    fault.number = number;
    fault.description = localisation::BasicErrorDescription(number);
    return fault;
}

QString HandlerErrorLine(const RuntimeError& error, const QString& procedure, CodeUnit unit,
                         const QString& unitName) {
    return QStringLiteral("Error %1 (%2) in procedure %3 at %4 of %5 %6")
        .arg(QString::number(error.number), error.description, procedure,
             QString::number(error.line),
             unit == CodeUnit::Form ? QStringLiteral("Form") : QStringLiteral("Module"), unitName);
}

RuntimeErrors::RuntimeErrors(platform::Platform& platform, modSettings& settings)
    : platform_(platform), settings_(settings) {}

void RuntimeErrors::ReportRuntimeError(RuntimeError& error, const QString& procedureName,
                                       const QString& text, QString* message) {
    QString composed = procedureName + QStringLiteral(": ") + error.description +
                       QStringLiteral(" (") + error.source + QStringLiteral(", ") +
                       QString::number(error.number) + QStringLiteral(") Error Line: ") +
                       QString::number(error.line);
    composed.remove(u'\r').replace(u'\n', u' ');
    if (text.isEmpty() && message != nullptr) {
        *message = composed;
    }

    QString since = NowText(platform_);
    if (!settings_.settingsPath().isEmpty()) {
        since = settings_.ReadSetting(setting::RunTimeStart, QString());
        if (since.isEmpty()) {
            since = NowText(platform_);
            settings_.WriteSetting(setting::RunTimeStart, since);
        }
    }
    const QString state = text.isEmpty() ? QStringLiteral("State Unknown") : text;

    const auto verbose = platform_.environment.GetEnvironmentVariableA("TWVerbose");
    if (debugMode_ || (verbose && *verbose == "1")) {
        // The shared code keeps the family's first product as the title.
        UniMessageBox(platform_.messageBox, QStringLiteral("Quillfen"))
            .UniMsgBox(QStringLiteral("ERROR: ") + composed + QStringLiteral(" - ") + state +
                           QStringLiteral(" - ") + since,
                       platform::mbstyle::Ok, QStringLiteral("Quillfen"));
    }
    error = RuntimeError{};
}

}  // namespace state
