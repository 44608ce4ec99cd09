#include "server/ProductIndex.h"

#include <algorithm>

namespace server {

namespace {

// The leading dotted numbers of a version: "2025.02.00.02" -> 2025 2 0 2,
// "8.0.1-beta" -> 8 0 1, "v3" -> nothing.
std::vector<std::uint32_t> versionNumbers(const QString& version) {
    std::vector<std::uint32_t> numbers;
    qsizetype i = 0;
    while (i < version.size() && version[i].isDigit()) {
        std::uint32_t number = 0;
        for (; i < version.size() && version[i].isDigit(); ++i) {
            number = std::min<std::uint32_t>(number * 10 + std::uint32_t(version[i].digitValue()),
                                             100000000);
        }
        numbers.push_back(number);
        if (i + 1 >= version.size() || version[i] != u'.') {
            break;
        }
        ++i;
    }
    return numbers;
}

// What follows the leading numbers, in lower case: "3.6.1-E" -> "-e".
QString versionSuffix(const QString& version) {
    qsizetype i = 0;
    while (i < version.size() && (version[i].isDigit() || version[i] == u'.')) {
        ++i;
    }
    return version.mid(i).toLower();
}

std::size_t sharedLeadingNumbers(const std::vector<std::uint32_t>& a,
                                 const std::vector<std::uint32_t>& b) {
    std::size_t n = 0;
    while (n < a.size() && n < b.size() && a[n] == b[n]) {
        ++n;
    }
    return n;
}

}  // namespace

ProductIndex::ProductIndex(std::vector<CatalogProduct> products) : products_(std::move(products)) {
    known_.reserve(products_.size());
    strict_.reserve(qsizetype(products_.size() * 3));
    loose_.reserve(qsizetype(products_.size() * 3));
    for (std::uint32_t i = 0; i < products_.size(); ++i) {
        const CatalogProduct& product = products_[i];
        Known known;
        known.publisherKey = publisherKey(product.publisher);
        known.name = nameTraits(product.name);
        known.channels = known.name.channels;
        known.editions = known.name.editions;
        known.versionNumbers = versionNumbers(product.productVersion);
        known.versionSuffix = versionSuffix(product.productVersion);

        const QStringList words = nameWords(product.name);
        add(strict_, words, i, false);
        add(loose_, looseWords(words), i, false);
        const QString productPart = product.packageId.mid(product.packageId.indexOf(u'.') + 1);
        known.aliasNumbers = nameNumbers(identifierText(productPart, false));
        const QStringList maker = nameWords(identifierText(product.publisher));
        for (const QString& alias : product.aliases) {
            const NameTraits traits = nameTraits(alias);
            known.channels |= traits.channels;
            known.editions |= traits.editions;
            const QStringList aliasWords = nameWords(alias);
            add(strict_, aliasWords, i, true);
            add(loose_, looseWords(aliasWords), i, true);
            if (!product.publisher.isEmpty()) {
                add(strict_, maker + aliasWords, i, true);
                add(loose_, looseWords(maker + aliasWords), i, true);
            }
        }
        known_.push_back(std::move(known));
    }
}

void ProductIndex::add(QHash<QString, std::vector<Entry>>& keys, const QStringList& words,
                       std::uint32_t product, bool alias) {
    const QString key = matchKey(words);
    if (key.isEmpty()) {
        return;
    }
    std::vector<Entry>& entries = keys[key];
    for (Entry& entry : entries) {
        if (entry.product == product) {
            (alias ? entry.byAlias : entry.byName) = true;
            return;
        }
    }
    entries.push_back({product, !alias, alias});
}

ProductIndex::Match ProductIndex::find(const QString& name, const QString& publisher,
                                       const QString& version) const {
    const QStringList words = nameWords(name);
    if (words.isEmpty()) {
        return {};
    }
    const Request request{publisherKey(publisher), nameTraits(name), versionNumbers(version),
                          versionSuffix(version)};
    if (const auto strict = strict_.constFind(matchKey(words)); strict != strict_.cend()) {
        const Match match = decide(*strict, Tier::Strict, request);
        if (match.outcome != Outcome::Unknown) {
            return match;
        }
    }
    if (const auto loose = loose_.constFind(matchKey(looseWords(words))); loose != loose_.cend()) {
        return decide(*loose, Tier::Loose, request);
    }
    return {};
}

bool ProductIndex::fitsProduct(const Known& known, const Request& request) const {
    if (!request.publisherKey.isEmpty() && !known.publisherKey.isEmpty() &&
        !publishersRelate(request.publisherKey, known.publisherKey)) {
        return false;
    }
    if ((known.channels & ~request.name.channels) != 0 ||
        numbersConflict(request.name.numbers, known.name.numbers)) {
        return false;
    }
    return request.name.editions == 0 || known.editions == 0 ||
           request.name.editions == known.editions;
}

bool ProductIndex::fitsName(const Known& known, Tier tier, const Request& request) const {
    if (!request.name.bracketKey.isEmpty() && !known.name.bracketKey.isEmpty() &&
        request.name.bracketKey != known.name.bracketKey) {
        return false;
    }
    return !(tier == Tier::Loose && numbersConflict(request.name.numbers, known.aliasNumbers));
}

bool ProductIndex::fitsAlias(const Known& known, const Request& request) const {
    return !numbersConflict(request.name.numbers, known.aliasNumbers);
}

ProductIndex::Match ProductIndex::decide(const std::vector<Entry>& found, Tier tier,
                                         const Request& request) const {
    std::vector<Entry> candidates;
    for (const Entry& entry : found) {
        const Known& known = known_[entry.product];
        if (!fitsProduct(known, request)) {
            continue;
        }
        const bool byName = entry.byName && fitsName(known, tier, request);
        const bool byAlias = entry.byAlias && fitsAlias(known, request);
        if (byName || byAlias) {
            candidates.push_back({entry.product, byName, byAlias});
        }
    }
    if (candidates.empty()) {
        return {};
    }
    // Keeps the candidates that pass, unless none does.
    const auto prefer = [&](auto&& keep) {
        std::vector<Entry> kept;
        std::copy_if(candidates.begin(), candidates.end(), std::back_inserter(kept), keep);
        if (!kept.empty()) {
            candidates = std::move(kept);
        }
    };
    const auto known = [&](const Entry& entry) -> const Known& { return known_[entry.product]; };
    prefer([&](const Entry& entry) {
        return !request.publisherKey.isEmpty() && known(entry).publisherKey == request.publisherKey;
    });
    prefer([&](const Entry& entry) {
        return entry.byName && known(entry).name.fullKey == request.name.fullKey;
    });
    prefer([](const Entry& entry) { return entry.byName; });
    if (const auto& installed = request.versionNumbers; !installed.empty()) {
        std::size_t best = 0;
        for (const Entry& entry : candidates) {
            best = std::max(best, sharedLeadingNumbers(installed, known(entry).versionNumbers));
        }
        if (best > 0) {
            prefer([&](const Entry& entry) {
                return sharedLeadingNumbers(installed, known(entry).versionNumbers) == best;
            });
        }
        prefer([&](const Entry& entry) {
            return known(entry).versionSuffix == request.versionSuffix;
        });
    }
    const QString& firstMaker = known(candidates.front()).publisherKey;
    const bool oneMaker = std::all_of(candidates.begin(), candidates.end(), [&](const Entry& e) {
        return known(e).publisherKey == firstMaker;
    });
    if (!oneMaker && request.publisherKey.isEmpty()) {
        return {Outcome::Ambiguous, nullptr, tier};
    }
    const auto chosen =
        std::min_element(candidates.begin(), candidates.end(), [&](const Entry& a, const Entry& b) {
            const QString& idA = products_[a.product].packageId;
            const QString& idB = products_[b.product].packageId;
            if (idA.size() != idB.size()) {
                return idA.size() < idB.size();
            }
            return idA.compare(idB, Qt::CaseInsensitive) < 0;
        });
    return {Outcome::Found, &products_[chosen->product], tier};
}

}  // namespace server
