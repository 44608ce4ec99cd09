#pragma once
#include <gtest/gtest.h>

#include <cctype>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include "ConformanceMachine.h"

namespace conformance {

// A path below the tests' own folder.
inline std::string at(const std::string& below) {
    return kFolder + below;
}

// The text with its ASCII letters in one case, as Windows compares names.
inline std::string inCase(std::string text, bool upper) {
    for (char& c : text) {
        c = char(upper ? std::toupper(std::uint8_t(c)) : std::tolower(std::uint8_t(c)));
    }
    return text;
}

// Text as UTF-16 bytes, little-endian unless asked for big-endian.
inline std::string utf16(std::u16string_view text, bool bigEndian = false) {
    std::string bytes;
    for (const char16_t unit : text) {
        const char high = char(unit >> 8);
        const char low = char(unit & 0xFF);
        bytes += bigEndian ? std::string{high, low} : std::string{low, high};
    }
    return bytes;
}

// What a call answered: ok when it succeeded (0), else "<error N>".
inline std::string answer(long result, const std::string& ok) {
    return result == 0 ? ok : "<error " + std::to_string(result) + ">";
}

// Whether the test runs where the Windows rule it pins is known to be broken: true under Wine,
// which then has the rule told on the test's output and recorded with the test's result, so
// that the test checks what Wine does instead. Never true on a real Windows or a portable
// machine.
bool wineDiffers(const char* rule);

// A test on a fresh machine; with codePage, on one of that ANSI code page, and skipped with
// the reason when the backend can't make one.
class ConformanceTest : public ::testing::Test {
protected:
    explicit ConformanceTest(unsigned codePage = 0)
        : codePage_(codePage), machine(newMachine(codePage)) {}

    void SetUp() override {
        if (!machine) {
            GTEST_SKIP() << "needs a computer whose ANSI code page is " << codePage_;
        }
        if (codePage_ != 0) {
            ASSERT_EQ(machine->platform().codePage.GetACP(), codePage_);
        }
    }

    platform::Platform& os() { return machine->platform(); }
    platform::FileSystem& files() { return machine->platform().files; }

    // Places files below kFolder with their bytes.
    void place(std::initializer_list<std::pair<const char*, std::string>> placed) {
        for (const auto& [below, bytes] : placed) {
            machine->placeFile(at(below), bytes);
        }
    }

    // What the files below kFolder hold, "|" between them, "-" for a missing one.
    std::string holds(std::initializer_list<const char*> belows) {
        std::string text;
        for (const char* below : belows) {
            text += files().readFile(at(below)).value_or("-") + "|";
        }
        return text.substr(0, text.size() - 1);
    }

    unsigned codePage_;
    std::unique_ptr<Machine> machine;
};

// The tests of a fixture on a machine of one ANSI code page.
template <class Fixture, unsigned CodePage>
class InCodePage : public Fixture {
protected:
    InCodePage() : Fixture(CodePage) {}
};

}  // namespace conformance
