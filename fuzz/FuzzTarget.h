#pragma once

#include <cstddef>
#include <cstdint>

/// The two functions by which a fuzzer, or the replay of a corpus, drives a target. Checks in a target are those
/// of the tests; one that fails ends the process.
extern "C" {

int LLVMFuzzerInitialize(int* argc, char*** argv);

/// One input, on objects of its own. Returns 0.
int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

}  // extern "C"
