// The time from a load to the page's first call over the bridge: in a new process, where the engine is mapped first,
// and in a widget that has displayed a page before.
#include <benchmark/benchmark.h>

#include <cstdlib>

#include "BenchTable.h"
#include "Child.h"

namespace {

void Load(benchmark::State& state, const char* preparation) {
    for (auto _ : state) {
        const bench::Outcome outcome = bench::RunChild("bench_web_page", {preparation});
        const int64_t nanos = strtoll(outcome.output.c_str(), nullptr, 10);
        if (outcome.exitCode != 0 || nanos <= 0) {
            state.SkipWithError("the page was not loaded");
            break;
        }
        state.SetIterationTime(double(nanos) / 1e9);
    }
}

}  // namespace

int main(int argc, char** argv) {
    bench::RunChild("bench_web_page", {"cold"});  // fills the file cache
    benchmark::RegisterBenchmark("Web page in a widget that displayed one", Load, "warm")
        ->UseManualTime()
        ->Iterations(1);
    benchmark::RegisterBenchmark("First web page, with the engine", Load, "cold")->UseManualTime()->Iterations(1);
    return bench::RunComparisons(
        argc, argv, {{"Web page in a widget that displayed one", "First web page, with the engine", 0.45}});
}
