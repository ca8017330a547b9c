// The process of a target that uses the scripted host: an application in virtual time.
#include <QCoreApplication>

#include "EndAtFailure.h"
#include "FuzzTarget.h"
#include "support/VirtualEventDispatcher.h"

int LLVMFuzzerInitialize(int* argc, char*** argv) {
    QCoreApplication::setEventDispatcher(new CVirtualEventDispatcher);  // the application takes ownership
    // Never deleted, because the fuzzer can end the process anywhere.
    static const auto* application = new QCoreApplication(*argc, *argv);
    Q_UNUSED(application)
    EndAtFailure();
    return 0;
}
