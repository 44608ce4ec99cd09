#include "localisation/Scramble.h"

#include <cstddef>

namespace localisation {

namespace {

// Calls shift(even, odd) for each pair whose first byte lies at or before size - 3.
template <typename Shift>
void forEachPair(std::string& bytes, Shift shift) {
    if (bytes.size() < 3) {
        return;
    }
    const std::size_t limit = bytes.size() - 3;
    auto* data = reinterpret_cast<unsigned char*>(bytes.data());
    for (std::size_t i = 0; i <= limit; i += 2) {
        shift(data[i], data[i + 1]);
    }
}

}  // namespace

void ScrambleBytes(std::string& bytes) {
    forEachPair(bytes, [](unsigned char& even, unsigned char& odd) {
        if (even > 6) {
            even -= 7;
        }
        if (odd < 251) {
            odd += 5;
        }
    });
}

void UnscrambleBytes(std::string& bytes) {
    forEachPair(bytes, [](unsigned char& even, unsigned char& odd) {
        if (even < 249) {
            even += 7;
        }
        if (odd > 4) {
            odd -= 5;
        }
    });
}

}  // namespace localisation
