#include "platform/portable/BestFit.h"

#include <string_view>

namespace platform::portable {

namespace {

// Consecutive letters from first on and what each is written as.
struct Run {
    char16_t first;
    std::u16string_view fits;
};

constexpr Run kRuns[] = {
    {0x0100, u"AaAaAaCcCcCcCcDd\u00D0dEeEeEeEeEeGgGgGgGgHhHhIiIiIiIiIi"},
    {0x0134, u"JjKk"},
    {0x0139, u"LlLlLl"},
    {0x0141, u"LlNnNnNn"},
    {0x014C, u"OoOoOo"},
    {0x0154, u"RrRrRrSsSsSsSsTtTtTtUuUuUuUuUuUuWwYyYZzZzZz"},
    {0x0180, u"b"},
    {0x0189, u"\u00D0"},
    {0x0191, u"\u0192"},
    {0x0197, u"I"},
    {0x019A, u"l"},
    {0x019F, u"OOo"},
    {0x01AB, u"t"},
    {0x01AE, u"TUu"},
    {0x01B6, u"z"},
    {0x01CD, u"AaIiOoUuUuUuUuUu"},
    {0x01DE, u"Aa"},
    {0x01E4, u"GgGgKkOoOo"},
    {0x01F0, u"j"},
};

}  // namespace

char16_t bestFitLetter(char16_t letter) {
    for (const Run& run : kRuns) {
        if (letter >= run.first && letter - run.first < int(run.fits.size())) {
            return run.fits[letter - run.first];
        }
    }
    return 0;
}

}  // namespace platform::portable
