#pragma once

#include <functional>

/// Many rounds of a binary's tests, in an order shuffled anew for each round, each test in a child process of its
/// own that is forked from here and so costs no new start.
namespace forked_rounds {

/// As many rounds as the environment variable ZR_ROUNDS asks for. `runTests` is called in each child, with the filter
/// set to its one test; its result is the child's. What a child printed is shown if it failed. ZR_SEED, if set, is the
/// seed of the first round. `atATime` children run beside each other; one that takes more than five minutes is ended
/// and has failed. GTEST_TOTAL_SHARDS and GTEST_SHARD_INDEX choose some of the tests as they do without rounds. To be
/// called before any thread is there. Returns 0 if every child did. Without ZR_ROUNDS it calls `runTests` here, once.
int RunOrRepeat(const std::function<int()>& runTests, size_t atATime = 2);

/// Whether RunOrRepeat will make children.
bool AreAskedFor();

}  // namespace forked_rounds
