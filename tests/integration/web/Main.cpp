// Web widgets on a real screen, with the browser engine.
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
    return forked_rounds::RunOrRepeat(
        [&argc, argv] {
            QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
            const QApplication application(argc, argv);
            QStandardPaths::setTestModeEnabled(true);
            return RUN_ALL_TESTS();
        },
        1);
}
