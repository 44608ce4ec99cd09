// Under Wine a rule Wine is known to break is told once per test, in GoogleTest's own style,
// and kept with the test's result as the property "wine".
#include "platform/win32/WindowsApi.h"

#include <cstdio>
#include <string>

#include "ConformanceTest.h"

namespace conformance {

namespace {

bool underWine() {
    static const bool wine =
        ::GetProcAddress(::GetModuleHandleA("ntdll.dll"), "wine_get_version") != nullptr;
    return wine;
}

}  // namespace

bool wineDiffers(const char* rule) {
    if (!underWine()) {
        return false;
    }
    // The rules told for the running test, "; " between them.
    static const ::testing::TestInfo* test = nullptr;
    static std::string told;
    const ::testing::TestInfo* current = ::testing::UnitTest::GetInstance()->current_test_info();
    if (current != test) {
        test = current;
        told.clear();
    }
    const std::string text = rule;
    if (("; " + told + "; ").find("; " + text + "; ") == std::string::npos) {
        told += (told.empty() ? "" : "; ") + text;
        std::printf("[ WINE     ] %s\n", rule);
        std::fflush(stdout);
        ::testing::Test::RecordProperty("wine", told);
    }
    return true;
}

}  // namespace conformance
