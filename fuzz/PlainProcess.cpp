// The process of a target that needs neither application nor host.
#include "EndAtFailure.h"
#include "FuzzTarget.h"

int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    EndAtFailure();
    return 0;
}
