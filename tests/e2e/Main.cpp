// End-to-end tests on a real screen: the application, the mapped module, and a server process.
#include <gmock/gmock.h>

#include <QApplication>
#include <QStandardPaths>

#include "support/ForkedRounds.h"

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    if (GTEST_FLAG_GET(list_tests)) {
        return RUN_ALL_TESTS();
    }
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("TZ", "UTC");
    // One round at a time, because only one window can be active.
    return forked_rounds::RunOrRepeat(
        [&argc, argv] {
            QApplication::setStyle(QStringLiteral("Fusion"));
            const QApplication application(argc, argv);
            QStandardPaths::setTestModeEnabled(true);
            return RUN_ALL_TESTS();
        },
        1);
}
