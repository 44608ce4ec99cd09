// Best fit in every code page the portable machine knows, not only in 1252.
#include <gtest/gtest.h>

#include "platform/portable/PortableCodePage.h"

namespace {

using platform::portable::PortableCodePage;

// A letter the code page has is written as itself; one it lacks as its best fit when the code
// page has that, else as "?".
TEST(PortableCodePage, BestFitOnlyForLettersTheCodePageLacks) {
    EXPECT_EQ(PortableCodePage(1250).toAnsi(u"\u0142\u0101\u00e9"), "\xb3\x61\xe9");
    EXPECT_EQ(PortableCodePage(1251).toAnsi(u"\u0142\u0101\u0416"), "la\xc6");
    EXPECT_EQ(PortableCodePage(932).toAnsi(u"\u0142\u65e5\u0101\u2603"),
              "l\x93\xfa"
              "a?");
    EXPECT_EQ(PortableCodePage(65001).toAnsi(u"\u0142"), "\xc5\x82");
}

}  // namespace
