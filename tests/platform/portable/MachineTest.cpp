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

// The machine folder as a second process opens it; problems must be none unless asked for.
std::unique_ptr<Machine> reopen(const fs::path& folder, std::string* problems = nullptr) {
    std::string told;
    auto machine = Machine::open(folder, &told);
    EXPECT_NE(machine, nullptr) << told;
    if (problems != nullptr) {
        *problems = told;
    } else {
        EXPECT_EQ(told, "");
    }
    return machine;
}

// A new machine is a Windows computer laid out in a folder: drive C with its special folders,
// the registry's store and the facts, which read back as they were written. Drive letters map
// to drive_<letter> folders.
TEST(Machine, LaysOutAWindowsComputer) {
    testing_support::TestMachine machine;
    const fs::path folder = machine.folder();
    EXPECT_TRUE(fs::is_directory(folder / "drive_c" / "Users" / "User" / "AppData" / "Roaming"));
    EXPECT_TRUE(fs::is_directory(folder / "run"));
    EXPECT_TRUE(fs::exists(folder / "registry" / "HKEY_LOCAL_MACHINE.reg"));
    platform::Platform& windows = machine.platform();
    EXPECT_EQ(windows.environment.GetEnvironmentVariableA("ProgramFiles"), "C:\\Program Files");
    EXPECT_EQ(windows.environment.programFolder(), "C:\\Program Files\\Tallowick");
    machine.placeFile("C:\\Data\\a.txt", "a");
    EXPECT_TRUE(fs::exists(folder / "drive_c" / "Data" / "a.txt"));
    fs::create_directories(folder / "drive_d" / "Media");
    EXPECT_TRUE(windows.files.FolderExists("d:\\media"));
    EXPECT_EQ(windows.files.GetDriveTypeA("D:\\"), platform::drivetype::Fixed);

    const auto reopened = reopen(folder);
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

TEST(Machine, CreateRefusesAnExistingMachineAndOpenAFolderThatIsNone) {
    testing_support::TestMachine machine;
    const std::string before = slurp(machine.folder() / "machine.ini");
    std::string problems;
    EXPECT_EQ(Machine::create(machine.folder(), MachineFacts{}, &problems), nullptr);
    EXPECT_NE(problems.find("already there"), std::string::npos);
    EXPECT_EQ(slurp(machine.folder() / "machine.ini"), before);

    QTemporaryDir dir;
    EXPECT_EQ(Machine::open(dir.path().toStdString(), &problems), nullptr);
    EXPECT_NE(problems.find("not a machine folder"), std::string::npos);
}

// A damaged machine.ini is told line by line; what can't be read keeps its default, and the
// file itself is left alone. One that can't be read at all gives the defaults.
TEST(Machine, DamagedFactsFallBackToDefaults) {
    testing_support::TestMachine machine;
    const fs::path ini = machine.folder() / "machine.ini";
    const std::string damaged =
        "[Computer]\nUserName=Ana\ngarbage line\n[OS]\nVersion=ten\nBuild=x\n"
        "[Locale]\nAnsiCodePage=1251\n[Screen]\nTwipsPerPixelX=12\n\x01\xff\xfe\n";
    std::ofstream(ini, std::ios::binary) << damaged;
    std::string problems;
    const auto reopened = reopen(machine.folder(), &problems);
    EXPECT_EQ(reopened->facts().userName, "Ana");
    EXPECT_EQ(reopened->facts().os.major, 6);
    EXPECT_EQ(reopened->facts().os.build, 7601);
    EXPECT_EQ(reopened->facts().twipsPerPixelX, 12);
    for (const char* line : {"machine.ini:3", "machine.ini:5", "machine.ini:6"}) {
        EXPECT_NE(problems.find(line), std::string::npos) << problems;
    }
    EXPECT_EQ(reopened->platform().codePage.toAnsi(u"\u0416"), "\xc6");
    EXPECT_EQ(slurp(ini), damaged);

    fs::remove(ini);
    fs::create_directory(ini);
    EXPECT_EQ(reopen(machine.folder(), &problems)->facts().userName, "User");
    EXPECT_NE(problems.find("cannot be read, using the defaults"), std::string::npos);
}

// The running program's folder is the Windows folder of the executable mapped to it, and its
// arguments become the command line as Windows quotes them.
TEST(Machine, TheProgramMapAndTheArgumentsMakeTheProcess) {
    testing_support::TestMachine machine;
    MachineFacts facts = machine.machine().facts();
    facts.programs["C:\\Tools\\Runner\\runner.exe"] = fs::read_symlink("/proc/self/exe").string();
    facts.write(machine.folder() / "machine.ini");
    const auto reopened = reopen(machine.folder());
    EXPECT_EQ(reopened->platform().environment.programFolder(), "C:\\Tools\\Runner");

    reopened->setArguments({"/boot", "/language=de", "C:\\Program Files\\x"});
    EXPECT_EQ(reopened->platform().environment.commandLine(),
              "/boot /language=de \"C:\\Program Files\\x\"");
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

}  // namespace
