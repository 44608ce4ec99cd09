#include <gtest/gtest.h>

#include <string>

#include "localisation/Scramble.h"

namespace {

std::string bytes(std::initializer_list<int> values) {
    std::string result;
    for (const int value : values) {
        result.push_back(static_cast<char>(value));
    }
    return result;
}

std::string scrambled(std::string data) {
    localisation::ScrambleBytes(data);
    return data;
}

std::string unscrambled(std::string data) {
    localisation::UnscrambleBytes(data);
    return data;
}

TEST(ScrambleTest, PairsStopBeforeTheLastTwoBytes) {
    EXPECT_EQ(scrambled(""), "");
    EXPECT_EQ(scrambled(bytes({10, 20})), bytes({10, 20}));
    EXPECT_EQ(scrambled(bytes({10, 20, 30})), bytes({3, 25, 30}));
    EXPECT_EQ(scrambled(bytes({10, 20, 30, 40})), bytes({3, 25, 30, 40}));
    EXPECT_EQ(scrambled(bytes({10, 20, 30, 40, 50})), bytes({3, 25, 23, 45, 50}));

    EXPECT_EQ(unscrambled(bytes({3, 25})), bytes({3, 25}));
    EXPECT_EQ(unscrambled(bytes({3, 25, 23, 45, 50})), bytes({10, 20, 30, 40, 50}));
}

TEST(ScrambleTest, UnscrambleUndoesScrambleExceptForTheStayingBytes) {
    for (int value = 0; value < 256; ++value) {
        const std::string even = bytes({value, 'x', 'y'});
        const std::string odd = bytes({'x', value, 'y'});
        if (value > 6) {
            EXPECT_EQ(unscrambled(scrambled(even)), even) << value;
        } else {
            // The scrambler leaves these, the unscrambler shifts them anyway.
            EXPECT_EQ(unscrambled(scrambled(even)), bytes({value + 7, 'x', 'y'})) << value;
        }
        if (value < 251) {
            EXPECT_EQ(unscrambled(scrambled(odd)), odd) << value;
        } else {
            EXPECT_EQ(unscrambled(scrambled(odd)), bytes({'x', value - 5, 'y'})) << value;
        }
    }
}

}  // namespace
