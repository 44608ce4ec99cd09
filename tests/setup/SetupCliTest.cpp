// tallowick-setup run as a process, the way scripts run it.
#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "support/ProgramRun.h"

namespace {

using SetupRun = testing_support::ProgramRun;

class SetupCliTest : public ::testing::Test {
protected:
    SetupRun setup(const QStringList& arguments) {
        return testing_support::runProgram(TALLOWICK_SETUP, arguments, machineFolder);
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

// The machine is the environment's unless --machine names another; what an install and an
// uninstall do is the in-process tests' affair.
TEST_F(SetupCliTest, InstallAndUninstallOnTheMachineNamed) {
    const SetupRun first = setup({"install", "--no-start", "--data", dataFolder});
    ASSERT_EQ(first.status, 0) << first.err.toStdString();
    EXPECT_TRUE(first.out.startsWith("created machine " + machineFolder + "\nno data files in " +
                                     dataFolder + "\n"))
        << first.out.toStdString();

    const QString chosen = machineFolder;
    machineFolder = dir.path() + "/elsewhere";
    const SetupRun removed = setup({"uninstall", "--machine", chosen});
    ASSERT_EQ(removed.status, 0) << removed.err.toStdString();
    EXPECT_TRUE(removed.out.contains("removed folder C:\\Program Files\\Tallowick\n"));
    EXPECT_FALSE(QDir(machineFolder).exists());
    EXPECT_EQ(setup({"uninstall", "--machine", chosen}).out, "Tallowick is not installed\n");
}

TEST_F(SetupCliTest, UninstallOnAFolderThatIsNoMachineFails) {
    const SetupRun run = setup({"uninstall"});
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(run.err.contains("not a machine folder")) << run.err.toStdString();
    EXPECT_FALSE(QDir(machineFolder).exists());
}

}  // namespace
