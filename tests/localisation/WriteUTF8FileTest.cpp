#include <gtest/gtest.h>

#include "core/QtPrinters.h"
#include "localisation/modUTF8_FileIO.h"
#include "support/TestMachine.h"

namespace {

const std::string kMark = "\xEF\xBB\xBF";

class WriteUTF8FileTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(machine.platform().files.MkDir("C:\\Data"));
        ASSERT_TRUE(machine.platform().files.MkDir("C:\\Lang"));
    }

    std::string fileBytes(const std::string& winPath) {
        return machine.platform().files.readFile(winPath).value_or("<missing>");
    }

    testing_support::TestMachine machine;
    localisation::modUTF8_FileIO io{machine.platform()};
    QString errorText = QStringLiteral("stale");
};

TEST_F(WriteUTF8FileTest, WritesTheMarkAndTheTextOverTheStartOfTheFile) {
    EXPECT_TRUE(
        io.WriteUTF8File("C:\\Data\\new.txt", QString::fromUtf16(u"Grüße\r\n"), errorText, false));
    EXPECT_EQ(errorText, "");
    EXPECT_EQ(fileBytes("C:\\Data\\new.txt"), kMark +
                                                  "Gr\xC3\xBC\xC3\x9F"
                                                  "e\r\n");

    // No truncation: a longer old file keeps its tail.
    machine.placeFile("C:\\Data\\old.txt", "0123456789ABCDEF");
    EXPECT_TRUE(io.WriteUTF8File("C:\\Data\\old.txt", "xy", errorText, false));
    EXPECT_EQ(fileBytes("C:\\Data\\old.txt"), kMark + "xy56789ABCDEF");
}

TEST_F(WriteUTF8FileTest, AnEmptyTextWritesNothing) {
    machine.placeFile("C:\\Data\\old.txt", "0123456789");
    EXPECT_TRUE(io.WriteUTF8File("C:\\Data\\old.txt", QString(), errorText, true));
    EXPECT_EQ(errorText, "");
    EXPECT_EQ(fileBytes("C:\\Data\\old.txt"), "0123456789");

    // The open still makes a missing file.
    EXPECT_TRUE(io.WriteUTF8File("C:\\Data\\empty.txt", QString(), errorText, false));
    EXPECT_EQ(fileBytes("C:\\Data\\empty.txt"), "");
}

TEST_F(WriteUTF8FileTest, FailuresNameTheBasicErrorAndThePath) {
    EXPECT_FALSE(io.WriteUTF8File("C:\\Missing\\lang.lng", "text", errorText, false));
    EXPECT_EQ(errorText, "Error saving UTF-8 file: 76 Path not found\r\nC:\\Missing\\lang.lng");

    machine.placeFile("C:\\Data\\locked.lng", "old");
    ASSERT_TRUE(
        machine.platform().files.SetAttr("C:\\Data\\locked.lng", platform::fileattr::ReadOnly));
    EXPECT_FALSE(io.WriteUTF8File("C:\\Data\\locked.lng", "text", errorText, false));
    EXPECT_EQ(errorText,
              "Error saving UTF-8 file: 75 Path/File access error\r\nC:\\Data\\locked.lng");
    EXPECT_EQ(fileBytes("C:\\Data\\locked.lng"), "old");
}

TEST_F(WriteUTF8FileTest, ScrambledTextReadsBackExactly) {
    const QString text = QString::fromUtf16(
        u"strLoc_TW_Title=Программа обновлений\r\n"
        u"strLoc_TW_Zh=更新程序\r\n"
        u"strLoc_TW_Smile=😀 ümlaut\r\n");
    EXPECT_TRUE(io.WriteUTF8File("C:\\Lang\\ru.lng", text, errorText, true));

    const std::string plain = kMark + text.toStdString();
    const std::string stored = fileBytes("C:\\Lang\\ru.lng");
    ASSERT_EQ(stored.size(), plain.size());
    EXPECT_EQ(stored.substr(0, 3), kMark);
    EXPECT_NE(stored, plain);

    QString back;
    EXPECT_TRUE(io.ReadUTF8File("C:\\Lang\\ru.lng", back, errorText, false, false, true));
    EXPECT_EQ(errorText, "");
    EXPECT_EQ(back, text);
}

TEST_F(WriteUTF8FileTest, CreateAndAppendMakeAFileOfLines) {
    machine.placeFile("C:\\Data\\log.txt", "an older and longer file than the new one");
    int handle = -1;
    ASSERT_TRUE(io.CreateUTF8File("C:\\Data\\log.txt", handle, errorText));
    EXPECT_EQ(errorText, "");
    EXPECT_TRUE(io.AppendUTF8Line(handle, "first"));
    EXPECT_TRUE(io.AppendUTF8Line(handle, QString::fromUtf16(u"Zeile ü")));
    machine.platform().files.closeFile(handle);
    EXPECT_EQ(fileBytes("C:\\Data\\log.txt"), kMark + "first\r\nZeile \xC3\xBC\r\n");

    EXPECT_FALSE(io.AppendUTF8Line(handle, "after the close"));
}

TEST_F(WriteUTF8FileTest, CreateInAMissingFolderFails) {
    int handle = -1;
    EXPECT_FALSE(io.CreateUTF8File("C:\\Missing\\log.txt", handle, errorText));
    EXPECT_EQ(handle, 0);
    EXPECT_EQ(errorText, "Error creating UTF-8 file: 76 Path not found\r\nC:\\Missing\\log.txt");
}

}  // namespace
