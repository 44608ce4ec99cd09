#include <gtest/gtest.h>

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <fstream>
#include <string>
#include <vector>

#include "VersionQuery.h"
#include "demo/PeWriter.h"
#include "support/TestMachine.h"

// Written images read back through the version-block calls exactly as they were described.
namespace {

using demo::PeVersionInfo;

PeVersionInfo sample(bool pe32Plus) {
    PeVersionInfo info;
    info.fileVersion = "3.14.159.2653";
    info.productVersion = "3.14";
    info.companyName = "Northwind Traders Ltd.";
    info.fileDescription = "Northwind Café";
    info.fixedFileVersion = {3, 14, 159, 2653};
    info.fixedProductVersion = {3, 14, 65535, 0};
    info.pe32Plus = pe32Plus;
    return info;
}

TEST(PeWriter, BothImageKindsReadBackStringsTranslationAndFixedVersions) {
    for (bool pe32Plus : {true, false}) {
        testing_support::TestMachine machine;
        machine.placeFile("C:\\App\\app.exe", writeVersionedPe(sample(pe32Plus)));
        VersionQuery block(machine.platform().versionInfo, "C:\\App\\app.exe");
        ASSERT_TRUE(block.loaded()) << pe32Plus;
        EXPECT_EQ(block.text("040904b0", "FileVersion"), "3.14.159.2653");
        EXPECT_EQ(block.text("040904B0", "ProductVersion"), "3.14");
        EXPECT_EQ(block.text("040904b0", "CompanyName"), "Northwind Traders Ltd.");
        EXPECT_EQ(block.text("040904b0", "FileDescription"), "Northwind Caf\xE9");  // Windows-1252
        EXPECT_EQ(block.query("\\VarFileInfo\\Translation"), std::string("\x09\x04\xB0\x04", 4));
        EXPECT_EQ(block.fixed(),
                  (std::vector<std::uint32_t>{0x0003000E, 0x009F0A5D, 0x0003000E, 0xFFFF0000}));
    }
}

TEST(PeWriter, MissingStringsAreAbsentAndTheTableFollowsTheTranslation) {
    PeVersionInfo info;
    info.companyName = "";
    info.language = 0x0804;
    info.codePage = 0x03A8;
    testing_support::TestMachine machine;
    machine.placeFile("C:\\a.dll", writeVersionedPe(info));
    VersionQuery block(machine.platform().versionInfo, "C:\\a.dll");
    ASSERT_TRUE(block.loaded());
    EXPECT_EQ(block.query("\\VarFileInfo\\Translation"), std::string("\x04\x08\xA8\x03", 4));
    EXPECT_EQ(block.text("080403a8", "CompanyName"), "");
    for (const char* name : {"FileVersion", "ProductVersion", "FileDescription"}) {
        EXPECT_EQ(block.text("080403a8", name), std::nullopt) << name;
    }
    EXPECT_EQ(block.text("040904b0", "CompanyName"), std::nullopt);
    EXPECT_EQ(block.fixed(), std::vector<std::uint32_t>(4, 0));
}

TEST(PeWriter, NonLatinTextSurvivesOnAUtf8MachineAndTurnsToQuestionMarksOnAnAnsiOne) {
    PeVersionInfo info;
    info.fileDescription = "115浏览器 — Ёлка";
    platform::portable::MachineFacts utf8;
    utf8.ansiCodePage = 65001;
    testing_support::TestMachine unicodeMachine(utf8);
    testing_support::TestMachine ansiMachine;
    for (auto* machine : {&unicodeMachine, &ansiMachine}) {
        machine->placeFile("C:\\b.exe", writeVersionedPe(info));
    }
    EXPECT_EQ(VersionQuery(unicodeMachine.platform().versionInfo, "C:\\b.exe")
                  .text("040904b0", "FileDescription"),
              "115浏览器 — Ёлка");
    EXPECT_EQ(VersionQuery(ansiMachine.platform().versionInfo, "C:\\b.exe")
                  .text("040904b0", "FileDescription"),
              "115??? \x97 ????");
}

// binutils is the independent judge of the headers, where it is installed.
TEST(PeWriter, ObjdumpRecognisesTheImages) {
    const QString objdump = QStandardPaths::findExecutable("x86_64-w64-mingw32-objdump").isEmpty()
                                ? QStandardPaths::findExecutable("objdump")
                                : QStandardPaths::findExecutable("x86_64-w64-mingw32-objdump");
    if (objdump.isEmpty()) {
        GTEST_SKIP() << "no objdump";
    }
    QTemporaryDir dir;
    for (bool pe32Plus : {true, false}) {
        const QString file = dir.filePath(pe32Plus ? "x64.exe" : "x86.exe");
        std::ofstream(file.toStdString(), std::ios::binary) << writeVersionedPe(sample(pe32Plus));
        QProcess process;
        process.start(objdump, {"-h", file});
        ASSERT_TRUE(process.waitForFinished(30000));
        const QString out = QString::fromUtf8(process.readAllStandardOutput());
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        EXPECT_TRUE(out.contains(pe32Plus ? "file format pei-x86-64" : "file format pei-i386"))
            << out.toStdString();
        EXPECT_TRUE(out.contains(".rsrc")) << out.toStdString();
    }
}

}  // namespace
