#include "BenchTable.h"

#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <sstream>
#include <thread>

namespace bench {
namespace {

constexpr char kRowMark[] = "row";
constexpr char kNanosMark[] = "ns";
constexpr char kBytesMark[] = "B";

/// Keeps the time of each repetition by the name of its benchmark.
class CCollector : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context& /*context*/) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.error_occurred) {
                fmt::print(stderr, "{}: {}\n", run.run_name.function_name, run.error_message);
                m_bFailed = true;
            } else if (run.run_type == Run::RT_Iteration) {
                const double seconds =
                    run.run_name.time_type.empty() ? run.cpu_accumulated_time : run.real_accumulated_time;
                m_nanos[run.run_name.function_name].push_back(1e9 * seconds / double(run.iterations));
            }
        }
    }

    bool Failed() const { return m_bFailed; }

    double Median(const std::string& benchmark) const {
        const auto found = m_nanos.find(benchmark);
        if (found == m_nanos.end()) {
            return 0;
        }
        std::vector<double> sorted = found->second;
        std::sort(sorted.begin(), sorted.end());
        return sorted[sorted.size() / 2];
    }

private:
    std::map<std::string, std::vector<double>> m_nanos;
    bool m_bFailed = false;
};

std::string TimeText(double nanos) {
    if (nanos < 1e3) {
        return fmt::format("{:.1f} ns", nanos);
    }
    return nanos < 1e6 ? fmt::format("{:.1f} us", nanos / 1e3) : fmt::format("{:.1f} ms", nanos / 1e6);
}

std::string FigureText(double figure, EnUnit unit) {
    return unit == EnUnit::kBytes ? fmt::format("{:.0f} B", figure) : TimeText(figure);
}

/// Removes `flag` from the arguments, which the benchmark library parses next.
bool Take(std::vector<char*>& arguments, const char* flag) {
    const auto found = std::find_if(arguments.begin(), arguments.end(),
                                    [flag](const char* argument) { return std::strcmp(argument, flag) == 0; });
    const bool isThere = found != arguments.end();
    if (isThere) {
        arguments.erase(found);
    }
    return isThere;
}

}  // namespace

double Row::Ratio() const {
    return peerFigure > 0 ? figure / peerFigure : 0;
}

bool Row::IsMissed() const {
    return goal > 0 && Ratio() > goal;
}

int RunComparisons(int argc, char** argv, const std::vector<Comparison>& comparisons) {
    // A client has threads, and in a process with threads reference counts are atomic.
    std::thread([] {}).join();
    std::vector<char*> arguments(argv, argv + argc);
    const Options options = TakeOptions(arguments);
    // Options of the caller come later and take precedence.
    std::vector<std::string> standard = {"--benchmark_enable_random_interleaving=true"};
    standard.emplace_back(options.quick ? "--benchmark_repetitions=1" : "--benchmark_repetitions=31");
    standard.emplace_back(options.quick ? "--benchmark_min_time=0" : "--benchmark_min_time=0.02");
    for (size_t i = 0; i < standard.size(); ++i) {
        arguments.insert(arguments.begin() + 1 + long(i), standard[i].data());
    }
    auto count = int(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
        return 2;
    }
    CCollector collector;
    benchmark::RunSpecifiedBenchmarks(&collector);

    std::vector<Row> rows;
    bool failed = collector.Failed();
    for (const Comparison& comparison : comparisons) {
        const Row row{comparison.what, collector.Median(comparison.what), comparison.peer,
                      collector.Median(comparison.peer), comparison.goal};
        if (row.figure <= 0 || row.peerFigure <= 0) {
            fmt::print(stderr, "{}: did not run beside {}\n", row.what, row.peer);
            failed = true;
            continue;
        }
        rows.push_back(row);
    }
    const int result = PrintRows(rows, options);
    return failed ? 1 : result;
}

Options TakeOptions(std::vector<char*>& arguments) {
    Options options;
    options.quick = Take(arguments, "--quick");
    options.asRows = Take(arguments, "--rows");
    return options;
}

int PrintRows(const std::vector<Row>& rows, const Options& options) {
    fmt::print("{}", options.asRows ? RowsText(rows) : TableText(rows, !options.quick));
    const bool isMissed = std::any_of(rows.begin(), rows.end(), [](const Row& row) { return row.IsMissed(); });
    return isMissed && !options.quick ? 1 : 0;
}

std::string TableText(const std::vector<Row>& rows, bool judged) {
    std::string text = fmt::format("{:<46} {:>10}  {:<42} {:>10} {:>7} {:>6}  {}\n", "What", "", "Floor or peer", "",
                                   "Ratio", "Goal", "");
    for (const Row& row : rows) {
        const std::string goal = row.goal > 0 ? fmt::format("{:.2f}", row.goal) : "-";
        const char* verdict = !judged || row.goal <= 0 ? "-" : row.IsMissed() ? "MISSED" : "met";
        text +=
            fmt::format("{:<46} {:>10}  {:<42} {:>10} {:>7.2f} {:>6}  {}\n", row.what, FigureText(row.figure, row.unit),
                        row.peer, FigureText(row.peerFigure, row.unit), row.Ratio(), goal, verdict);
    }
    return text;
}

std::string RowsText(const std::vector<Row>& rows) {
    std::string text;
    for (const Row& row : rows) {
        text += fmt::format("{}\t{}\t{}\t{}\t{}\t{}\t{}\n", kRowMark, row.what, row.figure, row.peer, row.peerFigure,
                            row.goal, row.unit == EnUnit::kBytes ? kBytesMark : kNanosMark);
    }
    return text;
}

std::vector<Row> ReadRows(const std::string& text) {
    std::vector<Row> rows;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        std::vector<std::string> fields;
        std::istringstream rest(line);
        for (std::string field; std::getline(rest, field, '\t');) {
            fields.push_back(field);
        }
        if (fields.size() == 7 && fields[0] == kRowMark) {
            rows.push_back({fields[1], std::strtod(fields[2].c_str(), nullptr), fields[3],
                            std::strtod(fields[4].c_str(), nullptr), std::strtod(fields[5].c_str(), nullptr),
                            fields[6] == kBytesMark ? EnUnit::kBytes : EnUnit::kNanos});
        }
    }
    return rows;
}

}  // namespace bench
