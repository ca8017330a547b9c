#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

/// Returns CLOCK_MONOTONIC in nanoseconds, which is the same in all processes.
int64_t MonotonicNanos();

/// The output and the exit status of a program.
struct Outcome {
    int exitCode;  // -1 if it could not be started or was ended by a signal
    int64_t beganNanos;
    std::string output;
};

/// Runs a program from the folder of this executable and waits for its end. It inherits the error stream.
Outcome RunChild(const std::string& name, const std::vector<std::string>& arguments);

/// Returns the folder of this executable.
std::string OwnFolder();

}  // namespace bench
