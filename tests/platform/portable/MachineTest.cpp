#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <fstream>
#include <sstream>

#include "platform/portable/Machine.h"
#include "support/TestMachine.h"

namespace {

namespace fs = std::filesystem;
using platform::portable::Machine;
using platform::portable::MachineFacts;

std::string slurp(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

void spit(const fs::path& file, const std::string& text) {
    std::ofstream(file, std::ios::binary) << text;
}

TEST(Machine, LaysOutAWindowsComputer) {
    testing_support::TestMachine machine;
    const fs::path folder = machine.folder();
    EXPECT_TRUE(fs::is_directory(folder / "drive_c" / "Program Files"));
    EXPECT_TRUE(fs::is_directory(folder / "drive_c" / "Users" / "User" / "AppData" / "Roaming"));
    EXPECT_TRUE(fs::is_directory(folder / "run"));
    EXPECT_TRUE(fs::exists(folder / "registry" / "HKEY_LOCAL_MACHINE.reg"));
    platform::Platform& windows = machine.platform();
    EXPECT_EQ(windows.codePage.GetACP(), 1252u);
    EXPECT_EQ(windows.environment.GetEnvironmentVariableA("ProgramFiles"), "C:\\Program Files");
    EXPECT_TRUE(windows.files.FolderExists("C:\\Windows\\System32\\..\\Fonts"));

    std::string problems;
    const auto reopened = Machine::open(folder, &problems);
    ASSERT_NE(reopened, nullptr);
    EXPECT_EQ(problems, "");
    EXPECT_EQ(reopened->facts().computerName, "TALLOWICK-PC");
    EXPECT_EQ(reopened->facts().fonts, MachineFacts{}.fonts);
    EXPECT_EQ(reopened->facts().environment.at("TEMP"), "C:\\Users\\User\\AppData\\Local\\Temp");
}

// Nobody answers the console's box: it tells on standard error and answers 0, no button.
TEST(Machine, TheConsoleBoxAnswersNoButton) {
    testing_support::TestMachine machine;
    using namespace platform::mbstyle;
    for (const std::uint32_t style : {Ok, YesNo, YesNo | IconQuestion}) {
        EXPECT_EQ(machine.platform().messageBox.show(u"Sure?", u"Tallowick", style), 0) << style;
    }
}

TEST(Machine, CreateRefusesAnExistingMachineAndLeavesIt) {
    testing_support::TestMachine machine;
    const std::string before = slurp(machine.folder() / "machine.ini");
    std::string problems;
    MachineFacts other;
    other.userName = "Someone";
    EXPECT_EQ(Machine::create(machine.folder(), other, &problems), nullptr);
    EXPECT_NE(problems.find("already there"), std::string::npos);
    EXPECT_EQ(slurp(machine.folder() / "machine.ini"), before);
}

TEST(Machine, OpenRefusesAFolderThatIsNoMachine) {
    QTemporaryDir dir;
    std::string problems;
    EXPECT_EQ(Machine::open(dir.path().toStdString(), &problems), nullptr);
    EXPECT_NE(problems.find("not a machine folder"), std::string::npos);
}

// A damaged machine.ini is told line by line; what can't be read keeps its default, and the
// file itself is left alone.
TEST(Machine, DamagedFactsFallBackToDefaults) {
    testing_support::TestMachine machine;
    const fs::path ini = machine.folder() / "machine.ini";
    const std::string damaged =
        "[Computer]\nUserName=Ana\ngarbage line\n[OS]\nVersion=ten\nBuild=x\n"
        "[Locale]\nAnsiCodePage=1251\n[Screen]\nTwipsPerPixelX=12\n\x01\xff\xfe\n";
    spit(ini, damaged);
    std::string problems;
    const auto reopened = Machine::open(machine.folder(), &problems);
    ASSERT_NE(reopened, nullptr);
    EXPECT_EQ(reopened->facts().userName, "Ana");
    EXPECT_EQ(reopened->facts().os.major, 6);
    EXPECT_EQ(reopened->facts().os.build, 7601);
    EXPECT_EQ(reopened->facts().ansiCodePage, 1251u);
    EXPECT_EQ(reopened->facts().twipsPerPixelX, 12);
    EXPECT_NE(problems.find("machine.ini:3"), std::string::npos) << problems;
    EXPECT_NE(problems.find("machine.ini:5"), std::string::npos) << problems;
    EXPECT_NE(problems.find("machine.ini:6"), std::string::npos) << problems;
    EXPECT_EQ(reopened->platform().codePage.toAnsi(u"\u0416"), "\xc6");
    EXPECT_EQ(slurp(ini), damaged);
}

TEST(Machine, UnreadableFactsUseDefaults) {
    testing_support::TestMachine machine;
    const fs::path ini = machine.folder() / "machine.ini";
    fs::remove(ini);
    fs::create_directory(ini);
    std::string problems;
    const auto unreadable = Machine::open(machine.folder(), &problems);
    ASSERT_NE(unreadable, nullptr);
    EXPECT_NE(problems.find("cannot be read, using the defaults"), std::string::npos);
    EXPECT_EQ(unreadable->facts().userName, "User");
    fs::remove(ini);
    spit(ini, std::string("\0\0\0", 3));
    const auto binary = Machine::open(machine.folder(), &problems);
    ASSERT_NE(binary, nullptr);
    EXPECT_EQ(binary->facts().userName, "User");
}

// The running program's folder is the Windows folder of the executable mapped to it.
TEST(Machine, ProgramFolderComesFromTheProgramMap) {
    testing_support::TestMachine machine;
    EXPECT_EQ(machine.platform().environment.programFolder(), "C:\\Program Files\\Tallowick");

    MachineFacts facts = machine.machine().facts();
    facts.programs["C:\\Tools\\Runner\\runner.exe"] = fs::read_symlink("/proc/self/exe").string();
    facts.write(machine.folder() / "machine.ini");
    std::string problems;
    const auto reopened = Machine::open(machine.folder(), &problems);
    ASSERT_NE(reopened, nullptr);
    EXPECT_EQ(reopened->platform().environment.programFolder(), "C:\\Tools\\Runner");
}

TEST(Machine, PathsMapIntoDriveFolders) {
    testing_support::TestMachine machine;
    machine.placeFile("C:\\Data\\a.txt", "a");
    EXPECT_TRUE(fs::exists(machine.folder() / "drive_c" / "Data" / "a.txt"));
    fs::create_directories(machine.folder() / "drive_d" / "Media");
    EXPECT_TRUE(machine.platform().files.FolderExists("d:\\media"));
    EXPECT_EQ(machine.platform().files.GetDriveTypeA("D:\\"), platform::drivetype::Fixed);
}

TEST(Machine, DefaultFolderFollowsTheEnvironment) {
    const char* saved = std::getenv("TALLOWICK_MACHINE");
    setenv("TALLOWICK_MACHINE", "/tmp/some/machine", 1);
    EXPECT_EQ(Machine::defaultFolder(), fs::path("/tmp/some/machine"));
    unsetenv("TALLOWICK_MACHINE");
    setenv("XDG_DATA_HOME", "/tmp/xdg", 1);
    EXPECT_EQ(Machine::defaultFolder(), fs::path("/tmp/xdg/tallowick/machine"));
    if (saved != nullptr) {
        setenv("TALLOWICK_MACHINE", saved, 1);
    }
}

TEST(Machine, ArgumentsBecomeTheCommandLine) {
    testing_support::TestMachine machine;
    machine.machine().setArguments({"/boot", "/language=de", "C:\\Program Files\\x"});
    EXPECT_EQ(machine.platform().environment.commandLine(),
              "/boot /language=de \"C:\\Program Files\\x\"");
}

}  // namespace
