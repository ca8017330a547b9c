#pragma once

#include <cstddef>
#include <cstdint>

/// The two functions of a target, called by a fuzzer or by the replay of a corpus. Targets use the checks of the tests;
/// a failed check ends the process.
extern "C" {

int LLVMFuzzerInitialize(int* argc, char*** argv);

/// Runs one input on new objects. Returns 0.
int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

}  // extern "C"
