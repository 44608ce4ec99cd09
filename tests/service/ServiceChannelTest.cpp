// The channel end to end: the client in this process, the real service and starter as
// processes of a machine in a temporary folder.
#include <gtest/gtest.h>

#include <QTimer>

#include <csignal>
#include <filesystem>
#include <memory>

#include "core/AnsiText.h"
#include "platform/portable/ServiceLock.h"
#include "service/ServiceControl.h"
#include "state/ProductNames.h"
#include "state/ServiceCommands.h"
#include "state/modServiceCom.h"
#include "support/ProgramRun.h"
#include "support/RecordingMessageBox.h"
#include "support/ServiceMachine.h"
#include "support/TestMachine.h"

namespace {

using state::product::key;

const QString kDataFolder = "C:\\ProgramData\\Tallowick\\";

// Records each call; what it does then is up to the test, as the start-up forms would start
// the service or end the process.
class RecordingGate final : public state::ServiceGate {
public:
    void ServiceRecovery(bool found) override {
        calls.push_back(found);
        if (onRecovery) {
            onRecovery();
        }
    }
    std::vector<bool> calls;
    std::function<void()> onRecovery;
};

class ServiceChannelTest : public ::testing::Test {
protected:
    ServiceChannelTest() { folders.UpdateFileLocations(channel); }
    ~ServiceChannelTest() override { service::stopProductService(platform); }

    // Runs Starter.exe as the service handler form would; true when it started the service.
    bool runStarter() {
        return testing_support::runProgram(STARTER_PROGRAM, {},
                                           QString::fromStdString(machine.folder().string()))
                   .status == 0;
    }
    bool commandFileExists() {
        return platform.files.FileExists(
            core::toAnsi(platform.codePage, kDataFolder + state::product::commandFile()));
    }
    QStringList serviceLog() { return machine.serviceLog(); }
    QString value(const QString& keyPath, const QString& name) {
        return registry.GetStringValue(keyPath, name);
    }

    testing_support::RecordingMessageBox box;
    testing_support::ServiceMachine machine{&box};
    platform::Platform& platform = machine.platform();
    state::modRegistry registry{platform};
    state::DataFolders folders{platform, "C:\\Program Files\\Tallowick", "Tallowick"};
    RecordingGate gate;
    state::modServiceCom channel{platform, registry, folders, gate};
};

// What SaveLanguage relies on: when the send returns, the value reads back. A delete and a set
// of one value travel as one text, delete first.
TEST_F(ServiceChannelTest, ASendIsTakenBeforeItReturns) {
    using namespace state::servicecommand;
    ASSERT_TRUE(runStarter());
    channel.SendToService(
        commandText({RegCreateKey(key()), RegSetString(key(), "Language", "de")}));
    EXPECT_EQ(value(key(), "Language"), "de");
    channel.SendToService(
        commandText({RegDeleteVal(key(), "Language"), RegSetString(key(), "Language", "fr")}));
    EXPECT_EQ(value(key(), "Language"), "fr");
    EXPECT_FALSE(commandFileExists());
    EXPECT_TRUE(gate.calls.empty());

    ASSERT_EQ(service::stopProductService(platform), platform::status::Success);
    EXPECT_EQ(serviceLog().value(0).section(' ', 2), "started");
    EXPECT_EQ(serviceLog().constLast().section(' ', 2), "stopped");
}

// A timer that sends during the wait of another send goes second: its own first wait holds
// until the service has taken the outer text.
TEST_F(ServiceChannelTest, ANestedSendKeepsTheOrder) {
    ASSERT_TRUE(runStarter());
    channel.SendToService("RegCreateKey|" + key());
    bool innerDone = false;
    QTimer::singleShot(0, [&] {
        channel.SendToService("RegSetString|" + key() + "|Order|inner");
        innerDone = true;
    });
    channel.SendToService("RegSetString|" + key() + "|Order|outer\r\nRegSetString|" + key() +
                          "|OuterOnly|1");
    EXPECT_TRUE(innerDone);
    EXPECT_EQ(value(key(), "Order"), "inner");
    EXPECT_EQ(value(key(), "OuterOnly"), "1");
}

// A service killed outright leaves its command file behind; the next send finds the service
// stopped, the recovery has Starter start it, and the new service takes the leftover first.
TEST_F(ServiceChannelTest, AKilledServiceIsStartedAgainAndTakesTheLeftover) {
    ASSERT_TRUE(runStarter());
    channel.SendToService("RegCreateKey|" + key());
    const auto lock = platform::portable::ServiceLock::file(machine.folder(), "Tallowick Service");
    const auto pid = platform::portable::ServiceLock::holder(lock);
    ASSERT_TRUE(pid);
    ASSERT_EQ(::kill(*pid, SIGKILL), 0);
    for (int i = 0; i < 500 && platform::portable::ServiceLock::held(lock); ++i) {
        platform.clock.Sleep(10);
    }
    ASSERT_EQ(service::productServiceState(platform), service::ServiceState::Stopped);

    channel.WriteServiceFile(
        kDataFolder + state::product::commandFile(),
        "RegSetString|" + key() + "|Step|leftover\r\nRegSetString|" + key() + "|Leftover|1");
    gate.onRecovery = [this] { ASSERT_TRUE(runStarter()); };
    channel.SendToService("RegSetString|" + key() + "|Step|new");
    EXPECT_EQ(gate.calls, std::vector<bool>{true});
    EXPECT_EQ(value(key(), "Leftover"), "1");
    EXPECT_EQ(value(key(), "Step"), "new");
}

// The service takes nothing outside what the product needs; each refusal is one line of its
// log and the rest of the text is still carried out. A file too large is refused whole.
TEST_F(ServiceChannelTest, RefusalsAreLoggedAndChangeNothing) {
    ASSERT_TRUE(runStarter());
    machine.placeFile("C:\\Windows\\win.ini", "[fonts]\r\n");
    machine.placeFile("C:\\ProgramData\\Tallowick\\Settings\\Old.txt", "x");
    // One refusal of each kind; which commands the policy takes is its own tests' affair.
    const QStringList refused = {
        "RegSetString|HKEY_LOCAL_MACHINE\\Software\\Other|a|b",
        "Kill|C:\\ProgramData\\Tallowick\\..\\..\\Windows\\win.ini",
        "FsoDeleteFolder|C:\\Windows|True",
    };
    using namespace state::servicecommand;
    channel.SendToService(
        commandText(refused + QStringList{RegCreateKey(key()), RegSetString(key(), "Good", "1"),
                                          Kill("C:\\ProgramData\\Tallowick\\Settings\\Old.txt")}));
    EXPECT_EQ(value("HKEY_LOCAL_MACHINE\\Software\\Other", "a"), "Error");
    EXPECT_TRUE(platform.files.FileExists("C:\\Windows\\win.ini"));
    EXPECT_FALSE(platform.files.FileExists("C:\\ProgramData\\Tallowick\\Settings\\Old.txt"));
    EXPECT_EQ(value(key(), "Good"), "1");

    const QStringList log = serviceLog().filter(" refused: ");
    ASSERT_EQ(log.size(), refused.size());
    for (qsizetype i = 0; i < refused.size(); ++i) {
        EXPECT_TRUE(log[i].endsWith(": " + refused[i])) << log[i].toStdString();
    }

    const std::string large =
        "RegSetString|" + key().toStdString() + "|Large|" + std::string(70 * 1024, 'x');
    ASSERT_TRUE(platform.files.writeFile(
        core::toAnsi(platform.codePage, kDataFolder + state::product::commandFile()), large));
    channel.SendToService("RegSetString|" + key() + "|After|1");
    EXPECT_EQ(value(key(), "Large"), "Error");
    EXPECT_EQ(value(key(), "After"), "1");
    EXPECT_TRUE(serviceLog().filter("refused: command file of ").size() == 1);
}

// While an installer works, a send does not ask for the service: it writes and waits, here
// until a timer starts the service. Without Install, a stopped service goes to the recovery;
// a recovery that gives up leaves the service-gone flag, and later sends do nothing.
TEST_F(ServiceChannelTest, InstallSkipsTheCheckAndAGoneServiceTakesNothing) {
    registry.CreateKey(key());
    registry.SetStringValue(key(), "Install", "1");
    QTimer::singleShot(20, [this] { EXPECT_TRUE(runStarter()); });
    channel.SendToService("RegSetString|" + key() + "|During|install");
    EXPECT_TRUE(gate.calls.empty());
    EXPECT_EQ(value(key(), "During"), "install");

    channel.SendToService("RegDeleteVal|" + key() + "|Install");
    ASSERT_EQ(service::stopProductService(platform), platform::status::Success);
    gate.onRecovery = [this] { channel.setServiceGone(true); };
    channel.SendToService("RegSetString|" + key() + "|After|1");
    channel.SendToService("RegSetString|" + key() + "|After|2");
    EXPECT_EQ(gate.calls, std::vector<bool>{true});
    EXPECT_FALSE(commandFileExists());
    EXPECT_EQ(value(key(), "After"), "Error");
}

// The first run of this layout finds no data folder and has the service move the data folders
// of older versions out of the program folder; the service, started before, waits for the
// folder to appear instead of making it.
TEST_F(ServiceChannelTest, TheFirstRunMovesOlderDataThroughTheService) {
    std::filesystem::remove_all(machine.folder() / "drive_c" / "ProgramData" / "Tallowick");
    machine.placeFile("C:\\Program Files\\Tallowick\\Settings\\Tallowick.ini", "[General]\r\n");
    machine.placeFile("C:\\Program Files\\Tallowick\\Item Backups\\a\\b.reg", "x");
    ASSERT_TRUE(runStarter());
    EXPECT_FALSE(platform.files.FolderExists("C:\\ProgramData\\Tallowick"));

    state::DataFolders firstRun(platform, "C:\\Program Files\\Tallowick", "Tallowick");
    firstRun.UpdateFileLocations(channel);
    EXPECT_TRUE(platform.files.FileExists("C:\\ProgramData\\Tallowick\\Settings\\Tallowick.ini"));
    EXPECT_TRUE(platform.files.FileExists("C:\\ProgramData\\Tallowick\\Item Backups\\a\\b.reg"));
    EXPECT_FALSE(platform.files.FolderExists("C:\\Program Files\\Tallowick\\Settings"));
    EXPECT_FALSE(platform.files.FolderExists("C:\\Program Files\\Tallowick\\Item Backups"));
    EXPECT_TRUE(serviceLog().filter("refused").isEmpty());
}

// The command file's folder is there whenever the channel is used: the service makes it at its
// start. A send that can't write the file is told by its handler, not lost in silence.
TEST_F(ServiceChannelTest, TheServiceMakesItsFolderAndAFailedWriteIsTold) {
    const auto serviceFolder =
        machine.folder() / "drive_c" / "ProgramData" / "Tallowick" / "Service";
    std::filesystem::remove_all(serviceFolder);
    ASSERT_TRUE(runStarter());
    EXPECT_TRUE(platform.files.FolderExists("C:\\ProgramData\\Tallowick\\Service"));
    EXPECT_TRUE(channel.SendToService("RegCreateKey|" + key()));

    std::filesystem::remove_all(serviceFolder);
    EXPECT_FALSE(channel.SendToService("RegSetString|" + key() + "|Lost|1"));
    ASSERT_EQ(box.shown.size(), 1u);
    EXPECT_EQ(box.shown[0].text,
              "Error 76 (Path not found) in procedure SendToService at 0 of Module modServiceCom");
    EXPECT_EQ(box.shown[0].caption, "Tallowick");
}

// The program knows its service only when both the name and the display name are
// "Tallowick Service"; one that runs under another display name counts as not installed.
TEST_F(ServiceChannelTest, TheServiceIsKnownByBothItsNames) {
    bool found = false;
    EXPECT_FALSE(channel.EnumSystemServices(platform::serviceenum::All, found));
    EXPECT_TRUE(found);
    ASSERT_TRUE(runStarter());
    found = false;
    EXPECT_TRUE(channel.EnumSystemServices(platform::serviceenum::All, found));
    EXPECT_TRUE(found);

    registry.SetStringValue(state::product::servicesKey(), "DisplayName", "Tallowick");
    found = false;
    EXPECT_FALSE(channel.EnumSystemServices(platform::serviceenum::All, found));
    EXPECT_FALSE(found);
}

}  // namespace
