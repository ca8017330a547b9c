// The process of a target without application and host.
#include "EndAtFailure.h"
#include "FuzzTarget.h"

int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
    EndAtFailure();
    return 0;
}
