#pragma once

#include <functional>

/// Many rounds of a binary's tests, in an order shuffled anew for each round, each test in a child process of its
/// own that is forked from here and so costs no new start. Two run at a time.
namespace forked_rounds {

/// As many rounds as the environment variable ZR_ROUNDS asks for. `runTests` is called in each child, with the filter
/// set to its one test; its result is the child's. What a child printed is shown if it failed. ZR_SEED, if set, is the
/// seed of the first round. To be called before any thread is there. Returns 0 if every child did. Without ZR_ROUNDS it
/// calls `runTests` here, once.
int RunOrRepeat(const std::function<int()>& runTests);

}  // namespace forked_rounds
