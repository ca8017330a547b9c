// The cost of the module's relocations and initialisers: the time to load it, relative to an empty module with the same
// libraries. Each load is in a new process.
#include <benchmark/benchmark.h>

#include <cstdio>

#include "BenchTable.h"
#include "Child.h"

namespace {

constexpr char kModule[] = "libZRGrowth.so";
// It links the libraries of the real module, see LinkEmptyModule.cmake.
constexpr char kEmptyModule[] = "libbench_empty_module.so";
constexpr char kHost[] = "libzrhost.so";

std::string LibraryPath(const char* name) {
    return bench::OwnFolder() + "/../lib/" + name;
}

struct Mapping {
    double nanos = 0;
    int libraries = 0;
};

Mapping MapInChild(const std::vector<std::string>& libraries) {
    Mapping mapping;
    const bench::Outcome outcome = bench::RunChild("bench_map", libraries);
    if (outcome.exitCode != 0 || sscanf(outcome.output.c_str(), "%lf %d", &mapping.nanos, &mapping.libraries) != 2) {
        return {};
    }
    return mapping;
}

void Map(benchmark::State& state, const std::vector<std::string>& libraries) {
    for (auto _ : state) {
        const Mapping mapping = MapInChild(libraries);
        if (mapping.libraries == 0) {
            state.SkipWithError("the library was not mapped");
            break;
        }
        state.SetIterationTime(mapping.nanos / 1e9);
    }
}

void Register(const char* name, const std::vector<std::string>& libraries) {
    benchmark::RegisterBenchmark(name, Map, libraries)->UseManualTime()->Iterations(1);
}

}  // namespace

int main(int argc, char** argv) {
    const std::string module = LibraryPath(kModule);
    const std::string empty = LibraryPath(kEmptyModule);
    const std::string host = LibraryPath(kHost);
    // The first load of each also warms the file cache.
    if (MapInChild({module}).libraries != MapInChild({empty}).libraries) {
        fputs("The empty module does not bring the libraries that the module brings.\n", stderr);
        return 1;
    }
    Register("Mapping the module", {module});
    Register("Mapping an empty module, same libraries", {empty});
    Register("Mapping the module, host there already", {host, module});
    Register("Mapping an empty module, host there", {host, empty});
    return bench::RunComparisons(
        argc, argv,
        {
            {"Mapping the module", "Mapping an empty module, same libraries", 1.1},
            {"Mapping the module, host there already", "Mapping an empty module, host there", 0},
        });
}
