// The lookup of updates.asp against the full 2026 catalog, in process: the match alone, and
// the whole answer from the query text to the reply page. Also the index build at start.
#include <benchmark/benchmark.h>

#include <QString>

#include <vector>

#include "demo/CatalogCsv.h"
#include "server/ProductIndex.h"
#include "server/QueryText.h"
#include "server/UpdateLookup.h"

namespace {

std::vector<server::CatalogProduct> catalog() {
    std::string problem;
    const auto entries = demo::readCatalog(BENCH_CATALOG, &problem);
    std::vector<server::CatalogProduct> products;
    for (const auto& entry : entries.value()) {
        products.push_back(server::productFromEntry(entry));
    }
    return products;
}

const server::ProductIndex& index() {
    static const server::ProductIndex built(catalog());
    return built;
}

// Names as installers write them: found, found in the loose tier, unknown.
const QStringList kNames[] = {
    {"Mozilla Firefox (x64 en-US)", "Mozilla", "141.0.3"},
    {"Altova MissionKit 2025 Enterprise Edition 2025.02.00.02", "Altova AB", "2025.02.00.02"},
    {"3CX Call Flow Designer (x64)", "3CX s.r.o.", "18.5.8"},
    {"Python 3.12.4 (64-bit)", "Python Software Foundation", "3.12.4150.0"},
    {"DirectX End-User Runtime Web Installer 9.29.1974.1", "Microsoft Corporation", "9.29"},
    {"Contoso Ledger Pro 4.2", "Contoso Ltd.", "4.2.0"},
};

const char* kQueries[] = {
    "app=Mozilla%20Firefox%20%28x64%20en%2DUS%29&pub=Mozilla&fvr=&pvr=141%2E0%2E3&exe=firefox"
    "%2Eexe&bet=0&uid=&cuv=1%2E0%2E0&win=W10",
    "app=Air%20Explorer%205%2E8%2E1&pub=AirExplorer%20GmbH&fvr=5%2E8%2E1%2E0&pvr=5%2E8%2E1&exe="
    "&bet=0&uid=abc%2D1&cuv=1%2E0%2E0&win=W10",
    "app=Contoso%20Ledger%20Pro%204%2E2&pub=Contoso%20Ltd%2E&fvr=&pvr=4%2E2%2E0&exe=&bet=0&uid="
    "&cuv=1%2E0%2E0&win=W10",
};

void BM_Match(benchmark::State& state) {
    const server::ProductIndex& products = index();
    std::size_t i = 0;
    for (auto _ : state) {
        const QStringList& name = kNames[i++ % std::size(kNames)];
        benchmark::DoNotOptimize(products.find(name[0], name[1], name[2]));
    }
}
BENCHMARK(BM_Match);

void BM_AnswerUpdateQuery(benchmark::State& state) {
    const server::ProductIndex& products = index();
    std::size_t i = 0;
    for (auto _ : state) {
        const auto parameters =
            server::parseQuery(QString::fromLatin1(kQueries[i++ % std::size(kQueries)]),
                               server::QueryEncoding::Windows1252);
        benchmark::DoNotOptimize(
            server::answerUpdateQuery(*parameters, products, server::CatalogState::Loaded));
    }
}
BENCHMARK(BM_AnswerUpdateQuery);

void BM_BuildIndex(benchmark::State& state) {
    const std::vector<server::CatalogProduct> products = catalog();
    for (auto _ : state) {
        benchmark::DoNotOptimize(server::ProductIndex(products).size());
    }
}
BENCHMARK(BM_BuildIndex)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
