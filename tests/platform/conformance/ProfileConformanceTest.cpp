// The INI calls as Windows has them: how a file's lines are read, what a write leaves in the
// file, and that bad files and refused writes do no harm. Files are checked through the
// Profile and FileSystem interfaces only.
#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <utility>

#include "ConformanceTest.h"

namespace {

using conformance::at;
using conformance::wineDiffers;

const std::string kFile = at("\\Settings\\App.ini");
constexpr const char* kNone = "<none>";

// The bytes of a UTF-16 text with its byte-order mark.
std::string utf16(const std::u16string& text, bool bigEndian) {
    std::string bytes = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (char16_t unit : text) {
        const char high = static_cast<char>(unit >> 8);
        const char low = static_cast<char>(unit & 0xFF);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    }
    return bytes;
}

// Wine writes an INI file anew from what it parsed: CRLF line ends, no blank lines, no blanks
// around a key or at the end of a value, nothing after a section's "]".
constexpr const char* kWineRewrites = "an INI write rewrites the whole file";

class ProfileConformance : public conformance::ConformanceTest {
protected:
    explicit ProfileConformance(unsigned codePage = 0) : ConformanceTest(codePage) {}

    platform::Profile& profile() { return machine->platform().profile; }
    platform::FileSystem& files() { return machine->platform().files; }

    // The value as a buffer of size characters takes it; the count must say how many.
    static std::string readWith(platform::Profile& from, const std::string& section,
                                const std::string& key, const std::string& fileName = kFile,
                                const std::string& defaultValue = kNone, std::uint32_t size = 256) {
        std::string value = "<untouched>";
        const auto count =
            from.GetPrivateProfileStringA(section, key, defaultValue, size, &value, fileName);
        EXPECT_EQ(count, value.size()) << value;
        return value;
    }

    std::string read(const std::string& section, const std::string& key,
                     const std::string& fileName = kFile) {
        return readWith(profile(), section, key, fileName);
    }

    // Each key of section with the value it must read as.
    void expectValues(const std::string& section,
                      std::initializer_list<std::pair<const char*, const char*>> values) {
        for (const auto& [key, value] : values) {
            EXPECT_EQ(read(section, key), value) << key;
        }
    }

    bool write(const std::string& section, const std::optional<std::string>& key,
               const std::optional<std::string>& value, const std::string& fileName = kFile) {
        return profile().WritePrivateProfileStringA(section, key, value, fileName);
    }

    std::string bytes(const std::string& fileName = kFile) {
        return files().readFile(fileName).value_or("<missing>");
    }
};

using ProfileConformanceIn1252 = conformance::InCodePage<ProfileConformance, 1252>;
using ProfileConformanceIn1251 = conformance::InCodePage<ProfileConformance, 1251>;

// Lines end at any run of CR and LF; blanks, tabs and Ctrl-Z go from both ends of a line and
// around the key; the first "=" ends the key; a ";" line or one without "=" is no key; one pair
// of matching quotes comes off a value.
TEST_F(ProfileConformance, ReadingTrimsLinesAndTakesOnePairOfQuotesOffTheValue) {
    machine->placeFile(kFile,
                       " \t[ Main ]\x1a \r\n"
                       "  Name \t= \t Value with  inner  blanks \t\x1a\r\r\n\n"
                       "Comment=a ; kept in the value\n"
                       "; Hidden=yes\n"
                       "NoEquals\n"
                       "Equals = a=b\r\n"
                       "Empty=\r\n"
                       "Double=\"quoted\"\r\n"
                       "Single='quoted'\r\n"
                       "Padded=\"  kept  \"\r\n"
                       "Mixed=\"half'\r\n"
                       "Twice=\"\"twice\"\"\r\n"
                       "Lone=\"\r\n"
                       "CrOnly=1\rLfOnly=2");
    expectValues("Main", {{"Name", "Value with  inner  blanks"},
                          {"Comment", "a ; kept in the value"},
                          {"NoEquals", kNone},
                          {"Equals", "a=b"},
                          {"Empty", ""},
                          {"Double", "quoted"},
                          {"Single", "quoted"},
                          {"Padded", "  kept  "},
                          {"Mixed", "\"half'"},
                          {"Twice", "\"twice\""},
                          {"Lone", "\""},
                          {"CrOnly", "1"},
                          {"LfOnly", "2"}});
    const bool keyed = wineDiffers("INI lines that start with \";\" are read as keys");
    EXPECT_EQ(read("Main", "; Hidden"), keyed ? "yes" : kNone);
}

// Sections and keys are found without regard to case, the code page's letters beyond ASCII
// too; keys before the first header are in the section ""; a header runs to the last "]"; the
// first duplicate is read and written, and a write leaves the other lines as they were.
TEST_F(ProfileConformanceIn1252, SectionsAndKeysIgnoreCaseAndTheFirstDuplicateWins) {
    const std::string text =
        "Top=before any header\r\n"
        "[Colors]\r\n"
        "RED=1\r\n"
        "red=2\r\n"
        "[Out]er] ; after the last bracket\r\n"
        "Key=in Out]er\r\n"
        "[Half=open\r\n"
        "[Gr\xF6\xDF"
        "e]\r\n"
        "\xC4rger=umlaut\r\n"
        "[COLORS]\r\n"
        "Red=3\r\n"
        "Blue=4\r\n";
    machine->placeFile(kFile, text);
    EXPECT_EQ(read("", "TOP"), "before any header");
    EXPECT_EQ(read("Colors", "Top"), kNone);
    expectValues("colors", {{"Red", "1"}, {"Blue", kNone}});
    expectValues("Out]er", {{"key", "in Out]er"}, {"[Half", "open"}});
    const bool asciiOnly = wineDiffers("INI names ignore the case of ASCII letters only");
    EXPECT_EQ(read("gR\xD6\xDF"
                   "E",
                   "\xE4RGER"),
              asciiOnly ? kNone : "umlaut");

    ASSERT_TRUE(write("COLORS", "rEd", "9"));
    std::string changed = text;
    changed.replace(changed.find("RED=1"), 5, "RED=9");
    if (wineDiffers(kWineRewrites)) {
        const std::string trailer = " ; after the last bracket";
        changed.erase(changed.find(trailer), trailer.size());
    }
    EXPECT_EQ(bytes(), changed);
}

// A missing file, section or key gives the default without its trailing blanks; a buffer of n
// characters takes n-1 of them, and the count says how many.
TEST_F(ProfileConformance, MissingEntriesGiveTheDefaultAndShortBuffersCutTheAnswer) {
    machine->placeFile(kFile, "[Main]\r\nValue=abcdef\r\n");
    const struct {
        const char* section;
        const char* key;
        const char* defaultValue;
        std::uint32_t size;
        std::string file;
        const char* value;
    } cases[] = {
        {"Main", "Value", "x", 7, kFile, "abcdef"},
        {"Main", "Value", "x", 6, kFile, "abcde"},
        {"Main", "Value", "x", 2, kFile, "a"},
        {"Main", "Value", "x", 1, kFile, ""},
        {"Main", "Missing", "  fallback  ", 64, kFile, "  fallback"},
        {"Other", "Value", "fallback", 64, kFile, "fallback"},
        {"Main", "Value", "fallback", 64, at("\\Settings\\Missing.ini"), "fallback"},
        {"Main", "Value", "fallback", 64, at("\\Nowhere\\App.ini"), "fallback"},
        {"Main", "Value", "fallback", 64, at("\\Settings"), "fallback"},
        {"Main", "Missing", "", 64, kFile, ""},
        {"Main", "Missing", "fallback", 5, kFile, "fall"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(readWith(profile(), c.section, c.key, c.file, c.defaultValue, c.size), c.value)
            << c.key << " into " << c.size;
    }
}

// A write makes a missing file; a new section goes at the end as "[S]" CRLF "k=v" CRLF, a new
// key at the end of its section; a value loses its leading blanks only. Nothing else of the
// file changes.
TEST_F(ProfileConformance, WritingAddsFilesSectionsAndKeysWithoutBlanks) {
    ASSERT_TRUE(files().MkDir(conformance::kFolder) && files().MkDir(at("\\Settings")));
    ASSERT_TRUE(write("Main", "Name", "Value"));
    EXPECT_EQ(bytes(), "[Main]\r\nName=Value\r\n");
    ASSERT_TRUE(write("Other", "Key", "x"));
    ASSERT_TRUE(write("main", "Padded", " \t leading gone, trailing kept  "));
    ASSERT_TRUE(write("Main", "Empty", ""));
    ASSERT_TRUE(write("MAIN", "NAME", "Changed"));
    const std::string padded = wineDiffers(kWineRewrites)
                                   ? "Padded=leading gone, trailing kept\r\n"
                                   : "Padded=leading gone, trailing kept  \r\n";
    EXPECT_EQ(bytes(), "[Main]\r\nName=Changed\r\n" + padded + "Empty=\r\n[Other]\r\nKey=x\r\n");
    expectValues("Main", {{"Padded", "leading gone, trailing kept"}, {"Empty", ""}});

    // Lines of no key stay where they are; blank lines stay after the section's last line.
    machine->placeFile(kFile,
                       "top=1\n[A]\n; note\n  Old  =  value ; comment\nloose line\n\n\n[B]\nb=1");
    ASSERT_TRUE(write("", "top2", "2"));
    ASSERT_TRUE(write("a", "new", "n"));
    ASSERT_TRUE(write("A", "old", "replaced"));
    ASSERT_TRUE(write("B", "c", "3"));
    ASSERT_TRUE(write("C", "d", "4"));
    EXPECT_EQ(bytes(), wineDiffers(kWineRewrites)
                           ? "top=1\r\ntop2=2\r\n[A]\r\n; note\r\nOld=replaced\r\nloose line\r\n"
                             "new=n\r\n[B]\r\nb=1\r\nc=3\r\n[C]\r\nd=4\r\n"
                           : "top=1\r\ntop2=2\n[A]\n; note\n  Old=replaced\nloose line\r\nnew=n\n"
                             "\n\n[B]\nb=1\r\nc=3\r\n[C]\r\nd=4\r\n");
}

// A write without a value deletes the key, one without a key the section with its lines; what
// is not there is no failure, and a missing file stays missing.
TEST_F(ProfileConformance, NoKeyDeletesTheSectionAndNoValueTheKey) {
    const std::string text =
        "k=top\r\n[A]\r\nx=1\r\n\r\ny=2\r\n; about A\r\n[B]\r\nz=3\r\n[a]\r\nx=second\r\n";
    machine->placeFile(kFile, text);

    // Nothing to delete: the file stays as it is, and a missing one is not made.
    EXPECT_TRUE(write("A", "Missing", std::nullopt));
    EXPECT_TRUE(write("Missing", std::nullopt, std::nullopt));
    EXPECT_EQ(bytes(), text);
    EXPECT_TRUE(write("A", "x", std::nullopt, at("\\Settings\\None.ini")));
    EXPECT_FALSE(files().FileExists(at("\\Settings\\None.ini")));

    ASSERT_TRUE(write("a", "X", std::nullopt));
    expectValues("A", {{"x", kNone}, {"y", "2"}});
    ASSERT_TRUE(write("b", "z", std::nullopt));
    ASSERT_TRUE(write("", "K", std::nullopt));
    // A key goes with one line break: the blank line after it stays.
    const std::string blankLine = wineDiffers(kWineRewrites) ? "" : "\r\n";
    EXPECT_EQ(bytes(), "[A]\r\n" + blankLine + "y=2\r\n; about A\r\n[B]\r\n[a]\r\nx=second\r\n");

    // The first of two sections goes with its comments; the second then counts.
    ASSERT_TRUE(write("A", std::nullopt, "ignored"));
    EXPECT_EQ(bytes(), "[B]\r\n[a]\r\nx=second\r\n");
    EXPECT_EQ(read("A", "x"), "second");
}

// A file with a UTF-8 or UTF-16 byte-order mark is read and written back in its encoding;
// other files, and new ones, are ANSI.
TEST_F(ProfileConformanceIn1252, FilesWithAByteOrderMarkKeepTheirEncoding) {
    const std::u16string text = u"[Main]\r\nName=Gr\u00FC\u00DFe\r\nSnow=\u2603\r\n";
    const std::u16string written = u"[Main]\r\nName=caf\u00E9\r\nSnow=\u2603\r\n";
    const struct {
        const char* name;
        std::string before;
        std::string after;
    } encodings[] = {
        {"UTF-8",
         "\xEF\xBB\xBF[Main]\r\nName=Gr\xC3\xBC\xC3\x9F"
         "e\r\nSnow=\xE2\x98\x83\r\n",
         "\xEF\xBB\xBF[Main]\r\nName=caf\xC3\xA9\r\nSnow=\xE2\x98\x83\r\n"},
        {"UTF-16LE", utf16(text, false), utf16(written, false)},
        {"UTF-16BE", utf16(text, true), utf16(written, true)},
    };
    for (const auto& encoding : encodings) {
        SCOPED_TRACE(encoding.name);
        machine->placeFile(kFile, encoding.before);
        expectValues("main", {{"name",
                               "Gr\xFC\xDF"
                               "e"},
                              {"Snow", "?"}});
        ASSERT_TRUE(write("Main", "Name", "caf\xE9"));
        EXPECT_EQ(bytes(), encoding.after);
    }

    // Other files, new ones too, are the machine's code page, byte for byte; a byte the code
    // page leaves undefined survives a rewrite.
    const std::string ansi =
        "[Main]\r\nOdd=\x81\x8D\r\nUtf8=Gr\xC3\xBC\xC3\x9F"
        "e\r\n";
    machine->placeFile(kFile, ansi);
    EXPECT_EQ(read("Main", "Utf8"),
              "Gr\xC3\xBC\xC3\x9F"
              "e");
    ASSERT_TRUE(write("Main", "Name", "caf\xE9"));
    EXPECT_EQ(bytes(), ansi + "Name=caf\xE9\r\n");
    ASSERT_TRUE(write("Main", "Name", "caf\xE9", at("\\Settings\\New.ini")));
    EXPECT_EQ(bytes(at("\\Settings\\New.ini")), "[Main]\r\nName=caf\xE9\r\n");
}

// A UTF-8 file's text comes out in the machine's code page, whichever that is.
TEST_F(ProfileConformanceIn1251, Utf8FilesReadInTheAnsiCodePage) {
    machine->placeFile(kFile, "\xEF\xBB\xBF[Main]\r\nHello=\xD0\x9F\xD1\x80\xD0\xB8\r\n");
    EXPECT_EQ(read("Main", "Hello"), "\xCF\xF0\xE8");
}

// A read-only file, a missing folder or a folder in the file's place refuse the write, and
// the file stays as it was.
TEST_F(ProfileConformance, RefusedWritesLeaveTheFileAsItWas) {
    const std::string text = "[Main]\r\nName=Value\r\n";
    machine->placeFile(kFile, text);
    ASSERT_TRUE(files().SetAttr(kFile, platform::fileattr::ReadOnly));
    EXPECT_FALSE(write("Main", "Name", "Changed"));
    EXPECT_FALSE(write("Main", "New", "x"));
    EXPECT_FALSE(write("Main", "Name", std::nullopt));
    EXPECT_FALSE(write("Main", std::nullopt, std::nullopt));
    EXPECT_EQ(bytes(), text);
    EXPECT_EQ(read("Main", "Name"), "Value");

    EXPECT_FALSE(write("Main", "Name", "x", at("\\Nowhere\\App.ini")));
    EXPECT_FALSE(files().FolderExists(at("\\Nowhere")));
    EXPECT_FALSE(write("Main", "Name", "x", at("\\Settings")));
}

// A file name without a folder names a file of the Windows folder, for reads and writes.
TEST_F(ProfileConformance, ANameAloneIsAFileOfTheWindowsFolder) {
    std::string windowsFolder;
    ASSERT_EQ(
        machine->platform().environment.SHGetFolderPathA(platform::csidl::Windows, &windowsFolder),
        0);
    const std::string name = "Tallowick Conformance.ini";
    const std::string file = windowsFolder + "\\" + name;
    // What a run that ended early left behind.
    files().Kill(file);
    ASSERT_TRUE(write("Main", "Name", "written", name));
    EXPECT_EQ(bytes(file), "[Main]\r\nName=written\r\n");
    machine->placeFile(file, "[Main]\r\nName=placed\r\n");
    EXPECT_EQ(read("Main", "Name", name), "placed");
    EXPECT_TRUE(files().Kill(file));
}

// Without the right to write into the folder, neither a change nor a new file is written.
TEST_F(ProfileConformance, AFolderTheUserMayNotWriteIntoRefusesWrites) {
    const std::string text = "[Main]\r\nName=Value\r\n";
    machine->placeFile(at("\\Locked\\App.ini"), text);
    if (!machine->denyWrites(at("\\Locked"), true)) {
        GTEST_SKIP() << "needs a computer where the tests may take away their own write access";
    }
    EXPECT_FALSE(write("Main", "Name", "Changed", at("\\Locked\\App.ini")));
    EXPECT_FALSE(write("Main", "Name", "x", at("\\Locked\\New.ini")));
    ASSERT_TRUE(machine->denyWrites(at("\\Locked"), false));
    EXPECT_EQ(bytes(at("\\Locked\\App.ini")), text);
    EXPECT_FALSE(files().FileExists(at("\\Locked\\New.ini")));
}

// Nothing is kept between calls, so each process sees the other's writes and edits made to
// the file by any other means at its next call.
TEST_F(ProfileConformance, SettingsWrittenHereReadBackInASecondProcess) {
    const auto other = machine->secondProcess();
    ASSERT_TRUE(other);
    platform::Profile& second = other->platform().profile;

    ASSERT_TRUE(files().MkDir(conformance::kFolder) && files().MkDir(at("\\Settings")));
    ASSERT_TRUE(write("Main", "Name", "first"));
    EXPECT_EQ(readWith(second, "Main", "Name"), "first");
    ASSERT_TRUE(second.WritePrivateProfileStringA("Main", "Name", "second", kFile));
    EXPECT_EQ(read("Main", "Name"), "second");

    machine->placeFile(kFile, "[Main]\r\nName=edited\r\n");
    EXPECT_EQ(read("Main", "Name"), "edited");
    EXPECT_EQ(readWith(second, "Main", "Name"), "edited");
    ASSERT_TRUE(files().Kill(kFile));
    EXPECT_EQ(readWith(second, "Main", "Name"), kNone);
}

// Any bytes read as a file of lines: nothing breaks, and the lines that are keys are found.
TEST_F(ProfileConformance, BadFilesNeverCrashAndKeepTheirReadableKeys) {
    std::mt19937 random(7);
    std::string garbage(64 * 1024, '\0');
    for (char& byte : garbage) {
        byte = static_cast<char>(random());
    }
    for (const std::string& start : {std::string(), std::string("\xEF\xBB\xBF"),
                                     std::string("\xFF\xFE"), std::string("\xFE\xFF")}) {
        machine->placeFile(kFile, start + garbage);
        std::string value;
        EXPECT_LE(profile().GetPrivateProfileStringA("Main", "Name", "d", 8, &value, kFile), 7u);
        ASSERT_TRUE(write("Written", "Key", "value"));
        EXPECT_EQ(read("Written", "Key"), "value");
    }

    // Mixed encodings: latin-1 bytes and UTF-16 inside a UTF-8 file, an odd UTF-16 length.
    machine->placeFile(kFile, std::string("\xEF\xBB\xBF[Main]\n\xE9t\xE9=\xFF\xFE\0x\0\n", 20) +
                                  "Name=ok\n[\n=\n[]]]\n;\n=only value\n");
    expectValues("Main", {{"Name", "ok"}});
    EXPECT_EQ(read("", "Name"), kNone);
    machine->placeFile(kFile, utf16(u"[Main]\r\nName=ok\r\n", false) + "\x01");
    EXPECT_EQ(read("Main", "Name"), "ok");
    machine->placeFile(kFile, "\xFF\xFE");
    EXPECT_EQ(read("Main", "Name"), kNone);

    // No sections at all: every key is in the section "".
    machine->placeFile(kFile, "a=1\nb=2");
    EXPECT_EQ(read("", "b"), "2");
    EXPECT_EQ(read("Main", "a"), kNone);
}

}  // namespace
