// The time from exec to the first painted frame of the client's window. The reference is an empty window.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "BenchTable.h"
#include "Child.h"

namespace {

void Start(benchmark::State& state, const std::string& program, const std::vector<std::string>& arguments) {
    for (auto _ : state) {
        const bench::Outcome outcome = bench::RunChild(program, arguments);
        const int64_t painted = strtoll(outcome.output.c_str(), nullptr, 10);
        if (outcome.exitCode != 0 || painted <= outcome.beganNanos) {
            state.SkipWithError("no first paint");
            break;
        }
        state.SetIterationTime(double(painted - outcome.beganNanos) / 1e9);
    }
}

/// A folder for the client's store and logs, removed at the end.
class CDataFolder {
public:
    CDataFolder() {
        std::string path = (std::filesystem::temp_directory_path() / "zrbench-XXXXXX").string();
        if (mkdtemp(path.data())) {
            m_path = path;
        }
    }
    ~CDataFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    CDataFolder(const CDataFolder&) = delete;
    CDataFolder& operator=(const CDataFolder&) = delete;

    const std::string& Path() const { return m_path; }

private:
    std::string m_path;
};

}  // namespace

int main(int argc, char** argv) {
    const CDataFolder data;
    const std::vector<std::string> arguments = {"--data-dir", data.Path()};
    // The first start of each fills the file cache, and the client's creates its store.
    bench::RunChild("bench_empty_window", {});
    bench::RunChild("bench_client_window", arguments);
    benchmark::RegisterBenchmark("Client from exec to first paint", Start, "bench_client_window", arguments)
        ->UseManualTime()
        ->Iterations(1);
    benchmark::RegisterBenchmark("Empty main window to first paint", Start, "bench_empty_window",
                                 std::vector<std::string>())
        ->UseManualTime()
        ->Iterations(1);
    return bench::RunComparisons(argc, argv,
                                 {{"Client from exec to first paint", "Empty main window to first paint", 2}});
}
