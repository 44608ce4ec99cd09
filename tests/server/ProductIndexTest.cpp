// The match in process: which product each rule picks among products that share a name, and
// the share of the demo machine's programs found in the full catalog.
#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "ServerHarness.h"
#include "demo/CatalogCsv.h"
#include "server/ProductIndex.h"
#include "server/Windows1252.h"
#include "support/ProgramRun.h"

namespace {

using server::CatalogProduct;
using server::ProductIndex;

CatalogProduct product(const char* packageId, const char* name, const char* version) {
    return server::productFromEntry({packageId, version, name, "2026-08-01 00:00:00Z"});
}

class ProductIndexTest : public ::testing::Test {
protected:
    // The identifier of the product found, "unknown" or "ambiguous".
    std::string find(const char* name, const char* publisher = "", const char* version = "") {
        const ProductIndex::Match match =
            index.find(QString::fromUtf8(name), QString::fromUtf8(publisher), version);
        return match.outcome == ProductIndex::Outcome::Found
                   ? match.product->packageId.toStdString()
               : match.outcome == ProductIndex::Outcome::Unknown ? "unknown"
                                                                 : "ambiguous";
    }

    ProductIndex index{
        {product("Mozilla.Firefox", "Mozilla Firefox (en-US)", "153.0.4"),
         product("Mozilla.Firefox.cy", "Mozilla Firefox (cy)", "154.0"),
         product("IBM.Semeru.21.JDK", "IBM Semeru Runtime Open Edition (JDK)", "21.0.12.0"),
         product("IBM.Semeru.21.JRE", "IBM Semeru Runtime Open Edition (JRE)", "21.0.12.0"),
         product("Amazon.Corretto.8.JDK", "Amazon Corretto 8", "1.8.0.472"),
         product("Python.Python.3.11", "Python 3.11", "3.11.9"),
         product("Python.Python.3.12", "Python 3.12", "3.12.10"),
         product("SlackTechnologies.Slack.Beta", "Slack Beta", "4.47.50"),
         product("JetBrains.GoLand.EAP", "GoLand (EAP)", "262.1"),
         product("Microsoft.VisualStudio.2022.Enterprise", "Visual Studio Enterprise 2022",
                 "17.14"),
         product("Kiwix.WikiMed", "WikiMed by Kiwix", "3.8.4.0"),
         product("Kiwix.WikiMed.Electron", "WikiMed by Kiwix", "3.8.4-E"),
         product("Altova.DiffDogServer.2025", "Altova DiffDog Server", "2025.02.00.01"),
         product("Altova.DiffDogServer.2026", "Altova DiffDog Server", "2026.02.00"),
         product("AGProjects.Blink", "Blink", "6.0.3"),
         product("SuperSmashing.Blink", "Blink", "3.7.9"),
         product("Min.Min", "Min", "1.35.1"),
         product("MinBrowser.Min", "Min", "1.35.6"),
         product("TriliumNext.Notes", "TriliumNext Notes", "0.90"),
         product("Microsoft.DirectX", "DirectX End-User Runtime Installer", "9.29.1974.0"),
         product("CJK.Program", "\xe8\xbd\xaf\xe4\xbb\xb6", "1.0"),
         product("Google.GoogleDesktop", "Google Desktop", "5.9")}};
};

TEST_F(ProductIndexTest, VariantsOfOneNameAreToldApart) {
    // By the words in brackets, the version line, the version's suffix.
    EXPECT_EQ(find("Mozilla Firefox (cy)", "Mozilla", "141.0"), "Mozilla.Firefox.cy");
    EXPECT_EQ(find("Mozilla Firefox (x64 en-US)", "Mozilla", "141.0"), "Mozilla.Firefox");
    EXPECT_EQ(find("Mozilla Firefox (de)", "Mozilla", "141.0"), "Mozilla.Firefox");  // by alias
    EXPECT_EQ(find("IBM Semeru Runtime Open Edition (JRE)", "IBM", "21.0.8.9"),
              "IBM.Semeru.21.JRE");
    EXPECT_EQ(find("Python 3.11.4 (64-bit)", "Python Software Foundation", "3.11.4150.0"),
              "Python.Python.3.11");
    EXPECT_EQ(find("Python 3.12.1 (64-bit)", "", "3.12.1150.0"), "Python.Python.3.12");
    EXPECT_EQ(find("WikiMed by Kiwix 3.6.1-E", "Kiwix", "3.6.1-E"), "Kiwix.WikiMed.Electron");
    EXPECT_EQ(find("WikiMed by Kiwix", "Kiwix", "3.6.1"), "Kiwix.WikiMed");
    EXPECT_EQ(find("Altova DiffDog Server", "Altova AB", "2025.02.00.01"),
              "Altova.DiffDogServer.2025");
    // The maker decides; the exact maker beats one that only contains the other.
    EXPECT_EQ(find("Blink", "AG Projects", "5"), "AGProjects.Blink");
    EXPECT_EQ(find("Blink", "", "5"), "ambiguous");
    EXPECT_EQ(find("Blink", "Fabrikam", "5"), "unknown");
    EXPECT_EQ(find("Min", "Min s.r.o.", "1.35.1"), "Min.Min");
    // Variants of one maker need no publisher: the shortest identifier.
    EXPECT_EQ(find("Altova DiffDog Server", "", ""), "Altova.DiffDogServer.2025");
}

TEST_F(ProductIndexTest, NearMissesAreNoMatch) {
    EXPECT_EQ(find("IBM Semeru Runtime Open Edition (JRE) 17", "IBM", "17.0.1"), "unknown");
    EXPECT_EQ(find("Amazon Corretto 11", "Amazon", "11.0.2"), "unknown");
    EXPECT_EQ(find("Slack", "Slack Technologies", "4.41"), "unknown");
    EXPECT_EQ(find("GoLand", "JetBrains s.r.o.", "2025.2"), "unknown");
    EXPECT_EQ(find("Visual Studio Community 2022", "Microsoft Corporation", "17.10"), "unknown");
    EXPECT_EQ(find("Notes", "Nuttyartist", "1.0"), "unknown");
    // A name that lost characters in the code page matches nothing by its remains.
    EXPECT_EQ(find("Google ?????", "Google", "2.30"), "unknown");
    EXPECT_EQ(find("??", "CJK", "1.0"), "unknown");
    // A prerelease installed may be told of the release; the reverse not.
    EXPECT_EQ(find("Slack Beta", "Slack Technologies", "4.47"), "SlackTechnologies.Slack.Beta");
}

TEST_F(ProductIndexTest, LooseTierOnlyWhenStrictFindsNothing) {
    const ProductIndex::Match loose =
        index.find("DirectX End-User Runtime Web Installer 9.29.1974.1", "Microsoft", "9.29");
    ASSERT_EQ(loose.outcome, ProductIndex::Outcome::Found);
    EXPECT_EQ(loose.tier, ProductIndex::Tier::Loose);
    EXPECT_EQ(index.find("Amazon Corretto 8", "Amazon", "1.8").tier, ProductIndex::Tier::Strict);
    EXPECT_EQ(find("Google Desktop Free Edition", "Google Inc.", "5.8"), "Google.GoogleDesktop");
}

// The demo machine's programs, as `tallowick-cli programs` lists them, against the 2026
// catalog: nearly all are found, and none is given a product of another maker (the demo
// machine's publishers are the catalog's makers with a legal form).
TEST(DemoMachineMatchTest, NearlyAllProgramsFindTheirOwnProduct) {
    QTemporaryDir dir;
    const QString machine = dir.filePath("machine");
    ASSERT_EQ(
        testing_support::runProgram(TALLOWICK_CLI, {"machine", "init", "--demo"}, machine).status,
        0);
    const testing_support::ProgramRun programs =
        testing_support::runProgram(TALLOWICK_CLI, {"programs"}, machine);
    ASSERT_EQ(programs.status, 0) << programs.err.toStdString();

    std::string problem;
    const auto entries =
        demo::readCatalog(TALLOWICK_CATALOGS "/winget-index-2026-08-22.csv", &problem);
    ASSERT_TRUE(entries) << problem;
    std::vector<CatalogProduct> products;
    for (const auto& entry : *entries) {
        products.push_back(server::productFromEntry(entry));
    }
    const ProductIndex index(std::move(products));

    int total = 0;
    int found = 0;
    for (const QString& line : programs.out.split('\n', Qt::SkipEmptyParts)) {
        const QStringList fields = line.split('\t');
        ASSERT_GE(fields.size(), 6) << line.toStdString();
        ++total;
        // The desktop program sends names in the Windows code page.
        const QString name = server::fromWindows1252(server::toWindows1252(fields[3]));
        const ProductIndex::Match match = index.find(name, fields[4], fields[5]);
        if (match.outcome != ProductIndex::Outcome::Found) {
            continue;
        }
        ++found;
        if (!fields[4].isEmpty()) {
            EXPECT_TRUE(server::publishersRelate(server::publisherKey(fields[4]),
                                                 server::publisherKey(match.product->publisher)))
                << name.toStdString() << " -> " << match.product->packageId.toStdString();
        }
    }
    EXPECT_GT(total, 250);
    EXPECT_GE(found * 100, total * 93) << found << " of " << total;
}

}  // namespace
