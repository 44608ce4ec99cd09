#pragma once

// The usage events reported to the maker's site, and the registry values that let some of
// them go out only once per installation. The numbers are written and never read back.
namespace web::trackingevent {
inline constexpr const char* ScanStarted = "Scan_Started";
inline constexpr const char* ScanFinished = "Scan_Finished";
inline constexpr const char* ScanCancelled = "Scan_Cancelled";
inline constexpr const char* MinimizeMsgboxDisplayed = "Minimize_Msgbox_Displayed";
inline constexpr const char* PrintMsgBoxDisplayed = "Print_MsgBox_Displayed";
inline constexpr const char* PrintMsgBoxAccepted = "Print_MsgBox_Accepted";
inline constexpr const char* PrintMsgBoxDeclined = "Print_MsgBox_Declined";
inline constexpr const char* Print = "Print";
inline constexpr const char* AdvisorLetter1Displayed = "Advisor_Letter_1_Displayed";
inline constexpr const char* UpdateDisplayed = "Update_Displayed";
inline constexpr const char* UpdateAccepted = "Update_Accepted";
inline constexpr const char* UpdateDeclined = "Update_Declined";
inline constexpr const char* InstallUpdateStarted = "Install_Update_Started";
inline constexpr const char* InstallUpdateCancelled = "Install_Update_Cancelled";
inline constexpr const char* DownloadUpdateCancelled = "Download_Update_Cancelled";
inline constexpr const char* WelcomeNewUser = "Welcome_New_User";
inline constexpr const char* NewsletterDisplayed = "Newsletter_Displayed";
inline constexpr const char* NewsletterAccepted = "Newsletter_Accepted";
inline constexpr const char* NewsletterDeclined = "Newsletter_Declined";
}  // namespace web::trackingevent

namespace web {

struct TrackingGuard {
    const char* value;
    const char* number;
};

namespace trackingguard {
inline constexpr TrackingGuard ScanTr1{"ScanTr1", "12"};  // first scan started
inline constexpr TrackingGuard ScanTr{"ScanTr", "12"};    // first scan finished or cancelled
inline constexpr TrackingGuard TrayTr{"TrayTr", "3"};
inline constexpr TrackingGuard PrintTr{"PrintTr", "7"};
inline constexpr TrackingGuard AdvisorTr{"AdvisorTr", "5"};
}  // namespace trackingguard

}  // namespace web
