#pragma once

/// After this call a failed check crashes the process, so that a fuzzer keeps the input.
void EndAtFailure();
