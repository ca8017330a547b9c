#pragma once

/// From now on a check that fails ends the process as a crash does, so that a fuzzer keeps the input.
void EndAtFailure();
