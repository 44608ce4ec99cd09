#include <gtest/gtest.h>

#include "shell/EntryFolders.h"
#include "support/TestMachine.h"

namespace {

TEST(GetParentFolder, DropsElementsAndEndsInBackslash) {
    EXPECT_EQ(shell::GetParentFolder("C:\\A\\B", 1), "C:\\A\\");
    EXPECT_EQ(shell::GetParentFolder("C:\\A\\B", 2), "C:\\");
    EXPECT_EQ(shell::GetParentFolder("C:\\A\\B\\", 1), "C:\\A\\B\\");
    EXPECT_EQ(shell::GetParentFolder("C:", 1), "\\");
}

class EntryFoldersTest : public ::testing::Test {
protected:
    shell::ProcessState compute(bool production) {
        shell::ProcessState state;
        state.production = production;
        auto& platform = machine.platform();
        shell::ComputeEntryFolders(state, "C:\\Program Files\\Tallowick", platform.files,
                                   platform.codePage);
        return state;
    }
    testing_support::TestMachine machine;
};

TEST_F(EntryFoldersTest, FoldersBesideTheProgram) {
    machine.platform().files.MkDir("C:\\Program Files\\Tallowick");
    machine.platform().files.MkDir("C:\\Program Files\\Tallowick\\HTML Screens");
    const auto state = compute(true);
    EXPECT_EQ(state.parentFolder, "C:\\Program Files\\");
    EXPECT_EQ(state.programLocalizedFolder, "C:\\Program Files\\Tallowick\\localized\\");
    EXPECT_EQ(state.parentLocalizedFolder, "C:\\Program Files\\localized\\");
    EXPECT_EQ(state.htmlFolder, "C:\\Program Files\\Tallowick\\HTML Screens\\");
    EXPECT_EQ(state.coSellFolder,
              "C:\\Program Files\\Tallowick\\HTML Screens\\CoSell\\localized\\");
}

// A developer's tree keeps the screens one level up: used when they are missing beside
// the program, and always without production.
TEST_F(EntryFoldersTest, ParentScreensWhenMissingOrNotProduction) {
    EXPECT_EQ(compute(true).htmlFolder, "C:\\Program Files\\HTML Screens\\");
    machine.platform().files.MkDir("C:\\Program Files\\Tallowick");
    machine.platform().files.MkDir("C:\\Program Files\\Tallowick\\HTML Screens");
    EXPECT_EQ(compute(false).htmlFolder, "C:\\Program Files\\HTML Screens\\");
}

}  // namespace
