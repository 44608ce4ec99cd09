#include <gtest/gtest.h>

#include <map>

#include "scan/Discovery.h"
#include "support/RecordingMessageBox.h"
#include "support/TestMachine.h"

namespace {

const QString kHklm = "HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall";
const QString kHkcu = "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall";

class DiscoveryTest : public ::testing::Test {
protected:
    DiscoveryTest() {
        for (state::clsList* list : {&keys, &detected, &ignored}) {
            list->InitList(6, 50);
        }
        control.bInProcess = true;
    }

    // The verdict of every key row, and the accepted programs by name.
    std::map<QString, QString> discover() {
        std::map<QString, QString> verdicts;
        scan::Discovery discovery(machine.platform(), registry, control, words, keys, filter);
        discovery.run([&](const QString& key, const QString& said) { verdicts[key] = said; });
        return verdicts;
    }
    QString column(const QString& name, int subItem) {
        for (int i = 0; i < detected.Count(); ++i) {
            if (detected.SubItemText(i, 3) == name) {
                return subItem == 0 ? detected.ItemText(i) : detected.SubItemText(i, subItem);
            }
        }
        return "<not detected>";
    }

    testing_support::TestMachine machine;
    testing_support::RecordingMessageBox box;
    state::modRegistry registry{machine.platform()};
    scan::ScanControl control;
    scan::StringLookup words = [](const QString& name) {
        return name == "strLoc_TW_UnavailableCapital" ? QString("Unavailable") : QString("None");
    };
    state::clsList keys{box}, detected{box}, ignored{box};
    QStringList log;
    scan::ProgramFilter filter{detected, ignored, log};
};

TEST_F(DiscoveryTest, KeysAreReadWithEveryOddityKept) {
    machine.placeTestData("C:\\App\\app.exe", "zlib1-x64.dll");
    machine.placeTestData("C:\\Lib\\lib.dll", "libwinpthread-1.dll");
    machine.platform().files.MkDir("C:\\Windows\\$NtUninstallKB1$");
    ASSERT_EQ(machine.importReg(R"reg(Windows Registry Editor Version 5.00

[HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Uninstall\Hidden]
"DisplayName"="Hidden"
"Publisher"="Acme"
"DisplayVersion"="1"
"InstallLocation"="C:\\App\\"
"SystemComponent"=dword:00000001

[HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Uninstall\Icon]
"DisplayName"="Icon Index"
"Publisher"="Acme"
"DisplayIcon"="\"C:\\App\\app.exe\",0"
"DisplayVersion"="1/2"
"InstallLocation"="c:\\windows\\$NtUninstallKB1$"
"SystemComponent"=dword:00000000

[HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Uninstall\Brackets]
"DisplayName"="Brackets"
"Publisher"="Beta"
"DisplayVersion"="2.0 (Build 7)"
"DisplayIcon"="C:\\App,x\\app.exe"
"InstallLocation"="C:\\App"

[HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Uninstall\Company]
"DisplayName"="Company"
"DisplayVersion"="3"
"DisplayIcon"="C:\\Lib\\lib.dll"
"UninstallString"="C:\\Lib\\lib.dll"

[HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Uninstall\Arguments]
"DisplayName"="Arguments"
"DisplayVersion"="3"
"DisplayIcon"="C:\\Lib\\lib.dll"
"UninstallString"="C:\\Lib\\lib.dll /S"

[HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Uninstall\Shouting]
"DisplayName"="ERROR"
"Publisher"="Acme"
"DisplayVersion"="1"
"InstallLocation"="C:\\App"

[HKEY_CURRENT_USER\Software\Microsoft\Windows\CurrentVersion\Uninstall\Brackets]
"DisplayName"="Brackets"
"Publisher"="Beta"
"DisplayVersion"="2.1"
"InstallLocation"="C:\\Elsewhere"
)reg"),
              "");
    machine.platform().files.MkDir("C:\\Elsewhere");
    const auto verdicts = discover();

    EXPECT_EQ(verdicts.at(kHklm + "\\Hidden"), "SystemComponent");
    // The icon index goes; a bad version gives way to the fixed product version's two
    // parts; the system update folder is no program folder.
    EXPECT_EQ(verdicts.at(kHklm + "\\Icon"), "accepted");
    EXPECT_EQ(column("Icon Index", 0), "C:\\App\\app.exe");
    EXPECT_EQ(column("Icon Index", 1), "C:\\App");
    EXPECT_EQ(column("Icon Index", 5), "1.2");
    EXPECT_EQ(column("Icon Index", 6), "1.2.13.0");
    // A comma inside the path is cut all the same, and the bracket goes with a blank left.
    EXPECT_EQ(column("Brackets", 0), "");
    EXPECT_EQ(column("Brackets", 1), "C:\\App");
    EXPECT_EQ(column("Brackets", 5), "2.0");
    EXPECT_TRUE(log.filter("Brackets").value(0).contains("(Beta) 2.0 ("));
    // Without a publisher the company name is taken, and only from a command without
    // arguments.
    EXPECT_EQ(column("Company", 4), "MingW-W64 Project. All rights reserved.");
    EXPECT_EQ(verdicts.at(kHklm + "\\Arguments"), "no publisher");
    EXPECT_EQ(verdicts.at(kHklm + "\\Shouting"), "no name");
    // The machine-wide entry was listed first.
    EXPECT_EQ(verdicts.at(kHkcu + "\\Brackets"), "Dupe 3");
}

// Bad values are read as the failure word or as their bytes, and the walk goes on.
TEST_F(DiscoveryTest, BadValuesNeverEndTheWalk) {
    machine.placeFile("C:\\Notes\\notes.txt", "not a program");
    ASSERT_EQ(machine.importReg(R"reg(Windows Registry Editor Version 5.00
[HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Uninstall\Long]
"DisplayName"=")reg" + std::string(300, 'n') +
                                R"reg("
"Publisher"="Acme"
"DisplayVersion"="1"
[HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Uninstall\Binary]
"DisplayName"="Binary"
"Publisher"=hex:00,01
"DisplayVersion"=hex:33,2e,31,00,ff
"DisplayIcon"="C:\\Notes\\notes.txt"
[HKEY_LOCAL_MACHINE\Software\Microsoft\Windows\CurrentVersion\Uninstall\Words]
"DisplayName"="Words"
"Publisher"="error"
"DisplayVersion"="2"
"InstallLocation"="C:\\Notes"
)reg"),
              "");
    const auto verdicts = discover();
    EXPECT_EQ(verdicts.at(kHklm + "\\Long"), "no name");
    // A binary publisher reads up to its first NUL; the icon need not be a program.
    EXPECT_EQ(verdicts.at(kHklm + "\\Binary"), "no publisher");
    // "error" is a missing publisher, and the folder has no version block to ask.
    EXPECT_EQ(verdicts.at(kHklm + "\\Words"), "no publisher");
    EXPECT_EQ(verdicts.size(), 5u);
}

// A real regedit export gives its candidates; a stop ends the walk before the first.
TEST_F(DiscoveryTest, RealRegeditExportAndStop) {
    ASSERT_EQ(machine.importReg(testing_support::readTestData("uninstall-sample.reg")), "");
    machine.platform().files.MkDir("C:\\Program Files\\7-Zip");
    EXPECT_EQ(discover().at(kHklm + "\\7-Zip"), "accepted");
    EXPECT_EQ(column("7-Zip 24.08 (x64)", 4), "Igor Pavlov");
    control.pumpEvents = [this] { control.bInProcess = false; };
    EXPECT_TRUE(discover().empty());
}

}  // namespace
