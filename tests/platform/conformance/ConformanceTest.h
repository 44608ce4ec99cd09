#pragma once
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <memory>
#include <string>

#include "ConformanceMachine.h"

namespace conformance {

// A path below the tests' own folder.
inline std::string at(const std::string& below) {
    return kFolder + below;
}

// The text with its ASCII letters in one case, as Windows compares names.
inline std::string upperCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return char(std::toupper(c)); });
    return text;
}

inline std::string lowerCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return char(std::tolower(c)); });
    return text;
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
