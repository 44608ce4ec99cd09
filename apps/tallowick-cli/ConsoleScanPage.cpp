#include "ConsoleScanPage.h"

#include <QTimer>

#include "Cli.h"
#include "localisation/FormText.h"

namespace cli {

namespace {

QString oneLine(QString text) {
    return text.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
}

}  // namespace

void ConsoleScanPage::interrupt() {
    if (!stopEnabled_) {
        stopPending_ = true;
        Context::err(
            QStringLiteral("Stop is not available while the programs are detected; "
                           "the scan stops after the first lookup"));
        return;
    }
    stopPending_ = false;
    if (stop) {
        stop();
    }
}

void ConsoleScanPage::scanPhase(int phase) {
    const char* names[] = {"preparation", "detection", "lookups", "closing"};
    if (phase >= 1 && phase <= 4) {
        Context::out(QStringLiteral("phase\t") + QString::number(phase) + u'\t' +
                     QLatin1String(names[phase - 1]));
    }
}

void ConsoleScanPage::setProgressMaximum(int maximum) {
    programs_ = maximum;
}

void ConsoleScanPage::showProgress(int value, int maximum) {
    Context::out(QStringLiteral("program\t") + QString::number(value) + u'\t' +
                 QString::number(maximum));
}

void ConsoleScanPage::enableStop(bool enabled) {
    stopEnabled_ = enabled;
    if (enabled && stopPending_) {
        // As a click that waited for the button: it comes at the next turn of the loop.
        QTimer::singleShot(0, [this] { interrupt(); });
    }
}

void ConsoleScanPage::addResult(const scan::ScanResult& result) {
    Context::out(QStringList{QStringLiteral("update"), result.name, result.publisher,
                             result.installedText, result.availableText, result.downloadAddress}
                     .join(u'\t'));
}

void ConsoleScanPage::showNotice(const QString& formName) {
    notice_ = formName;
    Context::out(QStringList{QStringLiteral("notice"), formName,
                             oneLine(localisation::FormStatementValue(
                                 language_, formName, formName + QStringLiteral(".Caption"))),
                             oneLine(localisation::FormStatementValue(
                                 language_, formName, QStringLiteral("lblMessage.Caption")))}
                     .join(u'\t'));
}

void ConsoleScanPage::showEmptyLayout() {
    Context::out(QStringLiteral("empty\t") +
                 oneLine(localisation::FormStatementValue(language_, QStringLiteral("frmMain"),
                                                          QStringLiteral("lblResults_2.Caption"))));
}

}  // namespace cli
