#pragma once

#include <string>
#include <vector>

/// The table of ./dev bench. Machines are noisy, so each figure is measured alternately with a reference in the same
/// run. Only their ratio has a goal.
namespace bench {

/// Two benchmarks of one executable, by the names they are registered under.
struct Comparison {
    std::string what;
    std::string peer;
    double goal;  // the largest good ratio; 0: for information only
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

/// Body of an executable's main: runs its benchmarks, their repetitions shuffled among each other, and prints a
/// row per comparison. Benchmarks with manual or real time are compared by that, all others by the CPU time of
/// their thread. `--quick` runs each once and judges nothing, `--rows` prints for ReadRows; the library's own
/// arguments are understood too. Gives the exit code: 1 when a goal is missed or a benchmark did not run.
int RunComparisons(int argc, char** argv, const std::vector<Comparison>& comparisons);

/// The options of every benchmark program.
struct Options {
    bool quick = false;   // each measurement once, nothing judged
    bool asRows = false;  // for ReadRows and not for people
};

/// Reads the options, for an executable that measures in a way of its own, and takes them out of the arguments.
Options TakeOptions(std::vector<char*>& arguments);

/// Prints the rows of such an executable and gives its exit code: 1 when a goal is missed.
int PrintRows(const std::vector<Row>& rows, const Options& options);

/// As people read them; without `judged` no verdicts.
std::string TableText(const std::vector<Row>& rows, bool judged);

/// As `--rows` prints them, a line each.
std::string RowsText(const std::vector<Row>& rows);

/// The reverse of RowsText. Lines that are no rows are passed over.
std::vector<Row> ReadRows(const std::string& text);

}  // namespace bench
