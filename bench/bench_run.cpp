// The whole notification run over a generated 10,000-item document, against a
// seen-item list of 1,000 and of 1,000,000 entries. The list is read once per
// run, so the bigger list may cost one read of its file, never one per item:
// the program prints both times and their ratio and fails above 5.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "feed/document_parser.h"
#include "feed/notification_run.h"

namespace {

constexpr int kItemCount = 10000;
constexpr int kFirstNewNumber = 5000000;

// Answers every window with Next; the product of every version item is
// installed at 1.0a; the server has nothing.
class NextHost : public RunHost {
  public:
    int showAlertWindow(UpdateItem&) override { return 1; }
    int showVersionWindow(UpdateItem&) override { return 1; }
    int promptMultipleItems(std::vector<UpdateItem>&, int, SeenList&) override { return 1; }
    std::optional<std::string> fetchServerFile(const std::string&) override { return {}; }
    void showMessage(const std::string&) override {}
    std::string graphicFolder() override { return ""; }
    void beginWaitCursor() override {}
    void endWaitCursor() override {}
    std::optional<InstalledVersion> lookupInstalledVersion(const UpdateItem&) override {
        return InstalledVersion{1 << 5, 0, 0, "1.0a"};
    }
};

// Mostly alerts, some of every other kind; every tenth item carries a number
// that both seen lists hold, the rest are new.
std::string generateDocument() {
    static const char* const markers[] = {":BEGINALERT",  ":BEGINALERT",  ":BEGINALERT",
                                          ":BEGINTIP",    ":BEGINNOTICE", ":BEGINOFFTOPIC",
                                          ":BEGINVERSION"};
    std::string text = "Generated for the run benchmark\r\n";
    char line[160];
    for (int i = 0; i < kItemCount; ++i) {
        const int number = i % 10 == 0 ? (i / 10) % 1000 : kFirstNewNumber + i;
        const char* marker = markers[i % 7];
        if (i % 1000 == 500) marker = ":BEGINCHANGEINI";
        if (i % 1000 == 900) marker = ":BEGINNEWGRAPHIC";
        std::snprintf(line, sizeof line, "%s\r\nNUMBER = %d\r\nDATE = 03-15-2001\r\n", marker,
                      number);
        text += line;
        text += "TITLE = Generated item\r\nIMPORTANCE = 2\r\n";
        text += "INIFILE = product.ini\r\nSECTION = Product\r\nVERSION = 2\r\nSUBVERSION = 1\r\n";
        text += "URL = /update/images/generated.bmp\r\n";
        text += i % 1000 == 500 ? "PLAINTEXT = AlertFontSize = 18\r\n"
                                : "PLAINTEXT = {A body text\r\nof two lines.}\r\n";
        text += ":END\r\n";
    }
    return text;
}

const std::vector<UpdateItem>& documentItems() {
    static const std::vector<UpdateItem> items =
        parseUpdateDocument(normalizeLineEnds(generateDocument()));
    return items;
}

std::filesystem::path benchFolder() {
    static const std::filesystem::path folder = [] {
        auto path = std::filesystem::temp_directory_path() / "heralder-bench-run";
        std::filesystem::create_directories(path);
        return path;
    }();
    return folder;
}

// A list of numbers 0 .. entries-1, written once.
std::string baseList(int entries) {
    std::string path = (benchFolder() / ("seen-" + std::to_string(entries) + ".lst")).string();
    if (!std::filesystem::exists(path)) {
        std::ofstream out(path, std::ios::binary);
        for (int n = 0; n < entries; ++n) out << n << "\r\n";
    }
    return path;
}

void BM_Run(benchmark::State& state) {
    const int entries = static_cast<int>(state.range(0));
    const std::string base = baseList(entries);
    const std::string working = (benchFolder() / "Heralder.lst").string();
    std::vector<UpdateItem> items = documentItems();
    NextHost host;
    for (auto _ : state) {
        state.PauseTiming();
        std::filesystem::copy_file(base, working,
                                   std::filesystem::copy_options::overwrite_existing);
        Settings settings;
        settings.OnlyShowNewItems = 1;
        settings.PromptMultipleItems = 0;
        settings.CurrentTransactionDate = "03-15-2001";
        state.ResumeTiming();

        SeenList seen(working);
        benchmark::DoNotOptimize(runNotifications(items, host, settings, seen));
    }
    state.counters["items"] = static_cast<double>(items.size());
}
BENCHMARK(BM_Run)->Arg(1000)->Arg(1000000)->Unit(benchmark::kMillisecond);

// Remembers the mean time of each list size while the console shows them.
class RecordingReporter : public benchmark::ConsoleReporter {
  public:
    std::map<int64_t, double> millisecondsByEntries;
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type != Run::RT_Iteration) continue;
            std::string name = run.benchmark_name();
            int64_t entries = std::stoll(name.substr(name.find('/') + 1));
            millisecondsByEntries[entries] = run.GetAdjustedRealTime();
        }
        ConsoleReporter::ReportRuns(runs);
    }
};

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    RecordingReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    std::error_code ignored;
    std::filesystem::remove_all(benchFolder(), ignored);

    auto small = reporter.millisecondsByEntries.find(1000);
    auto large = reporter.millisecondsByEntries.find(1000000);
    if (small == reporter.millisecondsByEntries.end() ||
        large == reporter.millisecondsByEntries.end())
        return 0;  // filtered: nothing to compare
    const double ratio = large->second / small->second;
    std::printf("run over %zu items: 1k-entry list %.1f ms, 1M-entry list %.1f ms, ratio %.1f\n",
                documentItems().size(), small->second, large->second, ratio);
    if (ratio > 5.0) {
        std::printf("FAIL: the run's cost grows with the seen list (ratio above 5)\n");
        return 1;
    }
    return 0;
}
