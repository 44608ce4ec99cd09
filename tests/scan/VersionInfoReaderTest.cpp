#include <gtest/gtest.h>

#include "scan/VersionInfoReader.h"
#include "support/TestMachine.h"

namespace {

class VersionInfoReaderTest : public ::testing::Test {
protected:
    void SetUp() override {
        machine.placeTestData("C:\\Lib\\zlib1-x64.dll", "zlib1-x64.dll");
        machine.placeTestData("C:\\Lib\\zlib1-x86.dll", "zlib1-x86.dll");
        machine.placeTestData("C:\\Lib\\libwinpthread-1.dll", "libwinpthread-1.dll");
        machine.placeFile("C:\\Lib\\notes.txt", "not a program");
    }
    testing_support::TestMachine machine;
    scan::VersionInfoReader reader{machine.platform().versionInfo, machine.platform().codePage};
};

TEST_F(VersionInfoReaderTest, BothBitnessesGiveTheirStrings) {
    for (const char* file : {"C:\\Lib\\zlib1-x64.dll", "C:\\Lib\\ZLIB1-X86.DLL"}) {
        SCOPED_TRACE(file);
        ASSERT_TRUE(reader.LoadVersionInfo(file));
        EXPECT_EQ(reader.GetVersionInfoString("FileVersion"), "1.2.13");
        EXPECT_FALSE(reader.GetVersionInfoString("CompanyName").has_value());
        EXPECT_EQ(reader.GetFixedFileVersion(file), "1.2.13.0");
        EXPECT_EQ(reader.GetFixedProductVersion(file), "1.2");
    }
}

TEST_F(VersionInfoReaderTest, TableOtherThanUsEnglishIsUsed) {
    ASSERT_TRUE(reader.LoadVersionInfo("C:\\Lib\\libwinpthread-1.dll"));
    EXPECT_EQ(reader.GetVersionInfoString("CompanyName"),
              "MingW-W64 Project. All rights reserved.");
    EXPECT_EQ(reader.GetVersionInfoString("FileVersion"), "1, 0, 0, 0");
}

TEST_F(VersionInfoReaderTest, FilesWithoutBlockGiveNothing) {
    for (const char* file : {"C:\\Lib\\notes.txt", "C:\\Lib\\missing.dll", "C:\\Lib"}) {
        SCOPED_TRACE(file);
        EXPECT_FALSE(reader.LoadVersionInfo(file));
        EXPECT_FALSE(reader.GetVersionInfoString("FileVersion").has_value());
        EXPECT_EQ(reader.GetFixedFileVersion(file), "");
    }
}

}  // namespace
