// tallowick-setup run as a process, the way scripts run it.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "platform/portable/Machine.h"
#include "state/ProductNames.h"
#include "state/modRegistry.h"
#include "support/ProgramRun.h"

namespace {

using SetupRun = testing_support::ProgramRun;

class SetupCliTest : public ::testing::Test {
protected:
    SetupRun setup(const QStringList& arguments) {
        return testing_support::runProgram(TALLOWICK_SETUP, arguments, machineFolder);
    }
    QString productValue(const QString& key, const QString& name) {
        const auto machine =
            platform::portable::Machine::open(machineFolder.toStdString(), nullptr);
        return machine ? state::modRegistry(machine->platform()).GetStringValue(key, name)
                       : QString();
    }

    QTemporaryDir dir;
    QString machineFolder = dir.path() + "/machine";
    QString dataFolder = dir.path() + "/data";
};

TEST_F(SetupCliTest, BadUsageExitsWithTwoAndDoesNothing) {
    for (const QStringList& arguments :
         {QStringList{}, QStringList{"install", "--value", "NoEquals"}}) {
        const SetupRun run = setup(arguments);
        EXPECT_EQ(run.status, 2) << arguments.join(' ').toStdString();
        EXPECT_TRUE(run.err.startsWith("usage: tallowick-setup"));
        EXPECT_EQ(run.err.count('\n'), 1);
        EXPECT_TRUE(run.out.isEmpty());
    }
    EXPECT_FALSE(QDir(machineFolder).exists());
}

TEST_F(SetupCliTest, InstallLaysOutTheMachineAndUninstallTakesTheProductOff) {
    ASSERT_TRUE(QDir().mkpath(dataFolder + "/lang"));
    QFile language(dataFolder + "/lang/English.lng");
    ASSERT_TRUE(language.open(QIODevice::WriteOnly));
    language.write("en");
    language.close();

    const QStringList install{"install",  "--no-start", "--data",
                              dataFolder, "--value",    "Installer=Web"};
    const SetupRun first = setup(install);
    ASSERT_EQ(first.status, 0) << first.err.toStdString();
    const QStringList lines = first.out.split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 8) << first.out.toStdString();
    EXPECT_EQ(lines.first(), "created machine " + machineFolder);
    EXPECT_EQ(lines[1], "copied 1 data files to C:\\Program Files\\Tallowick");
    EXPECT_EQ(productValue(state::product::key(), "Installer"), "Web");
    EXPECT_EQ(productValue(state::product::uninstallKey(), "DisplayVersion"), TALLOWICK_VERSION);

    // --machine wins over the environment.
    const QString chosen = machineFolder;
    machineFolder = dir.path() + "/elsewhere";
    const SetupRun second = setup(QStringList(install) << "--machine" << chosen);
    ASSERT_EQ(second.status, 0) << second.err.toStdString();
    EXPECT_TRUE(second.out.startsWith("opened machine " + chosen + "\n"));
    EXPECT_FALSE(QDir(machineFolder).exists());

    machineFolder = chosen;
    const SetupRun removed = setup({"uninstall"});
    ASSERT_EQ(removed.status, 0) << removed.err.toStdString();
    EXPECT_TRUE(removed.out.contains("removed product key " + state::product::key() + "\n"));
    EXPECT_TRUE(removed.out.contains("removed folder C:\\Program Files\\Tallowick\n"));
    const SetupRun again = setup({"uninstall"});
    EXPECT_EQ(again.status, 0);
    EXPECT_EQ(again.out, "Tallowick is not installed\n");
}

TEST_F(SetupCliTest, UninstallOnAFolderThatIsNoMachineFails) {
    const SetupRun run = setup({"uninstall"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.err.contains("not a machine folder")) << run.err.toStdString();
    EXPECT_FALSE(QDir(machineFolder).exists());
}

}  // namespace
