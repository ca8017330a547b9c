#pragma once

#include <functional>

/// Runs the tests of a program in rounds. Each round has another order, and each test runs in a forked child process,
/// which saves the start of the program.
namespace forked_rounds {

/// Runs the number of rounds in the environment variable ZR_ROUNDS; without it, calls `runTests` once, in this process.
/// Returns 0 if every child did. Call it before the first thread starts.
/// Each child calls `runTests` with the filter set to its test. The output of a failed child is printed. `atATime`
/// children run in parallel; a child fails after five minutes. ZR_SEED is the seed of the first round.
/// GTEST_TOTAL_SHARDS and GTEST_SHARD_INDEX select tests as usual.
int RunOrRepeat(const std::function<int()>& runTests, size_t atATime = 2);

/// Returns whether RunOrRepeat will create children.
bool AreAskedFor();

}  // namespace forked_rounds
