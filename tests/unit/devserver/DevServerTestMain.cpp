#include <gmock/gmock.h>

#include <QCoreApplication>

#include "support/ForkedRounds.h"

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    // Each child has its own application, as they must not share the descriptors that wake an event loop.
    return forked_rounds::RunOrRepeat([&argc, argv] {
        const QCoreApplication application(argc, argv);
        return RUN_ALL_TESTS();
    });
}
