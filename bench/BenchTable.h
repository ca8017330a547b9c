#pragma once

#include <string>
#include <vector>

/// The table of ./dev bench. Machines are noisy, so each figure is measured alternately with a reference in the same
/// run. Only their ratio has a goal.
namespace bench {

/// Two benchmarks of one executable, by their registered names.
struct Comparison {
    std::string what;
    std::string peer;
    double goal;  // the maximum ratio; 0: for information only
};

enum class EnUnit { kNanos, kBytes };

struct Row {
    std::string what;
    double figure;  // a time is per iteration, the median of the repetitions
    std::string peer;
    double peerFigure;
    double goal;
    EnUnit unit = EnUnit::kNanos;

    double Ratio() const;
    bool IsMissed() const;
};

/// Runs the benchmarks of an executable in shuffled repetitions and prints a row for each comparison. Returns the exit
/// code: 1 if a goal is missed or a benchmark did not run. Benchmarks with manual or real time are compared by that
/// time, all others by the CPU time of their thread. `--quick` runs each once and checks no goal. `--rows` prints for
/// ReadRows. All other arguments are the library's.
int RunComparisons(int argc, char** argv, const std::vector<Comparison>& comparisons);

/// The options of every benchmark program.
struct Options {
    bool quick = false;   // each measurement once, no goal checked
    bool asRows = false;  // the format of ReadRows
};

/// Reads the options and removes them from the arguments. For executables that do not use RunComparisons.
Options TakeOptions(std::vector<char*>& arguments);

/// Prints the rows. Returns the exit code: 1 if a goal is missed.
int PrintRows(const std::vector<Row>& rows, const Options& options);

/// Returns the rows as a table for people. With `judged` it states which goals are met.
std::string TableText(const std::vector<Row>& rows, bool judged);

/// Returns the rows as `--rows` prints them, one line for each.
std::string RowsText(const std::vector<Row>& rows);

/// The reverse of RowsText. Other lines are skipped.
std::vector<Row> ReadRows(const std::string& text);

}  // namespace bench
