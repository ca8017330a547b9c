// The process of a target that stands on the scripted host: an application in virtual time.
#include <QCoreApplication>

#include "EndAtFailure.h"
#include "FuzzTarget.h"
#include "support/VirtualEventDispatcher.h"

int LLVMFuzzerInitialize(int* argc, char*** argv) {
    QCoreApplication::setEventDispatcher(new CVirtualEventDispatcher);  // the application takes it over
    // Never deleted: the fuzzer ends the process from wherever it is.
    static const auto* application = new QCoreApplication(*argc, *argv);
    Q_UNUSED(application)
    EndAtFailure();
    return 0;
}
