#pragma once
#include <QString>

// The settings file's sections and keys, the defaults their readers pass, and the values of
// the product's registry key. Each reader passes its own default: where two readers of one key
// pass different ones, both are named here and both stay.
namespace state::setting {

struct Key {
    const char* section;
    const char* name;
};

// Section General; the check boxes chkProgramSettings(0..9) by index.
inline constexpr Key LaunchMinimized{"General", "LaunchMinimized"};
inline constexpr Key PlaySoundWhenDone{"General", "PlaySoundWhenDone"};
inline constexpr Key ShowMinimizeReminder{"General", "ShowMinimizeReminder"};
inline constexpr Key InternetConnectionReminder{"General", "InternetConnectionReminder"};
inline constexpr Key LogAllActivity{"General", "LogAllActivity"};
inline constexpr Key ClearLargeLogfile{"General", "ClearLargeLogfile"};
inline constexpr Key ShowPrintReport{"General", "ShowPrintReport"};
inline constexpr Key ShowUpdateReminder{"General", "ShowUpdateReminder"};
inline constexpr Key ScanOnLoad{"General", "ScanOnLoad"};
inline constexpr Key BrenmoorControlCenter{"General", "BrenmoorControlCenter"};
inline constexpr Key ProgramSettings[] = {
    LaunchMinimized, PlaySoundWhenDone,    ShowMinimizeReminder, InternetConnectionReminder,
    LogAllActivity,  ClearLargeLogfile,    ShowPrintReport,      ShowUpdateReminder,
    ScanOnLoad,      BrenmoorControlCenter};
// The defaults the settings page passes for those boxes: all on but ScanOnLoad.
inline constexpr const char* ProgramSettingDefaults[] = {"1", "1", "1", "1", "1",
                                                         "1", "1", "1", "0", "1"};
inline constexpr Key BrenmoorCCDate{"General", "BrenmoorCCDate"};
inline constexpr Key MaximumLogSize{"General", "MaximumLogSize"};
inline constexpr Key RunOnStartup{"General", "RunOnStartup"};
inline constexpr Key LastRunBy{"General", "LastRunBy"};

// Section ScanInfo; resetting the statistics writes exactly their defaults.
inline constexpr Key LastScan{"ScanInfo", "LastScan"};
inline constexpr Key NumberOfScans{"ScanInfo", "NumberOfScans"};
inline constexpr Key UpdatesAvailable{"ScanInfo", "UpdatesAvailable"};

// Section Scheduler.
inline constexpr Key SchedulerActivate{"Scheduler", "Activate"};
inline constexpr Key SchedulerAction{"Scheduler", "Action"};
inline constexpr Key Every{"Scheduler", "Every"};
inline constexpr Key Interval{"Scheduler", "Interval"};
inline constexpr Key DayOfWeek{"Scheduler", "DayOfWeek"};
inline constexpr Key DayOfMonth{"Scheduler", "DayOfMonth"};
inline constexpr Key RunAt{"Scheduler", "RunAt"};
inline constexpr Key ScheduledDate{"Scheduler", "ScheduledDate"};
inline constexpr Key LastScanDate{"Scheduler", "LastScanDate"};
inline constexpr Key LastScanTime{"Scheduler", "LastScanTime"};
inline constexpr Key NextScanDate{"Scheduler", "NextScanDate"};
inline constexpr Key DelayScan{"Scheduler", "DelayScan"};

// Section Updates, UpdatesServer, RunTime.
inline constexpr Key UpdatesActivate{"Updates", "Activate"};
inline constexpr Key NextUpdate{"Updates", "NextUpdate"};
inline constexpr Key UpdatesInterval{"Updates", "Interval"};
inline constexpr Key UEC{"Updates", "UEC"};
inline constexpr Key UID{"UpdatesServer", "UID"};
inline constexpr Key RunTimeStart{"RunTime", "Start"};

// Defaults as their readers pass them.
inline constexpr const char* On = "1";
inline constexpr const char* Off = "0";
inline constexpr const char* BrenmoorCCDateNone = ".:none:.";
inline constexpr const char* MaximumLogSizeDefault = "2";
inline constexpr const char* LastScanNone = " ";
inline constexpr const char* ZeroCount = "0";
// The navigation's test for the control centre passes 0 where the settings page passes 1.
inline constexpr const char* BrenmoorControlCenterInNavigation = Off;
// The settings page and the next-scan computation pass 11 AM; the scheduler's due test 1 AM.
inline constexpr const char* RunAtOnSettingsPage = "11:00:00 AM";
inline constexpr const char* RunAtInDueTest = "1:00:00 AM";
inline constexpr const char* ScheduledDateDefault = "1/1/2015";
inline constexpr const char* DayDefault = "1";

}  // namespace state::setting

// The values under the product's registry key.
namespace state::productvalue {
inline constexpr const char* Language = "Language";
inline constexpr const char* Install = "Install";
inline constexpr const char* Uninstall = "Uninstall";
inline constexpr const char* Installer = "Installer";
inline constexpr const char* MainInstallerName = "MainInstallerName";
inline constexpr const char* InstallerExe = "InstallerExe";
inline constexpr const char* AID = "AID";
inline constexpr const char* PID = "PID";
inline constexpr const char* RefApp = "RefApp";
inline constexpr const char* RefInst = "RefInst";
inline constexpr const char* Trigger = "Trigger";
inline constexpr const char* Wait = "Wait";
inline constexpr const char* FreezeDone = "FreezeDone";
inline constexpr const char* InstallDone = "InstallDone";
inline constexpr const char* FreezeOverride = "FreezeOverride";
inline constexpr const char* InstallDate = "InstallDate";
inline constexpr const char* bVersion = "bVersion";
inline constexpr const char* CoBundle = "CoBundle";
inline constexpr const char* ForcedScan = "ForcedScan";
inline constexpr const char* SilentScan = "SilentScan";
inline constexpr const char* WakeUp = "WakeUp";
inline constexpr const char* UserEmail = "UserEmail";
inline constexpr const char* UserFirstEmail = "UserFirstEmail";
inline constexpr const char* UserFirstName = "UserFirstName";
inline constexpr const char* UserFullName = "UserFullName";
inline constexpr const char* ItemCount = "ItemCount";
inline constexpr const char* ReminderLetter = "ReminderLetter";
inline constexpr const char* ReminderLetterDate = "ReminderLetterDate";
}  // namespace state::productvalue
