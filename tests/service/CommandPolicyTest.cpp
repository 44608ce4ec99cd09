#include <gtest/gtest.h>

#include <QStringList>

#include "service/CommandPolicy.h"
#include "service/WindowsPath.h"

namespace {

using service::CommandPolicy;

const service::ServiceScope kScope{"C:\\ProgramData\\Tallowick\\",
                                   "C:\\Program Files\\Tallowick",
                                   {"C:\\Users\\User\\AppData\\Local\\Temp", "D:\\Tmp"}};

QString refusal(const QString& line) {
    return CommandPolicy(kScope).refusal(line.split(u'|'));
}

// What the program sends in its life: every one of these must go through.
TEST(CommandPolicy, TakesWhatTheProductSends) {
    for (const char* line :
         {"RegSetString|HKEY_LOCAL_MACHINE\\Software\\Tallowick|ForcedScan|1",
          "RegDeleteVal|HKEY_LOCAL_MACHINE\\SOFTWARE\\tallowick|SilentScan",
          "RegCreateKey|HKEY_LOCAL_MACHINE\\Software\\Tallowick",
          "RegCreateKey|HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Run",
          "RegSetString|HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Run|"
          "Tallowick|\"C:\\Program Files\\Tallowick\\Tallo-wick.Exe\" /boot",
          "RegDeleteVal|HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Run|"
          "Tallowick",
          "RegDeleteVal|HKEY_LOCAL_MACHINE\\Software\\Quillfen|BundleAppLocation",
          "RegDeleteVal|HKEY_LOCAL_MACHINE\\Software\\Sablewind|CrossAppLocation4",
          "Kill|C:\\ProgramData\\Tallowick\\Settings\\Tallowick.ini",
          "Kill|c:\\programdata\\tallowick\\Tallowick Log.txt",
          "Kill|C:\\Users\\User\\AppData\\Local\\Temp\\Tallowick Setup.exe", "Kill|D:/Tmp/x.exe",
          "FsoCopyFolder|C:\\Program Files\\Tallowick\\Item Backups|"
          "C:\\ProgramData\\Tallowick\\Item Backups|False",
          "FsoDeleteFolder|C:\\Program Files\\Tallowick\\Settings|True",
          "FsoDeleteFolder|C:\\ProgramData\\Tallowick\\Full Backups\\old|true"}) {
        EXPECT_EQ(refusal(QString::fromUtf8(line)), "") << line;
    }
}

TEST(CommandPolicy, RefusesEverythingElse) {
    for (const char* line :
         {"", "regsetstring|HKEY_LOCAL_MACHINE\\Software\\Tallowick|a|b",
          "Shell|C:\\Windows\\notepad.exe",
          "RegSetString|HKEY_LOCAL_MACHINE\\Software\\Tallowick|a",
          // Data can't carry a "|": it makes a field too many.
          "RegSetString|HKEY_LOCAL_MACHINE\\Software\\Tallowick|UserEmail|a|b",
          "RegCreateKey|HKEY_LOCAL_MACHINE\\Software\\Tallowick|extra",
          "RegSetString|HKEY_CURRENT_USER\\Software\\Tallowick|a|b",
          "RegSetString|HKLM\\Software\\Tallowick|a|b",
          "RegSetString|HKEY_LOCAL_MACHINE\\Software\\Tallowick\\Sub|a|b",
          "RegSetString|HKEY_LOCAL_MACHINE\\Software\\Tallowick\\|a|b",
          "RegSetString|HKEY_LOCAL_MACHINE\\Software\\\\Tallowick|a|b",
          "RegSetString|HKEY_LOCAL_MACHINE\\Software\\Tallowicks|a|b",
          "RegSetString|HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\Services\\x|ImagePath|y",
          "RegSetString|HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Run|"
          "Evil|C:\\evil.exe",
          "RegDeleteVal|HKEY_LOCAL_MACHINE\\Software\\Quillfen|Language",
          "RegCreateKey|HKEY_LOCAL_MACHINE\\Software\\Quillfen",
          "Kill|C:\\Windows\\System32\\config.sys", "Kill|C:\\ProgramData\\Tallowick",
          "Kill|C:\\ProgramData\\Tallowick\\..\\..\\Windows\\win.ini",
          "Kill|C:\\ProgramData\\Tallowick\\.. \\x", "Kill|C:\\ProgramData\\Tallowick\\*.ini",
          "Kill|ProgramData\\Tallowick\\x.ini", "Kill|\\\\server\\share\\x",
          "Kill|C:\\ProgramData\\TallowickOther\\x", "Kill|C:\\Users\\User\\AppData\\Local\\Temp",
          "FsoCopyFolder|C:\\Windows|C:\\ProgramData\\Tallowick\\Windows|False",
          "FsoCopyFolder|C:\\ProgramData\\Tallowick\\Settings|C:\\Windows\\x|False",
          "FsoCopyFolder|C:\\Program Files\\Tallowick\\Settings|"
          "C:\\ProgramData\\Tallowick\\Item Backups|False",
          "FsoCopyFolder|C:\\Program Files\\Tallowick\\Plugins|"
          "C:\\ProgramData\\Tallowick\\Plugins|False",
          "FsoCopyFolder|C:\\ProgramData\\Tallowick\\a|C:\\ProgramData\\Tallowick\\b|Maybe",
          "FsoDeleteFolder|C:\\ProgramData\\Tallowick|True",
          "FsoDeleteFolder|C:\\Program Files\\Tallowick|True",
          "FsoDeleteFolder|C:\\Users\\User\\AppData\\Local\\Temp\\x|True"}) {
        EXPECT_NE(refusal(QString::fromUtf8(line)), "") << line;
    }
}

// Without a data folder the service touches no file at all.
TEST(CommandPolicy, NoDataFolderNoFiles) {
    const CommandPolicy policy({"", "C:\\Program Files\\Tallowick", {}});
    EXPECT_NE(policy.refusal({"Kill", "C:\\x\\y"}), "");
    EXPECT_EQ(policy.refusal({"RegCreateKey", "HKEY_LOCAL_MACHINE\\Software\\Tallowick"}), "");
}

}  // namespace
