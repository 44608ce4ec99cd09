#include <gtest/gtest.h>

#include "localisation/Utf8Text.h"

namespace {

using localisation::encodeUtf8;

TEST(Utf8TextTest, EncodeWritesLoneSurrogatesAsReplacementCharacters) {
    const QString high(QChar(0xD83D));
    const QString low(QChar(0xDE00));
    EXPECT_EQ(encodeUtf8(u'a' + high + u'b'),
              "a\xEF\xBF\xBD"
              "b");
    EXPECT_EQ(encodeUtf8(low + high), "\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(encodeUtf8(high + high + low), "\xEF\xBF\xBD\xF0\x9F\x98\x80");
    EXPECT_EQ(encodeUtf8(QString(QChar(0xFEFF))), "\xEF\xBB\xBF");
    EXPECT_EQ(encodeUtf8(QString()), "");
}

}  // namespace
