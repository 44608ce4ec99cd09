#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <fstream>
#include <sstream>

#include "platform/portable/Machine.h"
#include "platform/portable/PortableCodePage.h"
#include "support/TestMachine.h"

namespace {

namespace fs = std::filesystem;
using platform::portable::Machine;
using platform::portable::MachineFacts;

std::string slurp(const fs::path& file) {
    std::ostringstream text;
    text << std::ifstream(file, std::ios::binary).rdbuf();
    return text.str();
}

// The machine folder as a second process opens it, and what it told.
std::unique_ptr<Machine> reopen(const fs::path& folder, std::string& problems) {
    problems.clear();
    auto machine = Machine::open(folder, &problems);
    EXPECT_NE(machine, nullptr) << problems;
    return machine;
}

// A new machine is a Windows computer laid out in a folder: drive C, the registry's store and
// the facts, which read back as they were written. Drive letters map to drive_<letter>
// folders. A folder that is a machine already is not made again, nor one that is none opened.
TEST(Machine, LaysOutAWindowsComputer) {
    testing_support::TestMachine machine;
    const fs::path folder = machine.folder();
    EXPECT_TRUE(fs::is_directory(folder / "run"));
    EXPECT_TRUE(fs::exists(folder / "registry" / "HKEY_LOCAL_MACHINE.reg"));
    platform::Platform& windows = machine.platform();
    EXPECT_EQ(windows.environment.programFolder(), "C:\\Program Files\\Tallowick");
    machine.placeFile("C:\\Data\\a.txt", "a");
    EXPECT_TRUE(fs::exists(folder / "drive_c" / "Data" / "a.txt"));
    fs::create_directories(folder / "drive_d" / "Media");
    EXPECT_TRUE(windows.files.FolderExists("d:\\media"));
    EXPECT_EQ(windows.files.GetDriveTypeA("D:\\"), platform::drivetype::Fixed);

    std::string problems;
    const auto reopened = reopen(folder, problems);
    EXPECT_EQ(problems, "");
    EXPECT_EQ(reopened->facts().computerName, "TALLOWICK-PC");
    EXPECT_EQ(reopened->facts().fonts, MachineFacts{}.fonts);
    EXPECT_EQ(reopened->facts().environment.at("TEMP"), "C:\\Users\\User\\AppData\\Local\\Temp");

    const std::string before = slurp(folder / "machine.ini");
    EXPECT_EQ(Machine::create(folder, MachineFacts{}, &problems), nullptr);
    EXPECT_NE(problems.find("already there"), std::string::npos);
    EXPECT_EQ(slurp(folder / "machine.ini"), before);
    QTemporaryDir dir;
    EXPECT_EQ(Machine::open(dir.path().toStdString(), &problems), nullptr);
    EXPECT_NE(problems.find("not a machine folder"), std::string::npos);
}

// Nobody answers the console's box: it tells on standard error and answers 0, no button.
TEST(Machine, TheConsoleBoxAnswersNoButton) {
    testing_support::TestMachine machine;
    using namespace platform::mbstyle;
    for (const std::uint32_t style : {Ok, YesNo, YesNo | IconQuestion}) {
        EXPECT_EQ(machine.platform().messageBox.show(u"Sure?", u"Tallowick", style), 0) << style;
    }
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
    const auto reopened = reopen(machine.folder(), problems);
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
    EXPECT_EQ(reopen(machine.folder(), problems)->facts().userName, "User");
    EXPECT_NE(problems.find("cannot be read, using the defaults"), std::string::npos);
}

// A letter the code page has is written as itself; one it lacks as its best fit when the code
// page has that, else as "?".
TEST(Machine, BestFitOnlyForLettersTheCodePageLacks) {
    using platform::portable::PortableCodePage;
    EXPECT_EQ(PortableCodePage(1250).toAnsi(u"\u0142\u0101\u00e9"), "\xb3\x61\xe9");
    EXPECT_EQ(PortableCodePage(1251).toAnsi(u"\u0142\u0101\u0416"), "la\xc6");
    EXPECT_EQ(PortableCodePage(932).toAnsi(u"\u0142\u65e5\u0101\u2603"),
              "l\x93\xfa"
              "a?");
    EXPECT_EQ(PortableCodePage(65001).toAnsi(u"\u0142"), "\xc5\x82");
}

// The running program's folder is the Windows folder of the executable mapped to it, and its
// arguments become the command line as Windows quotes them.
TEST(Machine, TheProgramMapAndTheArgumentsMakeTheProcess) {
    testing_support::TestMachine machine;
    machine.mapProgram("C:\\Tools\\Runner\\runner.exe",
                       fs::read_symlink("/proc/self/exe").string());
    EXPECT_EQ(machine.platform().environment.programFolder(), "C:\\Tools\\Runner");
    machine.machine().setArguments({"/boot", "/language=de", "C:\\Program Files\\x"});
    EXPECT_EQ(machine.platform().environment.commandLine(),
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
