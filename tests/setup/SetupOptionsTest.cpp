#include <gtest/gtest.h>

#include "setup/SetupOptions.h"

namespace {

using setup::SetupOptions;

SetupOptions defaults() {
    SetupOptions options;
    options.machineFolder = "/default/machine";
    options.dataFolder = "/default/data";
    options.programsFolder = "/default/bin";
    return options;
}

TEST(SetupOptionsTest, InstallTakesEveryOptionAndKeepsTheDefaultsOfTheOthers) {
    const auto plain = setup::parseSetupOptions({"install"}, defaults());
    ASSERT_TRUE(plain);
    EXPECT_EQ(plain->action, SetupOptions::Action::Install);
    EXPECT_EQ(plain->machineFolder, "/default/machine");
    EXPECT_EQ(plain->dataFolder, "/default/data");
    EXPECT_TRUE(plain->start);
    EXPECT_TRUE(plain->values.empty());

    const auto full = setup::parseSetupOptions(
        {"install", "--value", "Installer=Web", "--machine", "/m", "--no-start", "--data", "/d",
         "--value", "Trigger=a=b", "--value", "Wait="},
        defaults());
    ASSERT_TRUE(full);
    EXPECT_EQ(full->machineFolder, "/m");
    EXPECT_EQ(full->dataFolder, "/d");
    EXPECT_EQ(full->programsFolder, "/default/bin");
    EXPECT_FALSE(full->start);
    // Split at the first "=": the data may hold more of them, or be empty.
    const std::vector<std::pair<QString, QString>> values{
        {"Installer", "Web"}, {"Trigger", "a=b"}, {"Wait", ""}};
    EXPECT_EQ(full->values, values);
}

TEST(SetupOptionsTest, UninstallTakesOnlyTheMachine) {
    const auto options = setup::parseSetupOptions({"uninstall", "--machine", "/m"}, defaults());
    ASSERT_TRUE(options);
    EXPECT_EQ(options->action, SetupOptions::Action::Uninstall);
    EXPECT_EQ(options->machineFolder, "/m");
}

TEST(SetupOptionsTest, ArgumentsThatDoNotFitAreRefused) {
    for (const QStringList& arguments :
         {QStringList{}, QStringList{"repair"}, QStringList{"install", "--value", "NoEquals"},
          QStringList{"install", "--value", "=data"}, QStringList{"install", "--value"},
          QStringList{"install", "--machine"}, QStringList{"install", "--start"},
          QStringList{"install", "extra"}, QStringList{"uninstall", "--data", "/d"},
          QStringList{"uninstall", "--no-start"}, QStringList{"uninstall", "--value", "A=b"}}) {
        EXPECT_FALSE(setup::parseSetupOptions(arguments, defaults()))
            << arguments.join(' ').toStdString();
    }
}

}  // namespace
