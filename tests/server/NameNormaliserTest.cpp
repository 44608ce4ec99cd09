// The words the match compares, for names and publishers as real installers write them.
#include <gtest/gtest.h>

#include "server/NameNormaliser.h"

namespace {

using server::nameWords;

std::string words(const QString& name) {
    return nameWords(name).join(' ').toStdString();
}

TEST(NameNormaliserTest, InstallerNamesLoseVersionsArchitecturesAndBrackets) {
    const std::pair<const char*, const char*> cases[] = {
        {"3CX Call Flow Designer (x64)", "3cx call flow designer"},
        {"Altova MissionKit 2025 Enterprise Edition 2025.02.00.02",
         "altova missionkit 2025 enterprise edition"},
        {"Mozilla Firefox (x64 en-US)", "mozilla firefox"},
        {"Mozilla Firefox ESR (ia) 128.13.0", "mozilla firefox esr"},
        {"7-Zip 24.08 (x64)", "7 zip"},
        {"AirGame 1.7.7-x64", "airgame"},
        {"VLC media player v3.0.21 win64", "vlc media player"},
        {"Foo Tool 8.0.1-beta [nightly]", "foo tool"},
        {"Java 8 Update 421 (64-bit)", "java 8 update 421"},
        {"Microsoft Visual C++ 2015-2022 Redistributable - x86_64",
         "microsoft visual c 2015 2022 redistributable"},
        {"Benthic Software: Golden 6.x", "benthic software golden 6 x"},
        // Nothing but a version or a bracket: the words are kept.
        {"(x64)", "x64"},
        {"2048", "2048"},
        // "?" stands for a character the code page lost and stays in its word.
        {"QQ?????", "qq?????"},
        {"Caf\u00e9 \u00c9crit", "caf\u00e9 \u00e9crit"}};
    for (const auto& [name, expected] : cases) {
        EXPECT_EQ(words(QString::fromUtf8(name)), expected) << name;
    }
    EXPECT_EQ(server::fullNameWords(u"Mozilla Firefox (cy) (x64)").join(' '), "mozilla firefox cy");
    EXPECT_EQ(server::matchKey(nameWords(u"DiffDog Server")),
              server::matchKey(nameWords(u"Diff Dog Server")));
}

TEST(NameNormaliserTest, LooseWordsDropEditionsAndLoneNumbers) {
    const auto loose = [](const char* name) {
        return server::looseWords(nameWords(QString::fromUtf8(name))).join(' ').toStdString();
    };
    EXPECT_EQ(loose("Batch File Manager Free Edition"), "batch file manager");
    EXPECT_EQ(loose("DirectX End-User Runtime Web Installer 9.29.1974.1"),
              "directx end user runtime");
    EXPECT_EQ(loose("GSview 5"), "gsview");
    EXPECT_EQ(loose("Portable 2"), "portable 2");  // nothing would be left
}

TEST(NameNormaliserTest, PublishersLoseLegalFormsAndRelateByContaining) {
    const std::pair<const char*, const char*> cases[] = {{"Mozilla Corporation", "mozilla"},
                                                         {"3CX s.r.o.", "3cx"},
                                                         {"Altova AB", "altova"},
                                                         {"Elcomsoft B.V.", "elcomsoft"},
                                                         {"Slack Technologies, LLC", "slack"},
                                                         {"Piriform Software Ltd", "piriform"},
                                                         {"Software AG", "softwareag"},
                                                         {"Don't Panic GmbH & Co. KG", "dontpanic"},
                                                         {"Amazon.com, Inc.", "amazoncom"},
                                                         {"Ghostgum Software Pty Ltd", "ghostgum"}};
    for (const auto& [publisher, key] : cases) {
        EXPECT_EQ(server::publisherKey(QString::fromUtf8(publisher)).toStdString(), key)
            << publisher;
    }
    EXPECT_TRUE(server::publishersRelate("amazoncom", "amazon"));
    EXPECT_TRUE(server::publishersRelate("slack", "slacktechnologies"));
    EXPECT_TRUE(server::publishersRelate("dw", "dw"));
    EXPECT_FALSE(server::publishersRelate("ab", "abbott"));  // too short to contain
    EXPECT_FALSE(server::publishersRelate("", ""));
    EXPECT_FALSE(server::publishersRelate("igorpavlov", "7zip"));
}

}  // namespace
