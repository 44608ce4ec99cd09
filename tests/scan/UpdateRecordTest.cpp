#include <gtest/gtest.h>

#include "core/QtPrinters.h"
#include "scan/ScanOSWord.h"
#include "scan/UpdateRecord.h"
#include "scan/modUpdateCOmponent.h"
#include "support/TestMachine.h"

namespace {

using scan::ParseUpdateReply;
using scan::UpdateRecord;

QString page(const QString& payload) {
    return "<html><body>Tallowick\r\n<!-- UPDATEINFORMATION=\"" + payload +
           "\"=UPDATEINFORMATION -->\r\n</body></html>";
}

TEST(ParseUpdateReplyTest, CutsEachFieldBetweenTheFirstPlacesOfItsTags) {
    const auto record =
        ParseUpdateReply(page("UID=42=UIDFVR1=1.0.0.1=FVR1PVR1=1.0=PVR1FVR2==FVR2PVR2==PVR2HUR==HUR"
                              "DUR=http://x/get?a=1=DURCOM=New: faster=COM"));
    ASSERT_TRUE(record);
    EXPECT_EQ(*record, (UpdateRecord{"1.0.0.1", "1.0", "", "", "", "http://x/get?a=1",
                                     "New: faster", "42", "", "", 0}));

    // A comment ahead of the real field is taken for it: the first place counts.
    const auto first = ParseUpdateReply(
        page("COM=see FVR1=9=FVR1 later=COMFVR1=1=FVR1PVR1=1=PVR1FVR2==FVR2PVR2==PVR2HUR==HUR"
             "DUR==DURUID==UID"));
    ASSERT_TRUE(first);
    EXPECT_EQ(first->FVR1, "9");
    // Only the first markers count; text around them is anything.
    const auto twice = ParseUpdateReply(page("ERR_CODE:1|ERR_DESC:a") + page("ERR_CODE:2"));
    ASSERT_TRUE(twice);
    EXPECT_EQ(twice->ErrCode, "1");
}

TEST(ParseUpdateReplyTest, StatusesOfEmptyMarkerlessAndErrorReplies) {
    EXPECT_EQ(ParseUpdateReply("")->Status, 1);
    EXPECT_EQ(ParseUpdateReply("<html><body>Not found</body></html>")->Status, 2);
    const auto error = ParseUpdateReply(page("ERR_CODE:4001|ERR_DESC:Unknown"));
    EXPECT_EQ(*error, (UpdateRecord{"", "", "", "", "", "", "", "", "4001", "Unknown", 3}));
    // A missing tag, a missing end marker or an error without its description: the cut fails.
    EXPECT_FALSE(ParseUpdateReply(page("FVR1=1=FVR1PVR1=1=PVR1")));
    EXPECT_FALSE(ParseUpdateReply("<!-- UPDATEINFORMATION=\"FVR1=1=FVR1"));
    EXPECT_FALSE(ParseUpdateReply(page("ERR_CODE:4001")));
    EXPECT_FALSE(ParseUpdateReply("\"=UPDATEINFORMATION -->" + page("ERR_CODE:1|ERR_DESC:")));
}

TEST(PackUpdateRecordTest, RoundTripsAndRefusesTheBusyAnswer) {
    const UpdateRecord record{"1", "2", "3", "4", "5", "6", "7", "8", "9", "10|x", -1};
    EXPECT_EQ(scan::PackUpdateRecord(record),
              "1.:M|B:.2.:M|B:.3.:M|B:.4.:M|B:.5.:M|B:.6.:M|B:.7.:M|B:.8.:M|B:.9.:M|B:.10|x"
              ".:M|B:.-1");
    EXPECT_EQ(scan::UnpackUpdateRecord(scan::PackUpdateRecord(record)), record);
    EXPECT_FALSE(scan::UnpackUpdateRecord("ERR_CODE:X0"));
    EXPECT_FALSE(scan::UnpackUpdateRecord("1.:M|B:.2.:M|B:.3"));
}

TEST(EncodeQueryValueTest, EscapesEverythingButLettersAndDigitsInTheCodePage) {
    testing_support::TestMachine machine;
    const auto& codePage = machine.platform().codePage;
    EXPECT_EQ(scan::EncodeQueryValue("A&B Tool", codePage), "A%26B%20Tool");
    EXPECT_EQ(scan::EncodeQueryValue("1.2-b_c", codePage), "1%2E2%2Db%5Fc");
    EXPECT_EQ(scan::EncodeQueryValue(QString::fromUtf8("Caf\u00e9 \u20ac \u65e5"), codePage),
              "Caf%E9%20%80%20%3F");
}

TEST(ScanOSWordTest, NamesTheKnownVersionsAndWritesOthersAsNumbers) {
    const auto word = [](int major, int minor) { return scan::ScanOSWord({2, major, minor, 0}); };
    EXPECT_EQ(word(6, 1), "Win7");
    EXPECT_EQ(word(6, 10), "Win7");
    EXPECT_EQ(word(5, 1), "XP");
    EXPECT_EQ(word(5, 0), "Win2K");
    EXPECT_EQ(word(6, 3), "6.03");
    EXPECT_EQ(word(10, 0), "10");
    EXPECT_EQ(word(6, 20), "6.2");
}

}  // namespace
