#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

/// CLOCK_MONOTONIC in nanoseconds: one clock for all processes.
int64_t MonotonicNanos();

/// The output and the exit status of a program.
struct Outcome {
    int exitCode;  // -1 when it could not be started or died of a signal
    int64_t beganNanos;
    std::string output;
};

/// Runs a program of the folder of this executable and waits for its end. Its error stream is ours.
Outcome RunChild(const std::string& name, const std::vector<std::string>& arguments);

/// The folder of this executable.
std::string OwnFolder();

}  // namespace bench
