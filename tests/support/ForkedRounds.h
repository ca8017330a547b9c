#pragma once

#include <functional>

/// Many rounds of the tests of a binary. Each round has another order, and each test a forked child process without a
/// new start.
namespace forked_rounds {

/// Runs as many rounds as the environment variable ZR_ROUNDS asks for. `runTests` is called in each child, with the
/// filter set to its one test; its result is the child's. The output of a failed child is printed. ZR_SEED, if set, is
/// the seed of the first round. `atATime` children run in parallel; one that takes more than five minutes is ended and
/// has failed. GTEST_TOTAL_SHARDS and GTEST_SHARD_INDEX choose some of the tests as they do without rounds. Must be
/// called before the first thread starts. Returns 0 if every child did. Without ZR_ROUNDS it calls `runTests` here,
/// once.
int RunOrRepeat(const std::function<int()>& runTests, size_t atATime = 2);

/// Whether RunOrRepeat will make children.
bool AreAskedFor();

}  // namespace forked_rounds
