// Throughput of the update document reader on a large generated document of
// 20,000 items (about 10 MB), the kind of document a publisher with a long
// history would serve. Figures are bytes of document per second.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

#include "feed/document_parser.h"

namespace {

const char* const kMarkers[] = {":BEGINALERT",     ":BEGINVERSION",  ":BEGINTIP",
                                ":BEGINNOTICE",    ":BEGINOFFTOPIC", ":BEGINCHANGEINI",
                                ":BEGINNEWGRAPHIC"};

std::string makeDocument(int items) {
    std::string doc = "; Quenmark update document, generated for measurement\r\n\r\n";
    char buffer[1024];
    for (int i = 0; i < items; ++i) {
        std::snprintf(
            buffer, sizeof buffer,
            "%s\r\nNUMBER = %d\r\nDATE = %02d-%02d-20%02d\r\nORIGINATOR = Quenmark Support\r\n"
            "APPLICATION = Quenmark Ledger\r\nINIFILE = LEDGER.INI\r\nSECTION = Ledger\r\n"
            "VERSION = %d\r\nSUBVERSION = %d\r\nREVISION = %c\r\nPATCH = %d\r\nBETA = 0\r\n"
            "IMPORTANCE = %d\r\nIFREGISTERED = 0\r\nIFEVAL = 1\r\n"
            "TITLE = Quenmark Ledger %d.%d%c is ready\r\n"
            "URL = http://www.quenmark.com/ledger/notes%d.html\r\n"
            "PLAINTEXT = {This release corrects the rounding of currency totals.\r\n\r\n"
            "Your data files are kept as they are.}\r\n"
            "KEYWORDS = ledger, update, currency\r\nIGNOREUNTIL = 01-01-2001\r\n"
            "GRAPHIC = ledger%d.png\r\n:END\r\n\r\n",
            kMarkers[i % 7], 1000 + i, 1 + i % 12, 1 + i % 28, i % 30, 3 + i % 5, i % 10,
            'a' + i % 6, i % 4, 1 + i % 3, 3 + i % 5, i % 10, 'a' + i % 6, i, i % 50);
        doc += buffer;
    }
    return doc;
}

const std::string& document() {
    static const std::string doc = makeDocument(20000);
    return doc;
}

void BM_ParseUpdateDocument(benchmark::State& state) {
    const std::string& doc = document();
    std::size_t items = 0;
    for (auto _ : state) {
        auto parsed = parseUpdateDocument(doc);
        items = parsed.size();
        benchmark::DoNotOptimize(parsed.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * doc.size()));
    state.counters["items"] = static_cast<double>(items);
    state.counters["MB"] = static_cast<double>(doc.size()) / 1e6;
}
BENCHMARK(BM_ParseUpdateDocument)->Unit(benchmark::kMillisecond);

void BM_NormalizeAndParse(benchmark::State& state) {
    const std::string& doc = document();
    for (auto _ : state) {
        auto parsed = parseUpdateDocument(normalizeLineEnds(doc));
        benchmark::DoNotOptimize(parsed.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * doc.size()));
}
BENCHMARK(BM_NormalizeAndParse)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
