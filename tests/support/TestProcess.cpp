#include "support/TestProcess.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QHashFunctions>
#include <QLabel>
#include <QWidget>
#include <clocale>
#include <ctime>
#include <iostream>

#include "support/ForkedRounds.h"
#include "support/VirtualAnimationDriver.h"
#include "support/VirtualEventDispatcher.h"
#include "support/VirtualTime.h"

#if defined(__SANITIZE_ADDRESS__)
#define ZR_LEAK_CHECK 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define ZR_LEAK_CHECK 1
#endif
#endif

#ifdef ZR_LEAK_CHECK
#include <sanitizer/lsan_interface.h>

// Memory that the toolkit's platform plug-in and the font library keep for the length of the process.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions() {
    return "leak:libqoffscreen.so\nleak:libfontconfig.so\n";
}
#endif

namespace {

void FixEnvironment() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_HASH_SEED", "0");
    qputenv("TZ", "UTC");
    qputenv("LC_ALL", "C.UTF-8");
    qSetGlobalQHashSeed(0);
    tzset();
    setlocale(LC_ALL, "");
}

// While the application lives: what singletons hold is still reachable, and so no leak.
bool HasLeaks() {
#ifdef ZR_LEAK_CHECK
    return __lsan_do_recoverable_leak_check() != 0;
#else
    return false;
#endif
}

void DrainDeletes() {
    for (int round = 0; round < 10; ++round) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

bool HasWidgets() {
    const QWidgetList widgets = QApplication::allWidgets();
    for (const QWidget* widget : widgets) {
        std::cerr << "A widget is left behind: " << widget->metaObject()->className() << " \""
                  << widget->objectName().toStdString() << "\"\n";
    }
    return !widgets.isEmpty();
}

/// The first text of a process finds the fonts. Found here, they are there for all children.
void FindFonts() {
    QLabel text(QStringLiteral("text \u6587"));
    text.grab();
}

QtMessageHandler g_printMessage = nullptr;

/// A refused connection, a parent or a timer of another thread: the toolkit goes on, and the program is wrong.
void FailOnObjectWarning(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    g_printMessage(type, context, text);
    if (type == QtWarningMsg && text.startsWith(QLatin1String("QObject"))) {
        ADD_FAILURE() << "The toolkit warns: " << text.toStdString();
    }
}

/// While it lives such a warning is a failure.
class CObjectWarnings {
public:
    CObjectWarnings() { g_printMessage = qInstallMessageHandler(FailOnObjectWarning); }
    ~CObjectWarnings() { qInstallMessageHandler(nullptr); }
    CObjectWarnings(const CObjectWarnings&) = delete;
    CObjectWarnings& operator=(const CObjectWarnings&) = delete;

    /// Whether one came, or a case failed; also after the last case.
    static bool HasFailures() { return ::testing::UnitTest::GetInstance()->Failed(); }
};

int RunTestsInVirtualTime() {
    const CObjectWarnings warnings;
    int result = RUN_ALL_TESTS();
    DrainDeletes();
    // The toolkit's own animations end by themselves and free themselves then.
    CVirtualTime().Advance(std::chrono::seconds(5));
    if (HasWidgets() || CObjectWarnings::HasFailures()) {
        result = 1;
    }
    if (HasLeaks()) {
        result = 1;
    }
    return result;
}

int RunTestsInRealTime(int argc, char** argv) {
    const CObjectWarnings warnings;
    QCoreApplication application(argc, argv);
    int result = RUN_ALL_TESTS();
    DrainDeletes();
    if (CObjectWarnings::HasFailures()) {
        result = 1;
    }
    if (HasLeaks()) {
        result = 1;
    }
    return result;
}

}  // namespace

int test_process::RunInVirtualTime(int argc, char** argv) {
    FixEnvironment();
    ::testing::InitGoogleMock(&argc, argv);
    QCoreApplication::setEventDispatcher(new CVirtualEventDispatcher);  // the application takes it over
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    CVirtualAnimationDriver animations;
    animations.install();
    if (forked_rounds::AreAskedFor()) {
        FindFonts();
    }
    return forked_rounds::RunOrRepeat(RunTestsInVirtualTime);
}

int test_process::RunInRealTime(int argc, char** argv) {
    FixEnvironment();
    ::testing::InitGoogleMock(&argc, argv);
    // Children must not share the descriptors that wake an ordinary event loop: each has an application of its own.
    return forked_rounds::RunOrRepeat([&argc, argv] { return RunTestsInRealTime(argc, argv); });
}
