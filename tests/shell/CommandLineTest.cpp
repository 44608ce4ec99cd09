#include <gtest/gtest.h>

#include "platform/net/InetControl.h"
#include "shell/CommandLine.h"
#include "shell/UpdateLookupStart.h"
#include "support/TestMachine.h"

namespace {

using shell::ParseCommandLine;
using shell::ProcessState;

const QDate kToday(2026, 11, 23);

struct Parsed {
    bool silent;
    QString message;
    ProcessState state;
};

Parsed parse(const QString& text) {
    Parsed parsed{false, "stale", ProcessState{}};
    parsed.state.languageId = "stale";
    parsed.silent = ParseCommandLine(parsed.state, text, parsed.message, kToday);
    return parsed;
}

TEST(ParseCommandLine, EmptyLineIsSilent) {
    const auto p = parse("");
    EXPECT_TRUE(p.silent);
    EXPECT_EQ(p.state.languageId, "");
    EXPECT_TRUE(p.state.production);
}

// Words for the start-up are unknown switches here: noted, never shown.
TEST(ParseCommandLine, UnknownSwitchesAreNotedSilently) {
    const auto p = parse("/boot /install");
    EXPECT_TRUE(p.silent);
    EXPECT_EQ(p.message, "Ignoring unknown command line argument(s): boot , install");
}

TEST(ParseCommandLine, SwitchesSetTheirFlags) {
    const auto p = parse(
        "/language=EN /NOPRODUCTION /noencryption /Resolve /DELAY5 /FREEZE "
        "/FAILJAPANESEFONTS /L5291 /U5291 /A5291 /DEBUG");
    EXPECT_TRUE(p.silent);
    EXPECT_EQ(p.message, "");
    EXPECT_EQ(p.state.languageId, "en");
    EXPECT_FALSE(p.state.production);
    EXPECT_FALSE(p.state.encryption);
    EXPECT_TRUE(p.state.resolve && p.state.delay && p.state.freeze && p.state.failFonts);
    EXPECT_TRUE(p.state.testModeL5291 && p.state.testModeU5291 && p.state.testModeA5291);
}

// The start-up hands the lookup its fixed key, the all-users data folder and, with A5291 only,
// the server's test path.
TEST(ParseCommandLine, A5291PutsTheLookupOnItsTestPath) {
    testing_support::TestMachine machine;
    platform::net::InetControl inet;
    for (const bool test : {false, true}) {
        scan::modUpdateCOmponent lookup(machine.platform(), inet);
        shell::PrepareUpdateLookup(lookup, parse(test ? "/A5291" : "/U5291").state,
                                   machine.platform());
        EXPECT_EQ(lookup.testFlag(), test);
        EXPECT_EQ(lookup.accessKey(), scan::modUpdateCOmponent::kAccessKey);
        EXPECT_EQ(lookup.dataFolder(), "C:\\ProgramData");
    }
}

// A language of the wrong length is told, and the switches behind it are not read.
TEST(ParseCommandLine, WrongLanguageStopsTheParser) {
    const auto p = parse("/language=eng /NOPRODUCTION");
    EXPECT_FALSE(p.silent);
    EXPECT_EQ(p.message,
              "Error processing command line argument: language=eng  -- using default values");
    EXPECT_EQ(p.state.languageId, "");
    EXPECT_TRUE(p.state.production);

    const auto ignoredFirst = parse("/boot /language=");
    EXPECT_FALSE(ignoredFirst.silent);
    EXPECT_EQ(ignoredFirst.message,
              "Error processing command line argument: language= -- using default values");
}

// Values never hold "/" and only the part before a second "=" counts.
TEST(ParseCommandLine, LoaderValueEndsAtSlashOrSecondEquals) {
    EXPECT_EQ(parse("/LOADER=a=b").state.loaderFileName, "a");
    const auto p = parse("/LOADER=x/y");
    EXPECT_EQ(p.state.loaderFileName, "x");
    EXPECT_EQ(p.message, "Ignoring unknown command line argument(s): y");
    EXPECT_EQ(parse("  loader =  My Loader.ini ").state.loaderFileName, "My Loader.ini");
}

// The code holds the month at positions 3-4 and the day, reversed, at 7-8.
TEST(DebugCode, ValidOnItsDayOnly) {
    EXPECT_TRUE(shell::IsDebugCodeValid("abYUcd32", kToday));
    EXPECT_TRUE(shell::IsDebugCodeValid("xxeazz10", QDate(2027, 12, 1)));
    EXPECT_FALSE(shell::IsDebugCodeValid("abyucd32", kToday.addDays(1)));
    EXPECT_FALSE(shell::IsDebugCodeValid("abgscd32", kToday));
    EXPECT_FALSE(shell::IsDebugCodeValid("abyucd23", kToday));
    EXPECT_FALSE(shell::IsDebugCodeValid("", kToday));
    EXPECT_TRUE(parse("/DX=abyucd32").state.debugUnlock);
    EXPECT_FALSE(parse("/DX=abyucd31").state.debugUnlock);
}

}  // namespace
