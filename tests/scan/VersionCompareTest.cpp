#include <gtest/gtest.h>

#include "scan/VersionCompare.h"

namespace {

struct Pair {
    const char* installed;
    const char* available;
    bool newer;
};

void expectAll(std::initializer_list<Pair> pairs) {
    for (const Pair& pair : pairs) {
        EXPECT_EQ(scan::IsVersionNewer(pair.installed, pair.available), pair.newer)
            << "(" << pair.installed << ", " << pair.available << ")";
    }
}

TEST(IsVersionNewerTest, PartsCompareAsNumbersWhenBothAreNumeric) {
    expectAll({{"1.2", "1.10", true},
               {"10.0", "9.9", false},
               {"1.2", "1.2", false},
               {"1.2", "1.2.0", false},
               {"1.2", "1.2.1", true},
               {"1.2.333", "1.2", false},
               {"01.2", "1.3", true},
               {"1.2", " 1.2", false},
               // The general number test takes exponents and a comma.
               {"1e3", "999", false},
               {"12,5", "126", true}});
}

TEST(IsVersionNewerTest, OtherPartsCompareAsTextByCharacterCode) {
    expectAll({{"1.2b", "1.2c", true},
               {"1.2", "1.2a", true},
               {"1.2a", "1.2", false},
               {"1.B", "1.a", true},
               {"2.0 beta", "2.0", false},
               {"0.108.0-b.85", "0.108.0-b.9", false},
               {"1.8d", "1.8e", true}});
}

TEST(IsVersionNewerTest, ALeadingVOfTheFirstPartAndBlanksBetweenDigitsAreForgiven) {
    expectAll({{"v1.2", "1.3", true},
               {"1.2", "V1.2", false},
               {"1.v2", "1.3", false},
               {"2 0", "2.1", true},
               {"2 1", "2.0.9", false}});
}

TEST(IsVersionNewerTest, EmptyVersions) {
    expectAll({{"1.2", "", false}, {"", "1.2", true}, {"", "", true}});
}

// Beyond 32 bits a part is no number any more and compares as text, where "9" is above "1".
TEST(IsVersionNewerTest, NumbersBeyondThirtyTwoBitsCompareAsText) {
    expectAll({{"1.2147483647", "1.2147483648", true},
               {"1.9", "1.20000000000", false},
               {"20240101000000", "20240101000001", true}});
}

}  // namespace
