#include "HostSet.h"

#include "core/post.h"

void HostContractTest::RunPosted() {
    for (int round = 0; round < 3; ++round) {
        QObject context;
        bool ran = false;
        core::post::ToMain(
            &context, [&] { ran = true; }, nullptr);
        ASSERT_TRUE(WaitUntil([&] { return ran; }));
    }
}
