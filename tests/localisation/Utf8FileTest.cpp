// The UTF-8 text files: the mark, ANSI files in the machine's code page, the scrambling, the
// writer that does not truncate, and Basic's error numbers for what fails.
#include <gtest/gtest.h>

#include <optional>

#include "core/QtPrinters.h"
#include "localisation/Scramble.h"
#include "localisation/Utf8Text.h"
#include "localisation/modUTF8_FileIO.h"
#include "support/TestMachine.h"

namespace {

const std::string kMark = "\xEF\xBB\xBF";

std::string scrambled(std::string data, bool back = false) {
    back ? localisation::UnscrambleBytes(data) : localisation::ScrambleBytes(data);
    return data;
}

class Utf8FileTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(machine.platform().files.MkDir("C:\\Data")); }

    // Reads C:\Lang\file.lng; text and errorText start filled so that a missed reset shows.
    bool read(bool allowNotUTF8, bool allowEmpty, bool unscramble = false) {
        text = errorText = QStringLiteral("stale");
        return io.ReadUTF8File("C:\\Lang\\file.lng", text, errorText, allowNotUTF8, allowEmpty,
                               unscramble);
    }
    std::string fileBytes(const std::string& winPath) {
        return machine.platform().files.readFile(winPath).value_or("<missing>");
    }

    testing_support::TestMachine machine;
    localisation::modUTF8_FileIO io{machine.platform()};
    QString text;
    QString errorText;
};

TEST_F(Utf8FileTest, ReadingTakesTheMarkOffAndRefusesWhatItMayNot) {
    const QString notUtf8 = "Error: The file C:\\Lang\\file.lng is not UTF-8 encoded";
    const struct {
        std::optional<std::string> bytes;  // nothing: no file
        bool allowNotUTF8, allowEmpty, ok;
        QString text, errorText;
    } cases[] = {
        {"", false, true, true, "", ""},
        {"", true, false, false, "", "File not found or empty"},
        {std::nullopt, true, true, false, "", "Error 53 File not found"},
        // The payload after a lone mark is an array of no bytes, which Basic can't make.
        {kMark, true, true, false, "", "Error 9 Subscript out of range"},
        // Only the first mark is taken off; line ends stay as they are.
        {kMark + kMark + "\xD0\x94\xD0\xB0\r\nb\nc\r", false, false, true,
         QChar(0xFEFF) + QString::fromUtf16(u"Да\r\nb\nc\r"), ""},
        {kMark + "a\xC3(\xFF", false, false, true, QString::fromUtf16(u"a\uFFFD(\uFFFD"), ""},
        // Two bytes of the mark are no mark, nor is anything shorter than three bytes.
        {"\xEF\xBB", false, true, false, "", notUtf8},
        {"ab", false, true, false, "", notUtf8},
        {"x=y\r\n", false, true, false, "", notUtf8},
    };
    for (const auto& c : cases) {
        machine.platform().files.Kill("C:\\Lang\\file.lng");
        if (c.bytes) {
            machine.placeFile("C:\\Lang\\file.lng", *c.bytes);
        }
        EXPECT_EQ(read(c.allowNotUTF8, c.allowEmpty), c.ok) << c.bytes.value_or("<none>");
        EXPECT_EQ(text, c.text);
        EXPECT_EQ(errorText, c.errorText);
    }
    // Unmarked and allowed: unscrambled on request, then read in the ANSI code page.
    machine.placeFile("C:\\Lang\\file.lng", scrambled("strLoc_TW_Caf\xE9=Caf\xE9\r\n"));
    EXPECT_TRUE(read(true, false, true));
    EXPECT_EQ(text, QString::fromUtf16(u"strLoc_TW_Café=Café\r\n"));
}

// C0 E1 is "Àá" in Western and "Аб" in Cyrillic; C3 A9 is "é" in UTF-8, but never read so.
TEST(Utf8FileAnsiTest, AFileWithoutTheMarkIsReadInTheMachinesCodePage) {
    platform::portable::MachineFacts facts;
    for (const auto& [codePage, expected] :
         {std::pair(1252u, u"Àá Ã©"), std::pair(1251u, u"Аб Г©")}) {
        facts.ansiCodePage = codePage;
        testing_support::TestMachine machine(facts);
        machine.placeFile("C:\\Lang\\ansi.lng", "\xC0\xE1 \xC3\xA9");
        QString text, errorText;
        EXPECT_TRUE(localisation::modUTF8_FileIO(machine.platform())
                        .ReadUTF8File("C:\\Lang\\ansi.lng", text, errorText, true, false, false));
        EXPECT_EQ(text, QString::fromUtf16(expected));
    }
}

// The mark and the text go over the start of the file, a longer old file keeps its tail; an
// empty text writes nothing, though the open still makes a missing file.
TEST_F(Utf8FileTest, WritingOverwritesTheStartOfTheFile) {
    EXPECT_TRUE(
        io.WriteUTF8File("C:\\Data\\new.txt", QString::fromUtf16(u"Grüße\r\n"), errorText, false));
    EXPECT_EQ(errorText, "");
    EXPECT_EQ(fileBytes("C:\\Data\\new.txt"), kMark +
                                                  "Gr\xC3\xBC\xC3\x9F"
                                                  "e\r\n");
    machine.placeFile("C:\\Data\\old.txt", "0123456789ABCDEF");
    EXPECT_TRUE(io.WriteUTF8File("C:\\Data\\old.txt", "xy", errorText, false));
    EXPECT_TRUE(io.WriteUTF8File("C:\\Data\\old.txt", QString(), errorText, true));
    EXPECT_EQ(fileBytes("C:\\Data\\old.txt"), kMark + "xy56789ABCDEF");
    EXPECT_TRUE(io.WriteUTF8File("C:\\Data\\empty.txt", QString(), errorText, false));
    EXPECT_EQ(fileBytes("C:\\Data\\empty.txt"), "");

    // Scrambled, all but the mark: it reads back exactly.
    const QString written = QString::fromUtf16(
        u"strLoc_TW_Title=Программа обновлений\r\nstrLoc_TW_Zh=更新程序\r\nstrLoc_TW_Smile=😀 "
        u"ü\r\n");
    EXPECT_TRUE(io.WriteUTF8File("C:\\Data\\ru.lng", written, errorText, true));
    EXPECT_EQ(fileBytes("C:\\Data\\ru.lng"), kMark + scrambled(written.toStdString()));
    QString back;
    EXPECT_TRUE(io.ReadUTF8File("C:\\Data\\ru.lng", back, errorText, false, false, true));
    EXPECT_EQ(errorText, "");
    EXPECT_EQ(back, written);
}

TEST_F(Utf8FileTest, FailedWritesNameTheBasicErrorAndThePath) {
    EXPECT_FALSE(io.WriteUTF8File("C:\\Missing\\lang.lng", "text", errorText, false));
    EXPECT_EQ(errorText, "Error saving UTF-8 file: 76 Path not found\r\nC:\\Missing\\lang.lng");
    machine.placeFile("C:\\Data\\locked.lng", "old");
    ASSERT_TRUE(
        machine.platform().files.SetAttr("C:\\Data\\locked.lng", platform::fileattr::ReadOnly));
    EXPECT_FALSE(io.WriteUTF8File("C:\\Data\\locked.lng", "text", errorText, false));
    EXPECT_EQ(errorText,
              "Error saving UTF-8 file: 75 Path/File access error\r\nC:\\Data\\locked.lng");
    EXPECT_EQ(fileBytes("C:\\Data\\locked.lng"), "old");
    int handle = -1;
    EXPECT_FALSE(io.CreateUTF8File("C:\\Missing\\log.txt", handle, errorText));
    EXPECT_EQ(handle, 0);
    EXPECT_EQ(errorText, "Error creating UTF-8 file: 76 Path not found\r\nC:\\Missing\\log.txt");
}

TEST_F(Utf8FileTest, CreateAndAppendMakeAFileOfLines) {
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

TEST(Utf8TextTest, EncodeWritesLoneSurrogatesAsReplacementCharacters) {
    const QString high(QChar(0xD83D)), low(QChar(0xDE00));
    EXPECT_EQ(localisation::encodeUtf8(u'a' + high + u'b'),
              "a\xEF\xBF\xBD"
              "b");
    EXPECT_EQ(localisation::encodeUtf8(low + high), "\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(localisation::encodeUtf8(high + high + low), "\xEF\xBF\xBD\xF0\x9F\x98\x80");
    EXPECT_EQ(localisation::encodeUtf8(QString(QChar(0xFEFF))), "\xEF\xBB\xBF");
}

// Pairs of bytes are shifted up to the last two bytes, which stay. Unscrambling undoes it but
// for the bytes the scrambler leaves and the unscrambler shifts anyway.
TEST(ScrambleTest, PairsStopBeforeTheLastTwoBytes) {
    EXPECT_EQ(scrambled(""), "");
    EXPECT_EQ(scrambled({10, 20}), std::string({10, 20}));
    EXPECT_EQ(scrambled({10, 20, 30}), std::string({3, 25, 30}));
    EXPECT_EQ(scrambled({10, 20, 30, 40}), std::string({3, 25, 30, 40}));
    EXPECT_EQ(scrambled({10, 20, 30, 40, 50}), std::string({3, 25, 23, 45, 50}));
    EXPECT_EQ(scrambled({3, 25}, true), std::string({3, 25}));
    EXPECT_EQ(scrambled({3, 25, 23, 45, 50}, true), std::string({10, 20, 30, 40, 50}));
    for (int value = 0; value < 256; ++value) {
        const std::string even{char(value), 'x', 'y'}, odd{'x', char(value), 'y'};
        EXPECT_EQ(scrambled(scrambled(even), true),
                  (value > 6 ? even : std::string{char(value + 7), 'x', 'y'}))
            << value;
        EXPECT_EQ(scrambled(scrambled(odd), true),
                  (value < 251 ? odd : std::string{'x', char(value - 5), 'y'}))
            << value;
    }
}

}  // namespace
