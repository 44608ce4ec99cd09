#include <gtest/gtest.h>

#include "core/QtPrinters.h"
#include "localisation/Scramble.h"
#include "localisation/modUTF8_FileIO.h"
#include "support/TestMachine.h"

namespace {

const std::string kMark = "\xEF\xBB\xBF";

platform::portable::MachineFacts withCodePage(unsigned codePage) {
    platform::portable::MachineFacts facts;
    facts.ansiCodePage = codePage;
    return facts;
}

class ReadUTF8FileTest : public ::testing::Test {
protected:
    // Reads C:\Lang\file.lng; text and errorText start filled so that a missed reset shows.
    bool read(bool allowNotUTF8, bool allowEmpty, bool unscramble = false) {
        text = QStringLiteral("stale");
        errorText = QStringLiteral("stale");
        return io.ReadUTF8File(kPath, text, errorText, allowNotUTF8, allowEmpty, unscramble);
    }

    const QString kPath = QStringLiteral("C:\\Lang\\file.lng");
    testing_support::TestMachine machine;
    localisation::modUTF8_FileIO io{machine.platform()};
    QString text;
    QString errorText;
};

TEST_F(ReadUTF8FileTest, AnEmptyFileIsAcceptedOnlyWhenAllowed) {
    machine.placeFile("C:\\Lang\\file.lng", "");
    EXPECT_TRUE(read(false, true));
    EXPECT_EQ(text, "");
    EXPECT_EQ(errorText, "");

    EXPECT_FALSE(read(true, false));
    EXPECT_EQ(text, "");
    EXPECT_EQ(errorText, "File not found or empty");
}

TEST_F(ReadUTF8FileTest, FailuresOfTheFileOperationsNameTheBasicError) {
    EXPECT_FALSE(read(true, true));
    EXPECT_EQ(text, "");
    EXPECT_EQ(errorText, "Error 53 File not found");

    // The payload after a lone mark is an array of no bytes, which Basic can't make.
    machine.placeFile("C:\\Lang\\file.lng", kMark);
    EXPECT_FALSE(read(true, true));
    EXPECT_EQ(text, "");
    EXPECT_EQ(errorText, "Error 9 Subscript out of range");
}

TEST_F(ReadUTF8FileTest, MarkedFilesAreUtf8WithLineEndsAsTheyAre) {
    // Only the first mark is taken off; a second one is text.
    machine.placeFile("C:\\Lang\\file.lng", kMark + kMark + "\xD0\x94\xD0\xB0\r\nb\nc\r");
    EXPECT_TRUE(read(false, false));
    EXPECT_EQ(errorText, "");
    EXPECT_EQ(text, QChar(0xFEFF) + QString::fromUtf16(u"Да\r\nb\nc\r"));
}

TEST_F(ReadUTF8FileTest, BrokenUtf8AfterTheMarkBecomesReplacementCharacters) {
    machine.placeFile("C:\\Lang\\file.lng", kMark + "a\xC3(\xFF");
    EXPECT_TRUE(read(false, false));
    EXPECT_EQ(text, QString::fromUtf16(u"a\uFFFD(\uFFFD"));
}

TEST_F(ReadUTF8FileTest, AFileWithoutTheMarkIsRefusedUnlessAllowed) {
    // Two bytes of the mark are no mark, nor is anything shorter than three bytes.
    for (const std::string content : {"\xEF\xBB", "ab", "x=y\r\n"}) {
        machine.placeFile("C:\\Lang\\file.lng", content);
        EXPECT_FALSE(read(false, true)) << content;
        EXPECT_EQ(errorText, "Error: The file C:\\Lang\\file.lng is not UTF-8 encoded");
        EXPECT_EQ(text, "");
    }
}

TEST(ReadUTF8FileAnsiTest, AFileWithoutTheMarkIsReadInTheMachinesCodePage) {
    // C0 E1 is "Àá" in Western and "Аб" in Cyrillic; C3 A9 is "é" in UTF-8, but never read so.
    const std::string content = "\xC0\xE1 \xC3\xA9";
    const QString path = QStringLiteral("C:\\Lang\\ansi.lng");
    QString text;
    QString errorText;

    testing_support::TestMachine western(withCodePage(1252));
    western.placeFile("C:\\Lang\\ansi.lng", content);
    localisation::modUTF8_FileIO westernIo(western.platform());
    EXPECT_TRUE(westernIo.ReadUTF8File(path, text, errorText, true, false, false));
    EXPECT_EQ(text, QString::fromUtf16(u"Àá Ã©"));

    testing_support::TestMachine cyrillic(withCodePage(1251));
    cyrillic.placeFile("C:\\Lang\\ansi.lng", content);
    localisation::modUTF8_FileIO cyrillicIo(cyrillic.platform());
    EXPECT_TRUE(cyrillicIo.ReadUTF8File(path, text, errorText, true, false, false));
    EXPECT_EQ(text, QString::fromUtf16(u"Аб Г©"));

    cyrillic.placeFile("C:\\Lang\\ansi.lng", "\xC0");
    EXPECT_TRUE(cyrillicIo.ReadUTF8File(path, text, errorText, true, false, false));
    EXPECT_EQ(text, QString::fromUtf16(u"А"));
}

TEST_F(ReadUTF8FileTest, AnUnmarkedFileIsUnscrambledThenTakenAsAnsi) {
    std::string content = "strLoc_TW_Caf\xE9=Caf\xE9\r\n";
    localisation::ScrambleBytes(content);
    machine.placeFile("C:\\Lang\\file.lng", content);
    EXPECT_TRUE(read(true, false, true));
    EXPECT_EQ(text, QString::fromUtf16(u"strLoc_TW_Café=Café\r\n"));
}

}  // namespace
