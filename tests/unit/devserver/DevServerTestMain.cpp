#include <gmock/gmock.h>

#include <QCoreApplication>

#include "support/ForkedRounds.h"

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    // Children must not share the descriptors that wake an event loop: each has an application of its own.
    return forked_rounds::RunOrRepeat([&argc, argv] {
        const QCoreApplication application(argc, argv);
        return RUN_ALL_TESTS();
    });
}
