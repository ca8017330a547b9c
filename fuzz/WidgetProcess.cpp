// The process of a target that creates widgets: an application without a screen, in virtual time.
#include <QApplication>

#include "EndAtFailure.h"
#include "FuzzTarget.h"
#include "support/VirtualEventDispatcher.h"

// The toolkit's fonts are never freed.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions() {
    return "leak:libfontconfig\nleak:libqoffscreen\n";
}

int LLVMFuzzerInitialize(int* argc, char*** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QCoreApplication::setEventDispatcher(new CVirtualEventDispatcher);  // the application takes ownership
    // Never deleted, because the fuzzer can end the process anywhere.
    static const auto* application = new QApplication(*argc, *argv);
    Q_UNUSED(application)
    EndAtFailure();
    return 0;
}
