#pragma once
#include <QHash>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <vector>

#include "server/CatalogProduct.h"
#include "server/NameNormaliser.h"

namespace server {

// The catalog in memory, indexed for the match of an installed program's name and publisher
// (NameNormaliser.h says how names become words):
// 1. Strict tier: the key of the name's words against the keys of every product's name, of
//    its aliases, and of its publisher followed by each alias.
// 2. Loose tier, only when the strict tier finds nothing: the same with edition words and
//    lone numbers dropped on both sides.
// 3. Of the products found, these are dropped:
//    - when both sides have a publisher, a product whose publisher does not relate to the
//      request's (one contains the other);
//    - a product whose name has other words in brackets ("(JRE)" is no match for "(JDK)",
//      "(cy)" none for "(en-US)");
//    - a product whose name's numbers disagree with the request's ("Amazon Corretto 11" is
//      not "Amazon Corretto 8", "PyroSim 2025" not "PyroSim 2024"), however it was found;
//      the numbers of its identifier count too when it was found by an alias or in the loose
//      tier ("IBM Semeru Runtime Open
//      Edition (JRE) 23" is not IBM.Semeru.21.JRE);
//    - a prerelease product ("Slack Beta", "GoLand (EAP)") for a name that is none;
//    - a product of another edition ("Visual Studio Enterprise 2022" for "Visual Studio
//      Community 2022"); a name without an edition word takes any edition.
// 4. Of what is left, these win in turn: the products whose publisher is the request's own,
//    not just related; whose name has the same words with its bracketed parts kept; that
//    were found by their own name rather than an alias; whose latest version shares most
//    leading numbers with the installed version ("Python 3.11" installed at 3.11.4 is Python
//    3.11, not Python 3.12); whose version has the same suffix after its numbers ("3.6.1-E"
//    goes with "3.8.4-E").
// 5. What is left is one product, or several of one maker (variants: the shortest identifier
//    wins), or several makers that only a publisher could tell apart: ambiguous.
class ProductIndex {
public:
    enum class Outcome { Found, Unknown, Ambiguous };
    enum class Tier { Strict, Loose };

    struct Match {
        Outcome outcome = Outcome::Unknown;
        const CatalogProduct* product = nullptr;  // when found
        Tier tier = Tier::Strict;
    };

    ProductIndex() = default;
    explicit ProductIndex(std::vector<CatalogProduct> products);

    // The product for a program's name (its DisplayName) and publisher (may be empty), given
    // the installed version (may be empty).
    Match find(const QString& name, const QString& publisher, const QString& version) const;

    std::size_t size() const { return products_.size(); }
    const std::vector<CatalogProduct>& products() const { return products_; }

private:
    struct Entry {
        std::uint32_t product;
        bool byName;   // the key is that of the product's own name
        bool byAlias;  // the key is that of an alias
    };
    struct Known {
        QString publisherKey;
        NameTraits name;
        std::vector<std::uint32_t> aliasNumbers;  // those of the identifier
        std::uint32_t channels = 0;               // of the name and the aliases
        std::uint32_t editions = 0;
        std::vector<std::uint32_t> versionNumbers;
        QString versionSuffix;
    };
    struct Request {
        QString publisherKey;
        NameTraits name;
        std::vector<std::uint32_t> versionNumbers;
        QString versionSuffix;
    };

    void add(QHash<QString, std::vector<Entry>>& keys, const QStringList& words,
             std::uint32_t product, bool alias);
    // Whether the product fits the request by its name and by its aliases.
    bool fitsProduct(const Known& known, const Request& request) const;
    bool fitsName(const Known& known, Tier tier, const Request& request) const;
    bool fitsAlias(const Known& known, const Request& request) const;
    Match decide(const std::vector<Entry>& found, Tier tier, const Request& request) const;

    std::vector<CatalogProduct> products_;
    std::vector<Known> known_;
    QHash<QString, std::vector<Entry>> strict_;
    QHash<QString, std::vector<Entry>> loose_;
};

}  // namespace server
