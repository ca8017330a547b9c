// Runs every bench executable and prints one table of all their rows.
#include <fmt/format.h>

#include <cstring>
#include <sstream>

#include "BenchTable.h"
#include "Child.h"

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    bool quick = false;
    for (const std::string& argument : arguments) {
        if (argument != "--quick") {
            fmt::print(stderr, "bench_table: unknown argument {}\n", argument);
            return 2;
        }
        quick = true;
    }
    std::vector<std::string> forwarded = arguments;
    forwarded.emplace_back("--rows");

    std::vector<bench::Row> rows;
    int result = 0;
    std::istringstream names(ZR_BENCHES);
    for (std::string name; names >> name;) {
        fmt::print(stderr, "{} ...\n", name);
        const bench::Outcome outcome = bench::RunChild(name, forwarded);
        const std::vector<bench::Row> read = bench::ReadRows(outcome.output);
        rows.insert(rows.end(), read.begin(), read.end());
        if (outcome.exitCode != 0 || read.empty()) {
            fmt::print(stderr, "{} ended with {} and {} rows\n", name, outcome.exitCode, read.size());
            result = 1;
        }
    }
    fmt::print("{}", bench::TableText(rows, !quick));
    return result;
}
