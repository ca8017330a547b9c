// Measures the time from the call that opens the AI chat to its first call over the bridge. Measures the processor time
// of a dismissed page. Each measurement is a new process with a real server.
#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <system_error>

#include "BenchTable.h"
#include "Child.h"

namespace {

constexpr int kRounds = 7;
constexpr double kTickNanos = 10'000'000;

/// Returns the child's figure; below 0 on failure.
double Measured(const char* preparation, const char* milliseconds) {
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("zrbench-chat-" + std::to_string(bench::MonotonicNanos()));
    const bench::Outcome outcome = bench::RunChild("bench_chat_page", {folder.string(), preparation, milliseconds});
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
    return outcome.exitCode == 0 && !outcome.output.empty() ? strtod(outcome.output.c_str(), nullptr) : -1;
}

double Median(std::vector<double> figures) {
    std::sort(figures.begin(), figures.end());
    return figures[figures.size() / 2];
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<char*> arguments(argv, argv + argc);
    const bench::Options options = bench::TakeOptions(arguments);
    Measured("cold", "0");  // fills the file cache
    std::map<std::string, std::vector<double>> times;
    for (int round = 0; round < (options.quick ? 1 : kRounds); ++round) {
        for (const char* preparation : {"cold", "preloaded", "dismissed"}) {
            const double nanos = Measured(preparation, "0");
            if (nanos <= 0) {
                fmt::print(stderr, "bench_chat: {} failed\n", preparation);
                return 1;
            }
            times[preparation].push_back(nanos);
        }
    }
    const double busy = Measured("busy", options.quick ? "1000" : "10000");
    if (busy < 0) {
        fmt::print(stderr, "bench_chat: busy failed\n");
        return 1;
    }
    const double cold = Median(times["cold"]);
    const char* coldName = "First open, with the engine";
    return bench::PrintRows(
        {{"AI chat opened after the preload", Median(times["preloaded"]), coldName, cold, 0.65},
         {"AI chat opened after a dismissal", Median(times["dismissed"]), coldName, cold, 0.45},
         {"Dismissed page with a busy timer, 10 s", busy, "One tick of the processor's clock", kTickNanos, 1}},
        options);
}
