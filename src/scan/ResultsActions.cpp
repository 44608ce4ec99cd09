#include "scan/ResultsActions.h"

#include "core/AnsiText.h"
#include "platform/MessageBox.h"
#include "state/MessageLoop.h"
#include "state/ProductNames.h"
#include "state/SettingNames.h"

namespace scan {

void IgnoreProgram(state::lst& lst, state::ActivityLog& log, const QString& name,
                   const QString& publisher, const QString& path, const QString& version) {
    lst.lstIgnoreListFile << QStringLiteral("   ") + version + u'|' + name + u'|' + publisher +
                                 u'|' + path;
    log.write(QStringLiteral("Program added to Ignore List: ") + name + QStringLiteral(" (") +
              publisher + QStringLiteral(") ") + version + QStringLiteral(", ") + path);
}

ResultsActions::ResultsActions(platform::Platform& platform, state::modSettings& settings,
                               state::ActivityLog& log, const localisation::LanguageText& language,
                               ResultsPageView& view, const state::UniMessageBox& box)
    : platform_(platform),
      settings_(settings),
      log_(log),
      language_(language),
      view_(view),
      box_(box) {}

void ResultsActions::open(const QString& target) {
    platform_.shell.ShellExecuteA(view_.windowHandle(), "Open",
                                  core::toAnsi(platform_.codePage, target), std::string(),
                                  std::string(), platform::showcmd::Maximized);
    state::pumpEvents();
}

void ResultsActions::GetUpdate(const QString& name, const QString& publisher,
                               const QString& address) {
    if (settings_.IsSettingOn(state::setting::ShowUpdateReminder, state::setting::On)) {
        view_.showUpdatePrompt();
    }
    open(address);
    log_.write(QStringLiteral("Grabbing update for: ") + name + QStringLiteral(", ") + publisher +
               QStringLiteral(" on URL: ") + address);
}

void ResultsActions::ReportError(const QString& name, const QString& publisher,
                                 const QString& installed, const QString& available) {
    open(language_.GetStrLocValue(QStringLiteral("strURL_SH_Corporate")) +
         QStringLiteral("/tw/updatesserver/report_error.asp?name=") + name +
         QStringLiteral("&publisher=") + publisher + QStringLiteral("&installedversion=") +
         installed + QStringLiteral("&version=") + available + QStringLiteral("&ve=") +
         state::product::ownVersion());
}

void ResultsActions::ReadMore(const QString& first, const QString& second, const QString& third,
                              const QString& fourth) {
    const QString crlf = QStringLiteral("\r\n");
    box_.UniMsgBox(first + crlf + second + crlf + third + crlf + crlf + fourth,
                   platform::mbstyle::IconInformation);
}

}  // namespace scan
