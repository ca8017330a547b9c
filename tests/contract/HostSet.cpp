#include "HostSet.h"

#include "core/message_dispatch.h"
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

void HostContractTest::RecordMessage(unsigned int messageId, std::function<std::string()> state) {
    core::__CMessageDispatch("test").Bind(
        messageId,
        [this, state = std::move(state)](unsigned int id, unsigned long wParam, const auto& body) {
            EXPECT_EQ(body, nullptr);
            recorded.push_back(std::to_string(id) + (wParam == 0 ? "" : " wParam " + std::to_string(wParam)) + ": " +
                               state());
        },
        &subscriber);
}
