#pragma once
#include <gtest/gtest.h>

#include <memory>

#include "ConformanceMachine.h"

namespace conformance {

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

}  // namespace conformance
