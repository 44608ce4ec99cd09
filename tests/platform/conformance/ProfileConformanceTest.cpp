// The INI calls as Windows has them: how a file's lines are read, what a write leaves in the
// file, and that bad files and refused writes do no harm. Files are checked through the
// Profile and FileSystem interfaces only.
#include <random>

#include "ConformanceTest.h"

namespace {

using namespace conformance;
using Writes = std::initializer_list<std::tuple<const char*, const char*, const char*>>;

const std::string kFile = at("\\Settings\\App.ini");
constexpr const char* kNone = "<none>";

// Wine writes an INI file anew from what it parsed: CRLF line ends, no blank lines, no blanks
// around a key or at the end of a value, nothing after a section's "]".
constexpr const char* kWineRewrites = "an INI write rewrites the whole file";

class ProfileConformance : public ConformanceTest {
protected:
    explicit ProfileConformance(unsigned codePage = 0) : ConformanceTest(codePage) {}

    // The value as a buffer of size characters takes it; the count must say how many.
    static std::string readWith(platform::Profile& from, const std::string& section,
                                const std::string& key, const std::string& file = kFile,
                                const std::string& defaultValue = kNone, std::uint32_t size = 256) {
        std::string value = "<untouched>";
        const auto count =
            from.GetPrivateProfileStringA(section, key, defaultValue, size, &value, file);
        EXPECT_EQ(count, value.size()) << value;
        return value;
    }

    // The values of keys of a section, "|" between them.
    std::string read(const std::string& section, std::initializer_list<const char*> keys) {
        std::string values;
        for (const char* key : keys) {
            values += readWith(os().profile, section, key) + "|";
        }
        return values.substr(0, values.size() - 1);
    }

    // Writes in turn while they succeed; no key or no value where nullptr.
    bool write(Writes writes, const std::string& file = kFile) {
        const auto given = [](const char* text) {
            return text ? std::optional<std::string>(text) : std::nullopt;
        };
        for (const auto& [section, key, value] : writes) {
            if (!os().profile.WritePrivateProfileStringA(section, given(key), given(value), file)) {
                return false;
            }
        }
        return true;
    }

    std::string bytes(const std::string& file = kFile) {
        return files().readFile(file).value_or("<missing>");
    }
};

using ProfileConformanceIn1252 = InCodePage<ProfileConformance, 1252>;
using ProfileConformanceIn1251 = InCodePage<ProfileConformance, 1251>;

// Lines end at any run of CR and LF; blanks, tabs and Ctrl-Z go from both ends of a line and
// around the key; the first "=" ends the key; a ";" line or one without "=" is no key; one pair
// of matching quotes comes off a value.
TEST_F(ProfileConformance, ReadingTrimsLinesAndTakesOnePairOfQuotesOffTheValue) {
    machine->placeFile(kFile,
                       " \t[ Main ]\x1a \r\n  Name \t= \t Value with  inner  blanks \t\x1a\r\r\n\n"
                       "Comment=a ; kept in the value\n; Hidden=yes\nNoEquals\nEquals = a=b\r\n"
                       "Empty=\r\nDouble=\"quoted\"\r\nSingle='quoted'\r\nPadded=\"  kept  \"\r\n"
                       "Mixed=\"half'\r\nTwice=\"\"twice\"\"\r\nLone=\"\r\nCrOnly=1\rLfOnly=2");
    EXPECT_EQ(read("Main", {"Name", "Comment", "NoEquals", "Equals", "Empty", "Double", "Single",
                            "Padded", "Mixed", "Twice", "Lone", "CrOnly", "LfOnly"}),
              "Value with  inner  blanks|a ; kept in the value|<none>|a=b||quoted|quoted|  kept  "
              "|\"half'|\"twice\"|\"|1|2");
    const bool keyed = wineDiffers("INI lines that start with \";\" are read as keys");
    EXPECT_EQ(read("Main", {"; Hidden"}), keyed ? "yes" : kNone);
}

// Sections and keys are found without regard to case, the code page's letters beyond ASCII
// too; keys before the first header are in the section ""; a header runs to the last "]"; the
// first duplicate is read and written, and a write leaves the other lines as they were.
TEST_F(ProfileConformanceIn1252, SectionsAndKeysIgnoreCaseAndTheFirstDuplicateWins) {
    const std::string text =
        "Top=before any header\r\n[Colors]\r\nRED=1\r\nred=2\r\n[Out]er] ; after the last "
        "bracket\r\nKey=in Out]er\r\n[Half=open\r\n[\xD6l]\r\n\xC4rger=umlaut\r\n"
        "[COLORS]\r\nRed=3\r\nBlue=4\r\n";
    machine->placeFile(kFile, text);
    EXPECT_EQ(read("", {"TOP"}) + read("colors", {"Top", "Red", "Blue"}) +
                  read("Out]er", {"key", "[Half"}),
              "before any header<none>|1|<none>in Out]er|open");
    const bool asciiOnly = wineDiffers("INI names ignore the case of ASCII letters only");
    EXPECT_EQ(read("\xF6L", {"\xE4RGER"}), asciiOnly ? kNone : "umlaut");

    ASSERT_TRUE(write({{"COLORS", "rEd", "9"}}));
    std::string changed = text;
    changed.replace(changed.find("RED=1"), 5, "RED=9");
    if (wineDiffers(kWineRewrites)) {
        changed.erase(changed.find(" ; after the last bracket"), 25);
    }
    EXPECT_EQ(bytes(), changed);
}

// A missing file, section or key gives the default without its trailing blanks; a buffer of n
// characters takes n-1 of them, and the count says how many.
TEST_F(ProfileConformance, MissingEntriesGiveTheDefaultAndShortBuffersCutTheAnswer) {
    machine->placeFile(kFile, "[Main]\r\nValue=abcdef\r\n");
    // Section, key, default, buffer size, file, the answer.
    const std::tuple<const char*, const char*, const char*, std::uint32_t, std::string, const char*>
        cases[] = {{"Main", "Value", "x", 7, kFile, "abcdef"},
                   {"Main", "Value", "x", 6, kFile, "abcde"},
                   {"Main", "Value", "x", 2, kFile, "a"},
                   {"Main", "Value", "x", 1, kFile, ""},
                   {"Main", "Missing", "  fallback  ", 64, kFile, "  fallback"},
                   {"Other", "Value", "fallback", 64, kFile, "fallback"},
                   {"Main", "Value", "fallback", 64, at("\\Settings\\Missing.ini"), "fallback"},
                   {"Main", "Value", "fallback", 64, at("\\Nowhere\\App.ini"), "fallback"},
                   {"Main", "Value", "fallback", 64, at("\\Settings"), "fallback"},
                   {"Main", "Missing", "", 64, kFile, ""},
                   {"Main", "Missing", "fallback", 5, kFile, "fall"}};
    for (const auto& [section, key, defaultValue, size, file, value] : cases) {
        EXPECT_EQ(readWith(os().profile, section, key, file, defaultValue, size), value)
            << key << " into " << size;
    }
}

// A write makes a missing file; a new section goes at the end as "[S]" CRLF "k=v" CRLF, a new
// key at the end of its section; a value loses its leading blanks only. Nothing else of the
// file changes: lines of no key stay where they are, blank lines stay after the section's
// last line.
TEST_F(ProfileConformance, WritingAddsFilesSectionsAndKeysWithoutBlanks) {
    ASSERT_TRUE(files().MkDir(kFolder) && files().MkDir(at("\\Settings")));
    ASSERT_TRUE(write({{"Main", "Name", "Value"}}));
    EXPECT_EQ(bytes(), "[Main]\r\nName=Value\r\n");
    ASSERT_TRUE(write({{"Other", "Key", "x"},
                       {"main", "Padded", " \t leading gone, trailing kept  "},
                       {"Main", "Empty", ""},
                       {"MAIN", "NAME", "Changed"}}));
    const bool rewrites = wineDiffers(kWineRewrites);
    EXPECT_EQ(bytes(), "[Main]\r\nName=Changed\r\nPadded=leading gone, trailing kept" +
                           std::string(rewrites ? "" : "  ") +
                           "\r\nEmpty=\r\n[Other]\r\nKey=x\r\n");

    machine->placeFile(kFile,
                       "top=1\n[A]\n; note\n  Old  =  value ; comment\nloose line\n\n\n[B]\nb=1");
    ASSERT_TRUE(write({{"", "top2", "2"},
                       {"a", "new", "n"},
                       {"A", "old", "replaced"},
                       {"B", "c", "3"},
                       {"C", "d", "4"}}));
    EXPECT_EQ(bytes(), rewrites
                           ? "top=1\r\ntop2=2\r\n[A]\r\n; note\r\nOld=replaced\r\nloose line\r\n"
                             "new=n\r\n[B]\r\nb=1\r\nc=3\r\n[C]\r\nd=4\r\n"
                           : "top=1\r\ntop2=2\n[A]\n; note\n  Old=replaced\nloose line\r\nnew=n\n"
                             "\n\n[B]\nb=1\r\nc=3\r\n[C]\r\nd=4\r\n");
}

// A write without a value deletes the key, one without a key the section with its lines and
// comments, after which a second section of its name counts; what is not there is no failure,
// and a missing file stays missing. A key goes with one line break: the blank line after it
// stays.
TEST_F(ProfileConformance, NoKeyDeletesTheSectionAndNoValueTheKey) {
    const std::string text =
        "k=top\r\n[A]\r\nx=1\r\n\r\ny=2\r\n; about A\r\n[B]\r\nz=3\r\n[a]\r\nx=second\r\n";
    machine->placeFile(kFile, text);
    EXPECT_TRUE(write({{"A", "Missing", nullptr}, {"Missing", nullptr, nullptr}}));
    EXPECT_EQ(bytes(), text);
    EXPECT_TRUE(write({{"A", "x", nullptr}}, at("\\Settings\\None.ini")));
    EXPECT_FALSE(files().FileExists(at("\\Settings\\None.ini")));

    ASSERT_TRUE(write({{"a", "X", nullptr}, {"b", "z", nullptr}, {"", "K", nullptr}}));
    const std::string blankLine = wineDiffers(kWineRewrites) ? "" : "\r\n";
    EXPECT_EQ(bytes(), "[A]\r\n" + blankLine + "y=2\r\n; about A\r\n[B]\r\n[a]\r\nx=second\r\n");
    ASSERT_TRUE(write({{"A", nullptr, "ignored"}}));
    EXPECT_EQ(bytes(), "[B]\r\n[a]\r\nx=second\r\n");
    EXPECT_EQ(read("A", {"x"}), "second");
}

// A file with a UTF-8 or UTF-16 byte-order mark is read and written back in its encoding;
// other files, and new ones, are the machine's code page, byte for byte, and a byte the code
// page leaves undefined survives a rewrite.
TEST_F(ProfileConformanceIn1252, FilesWithAByteOrderMarkKeepTheirEncoding) {
    const std::u16string text = u"[Main]\r\nName=S\u00FC\u00DF\r\nSnow=\u2603\r\n";
    const std::u16string written = u"[Main]\r\nName=caf\u00E9\r\nSnow=\u2603\r\n";
    const std::tuple<const char*, std::string, std::string> encodings[] = {
        {"UTF-8", "\xEF\xBB\xBF[Main]\r\nName=S\xC3\xBC\xC3\x9F\r\nSnow=\xE2\x98\x83\r\n",
         "\xEF\xBB\xBF[Main]\r\nName=caf\xC3\xA9\r\nSnow=\xE2\x98\x83\r\n"},
        {"UTF-16LE", "\xFF\xFE" + utf16(text), "\xFF\xFE" + utf16(written)},
        {"UTF-16BE", "\xFE\xFF" + utf16(text, true), "\xFE\xFF" + utf16(written, true)}};
    for (const auto& [name, before, after] : encodings) {
        machine->placeFile(kFile, before);
        EXPECT_EQ(read("main", {"name", "Snow"}), "S\xFC\xDF|?") << name;
        ASSERT_TRUE(write({{"Main", "Name", "caf\xE9"}}));
        EXPECT_EQ(bytes(), after) << name;
    }

    const std::string ansi = "[Main]\r\nOdd=\x81\x8D\r\nUtf8=S\xC3\xBC\xC3\x9F\r\n";
    machine->placeFile(kFile, ansi);
    EXPECT_EQ(read("Main", {"Utf8"}), "S\xC3\xBC\xC3\x9F");
    ASSERT_TRUE(write({{"Main", "Name", "caf\xE9"}}));
    EXPECT_EQ(bytes(), ansi + "Name=caf\xE9\r\n");
    ASSERT_TRUE(write({{"Main", "Name", "caf\xE9"}}, at("\\Settings\\New.ini")));
    EXPECT_EQ(bytes(at("\\Settings\\New.ini")), "[Main]\r\nName=caf\xE9\r\n");
}

// A UTF-8 file's text comes out in the machine's code page, whichever that is.
TEST_F(ProfileConformanceIn1251, Utf8FilesReadInTheAnsiCodePage) {
    machine->placeFile(kFile, "\xEF\xBB\xBF[Main]\r\nHello=\xD0\x9F\xD1\x80\xD0\xB8\r\n");
    EXPECT_EQ(read("Main", {"Hello"}), "\xCF\xF0\xE8");
}

// A read-only file, a missing folder or a folder in the file's place refuse the write, and
// the file stays as it was; so does a folder the user may not write into, for a change and a
// new file alike.
TEST_F(ProfileConformance, RefusedWritesLeaveTheFileAsItWas) {
    const std::string text = "[Main]\r\nName=Value\r\n";
    machine->placeFile(kFile, text);
    ASSERT_TRUE(files().SetAttr(kFile, platform::fileattr::ReadOnly));
    for (const auto& refused : {std::tuple("Main", "Name", "Changed"),
                                {"Main", "New", "x"},
                                {"Main", "Name", nullptr},
                                {"Main", nullptr, nullptr}}) {
        EXPECT_FALSE(write({refused}));
    }
    EXPECT_EQ(bytes(), text);
    EXPECT_FALSE(write({{"Main", "Name", "x"}}, at("\\Nowhere\\App.ini")));
    EXPECT_FALSE(files().FolderExists(at("\\Nowhere")));
    EXPECT_FALSE(write({{"Main", "Name", "x"}}, at("\\Settings")));

    machine->placeFile(at("\\Locked\\App.ini"), text);
    if (!machine->denyWrites(at("\\Locked"), true)) {
        GTEST_SKIP() << "needs a computer where the tests may take away their own write access";
    }
    EXPECT_FALSE(write({{"Main", "Name", "Changed"}}, at("\\Locked\\App.ini")));
    EXPECT_FALSE(write({{"Main", "Name", "x"}}, at("\\Locked\\New.ini")));
    ASSERT_TRUE(machine->denyWrites(at("\\Locked"), false));
    EXPECT_EQ(holds({"\\Locked\\App.ini", "\\Locked\\New.ini"}), text + "|-");
}

// A file name without a folder names a file of the Windows folder, for reads and writes.
TEST_F(ProfileConformance, ANameAloneIsAFileOfTheWindowsFolder) {
    std::string windowsFolder;
    ASSERT_EQ(os().environment.SHGetFolderPathA(platform::csidl::Windows, &windowsFolder), 0);
    const std::string name = "Tallowick Conformance.ini";
    const std::string file = windowsFolder + "\\" + name;
    // What a run that ended early left behind.
    files().Kill(file);
    ASSERT_TRUE(write({{"Main", "Name", "written"}}, name));
    EXPECT_EQ(bytes(file), "[Main]\r\nName=written\r\n");
    machine->placeFile(file, "[Main]\r\nName=placed\r\n");
    EXPECT_EQ(readWith(os().profile, "Main", "Name", name), "placed");
    EXPECT_TRUE(files().Kill(file));
}

// Nothing is kept between calls, so each process sees the other's writes and edits made to
// the file by any other means at its next call.
TEST_F(ProfileConformance, SettingsWrittenHereReadBackInASecondProcess) {
    const auto other = machine->secondProcess();
    platform::Profile& second = other->platform().profile;
    ASSERT_TRUE(files().MkDir(kFolder) && files().MkDir(at("\\Settings")));
    ASSERT_TRUE(write({{"Main", "Name", "first"}}));
    EXPECT_EQ(readWith(second, "Main", "Name"), "first");
    ASSERT_TRUE(second.WritePrivateProfileStringA("Main", "Name", "second", kFile));
    EXPECT_EQ(read("Main", {"Name"}), "second");
    machine->placeFile(kFile, "[Main]\r\nName=edited\r\n");
    EXPECT_EQ(read("Main", {"Name"}) + readWith(second, "Main", "Name"), "editededited");
    ASSERT_TRUE(files().Kill(kFile));
    EXPECT_EQ(readWith(second, "Main", "Name"), kNone);
}

// Any bytes read as a file of lines: nothing breaks, and the lines that are keys are found,
// in mixed encodings too (latin-1 bytes and UTF-16 inside a UTF-8 file, an odd UTF-16
// length). Without a header every key is in the section "".
TEST_F(ProfileConformance, BadFilesNeverCrashAndKeepTheirReadableKeys) {
    std::mt19937 random(7);
    std::string garbage(64 * 1024, '\0');
    for (char& byte : garbage) {
        byte = static_cast<char>(random());
    }
    for (const std::string start : {"", "\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF"}) {
        machine->placeFile(kFile, start + garbage);
        std::string value;
        EXPECT_LE(os().profile.GetPrivateProfileStringA("Main", "Name", "d", 8, &value, kFile), 7u);
        ASSERT_TRUE(write({{"Written", "Key", "value"}}));
        EXPECT_EQ(read("Written", {"Key"}), "value");
    }
    const std::string mixed = std::string("\xEF\xBB\xBF[Main]\n\xE9t\xE9=\xFF\xFE\0x\0\n", 20) +
                              "Name=ok\n[\n=\n[]]]\n;\n=only value\n";
    // A file and what Name of Main and of "" read as.
    const std::pair<std::string, const char*> cases[] = {
        {mixed, "ok|<none>"},
        {"\xFF\xFE" + utf16(u"[Main]\r\nName=ok\r\n") + "\x01", "ok|<none>"},
        {"\xFF\xFE", "<none>|<none>"},
        {"a=1\nName=2", "<none>|2"}};
    for (const auto& [text, values] : cases) {
        machine->placeFile(kFile, text);
        EXPECT_EQ(read("Main", {"Name"}) + "|" + read("", {"Name"}), values) << text;
    }
}

}  // namespace
