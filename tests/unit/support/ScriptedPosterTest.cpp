#include "support/ScriptedPoster.h"

#include "core/post.h"
#include "support/ScriptedHostTest.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class ScriptedPosterTest : public ScriptedHostTest {
protected:
    QObject context;
    std::vector<int64_t> moments;

    void Post(int delayMs) {
        core::post::ToMainDelay(
            &context, delayMs, [this] { moments.push_back(time.Now()); }, nullptr);
    }
};

}  // namespace

TEST_F(ScriptedPosterTest, TasksRunAtTheirOwnVirtualMoments) {
    Post(5000);
    Post(0);
    Post(60000);

    time.Settle();
    EXPECT_THAT(moments, ElementsAre(0));

    time.Advance(std::chrono::minutes(1));
    EXPECT_THAT(moments, ElementsAre(0, 5000, 60000));
}

TEST_F(ScriptedPosterTest, DelaysAreRecordedInPostingOrder) {
    Post(5000);
    Post(-1);
    core::post::ToMain(
        &context, [] {}, nullptr);

    EXPECT_THAT(poster.Delays(), ElementsAre(5000, 0, 0));

    poster.Forget();
    EXPECT_THAT(poster.Delays(), IsEmpty());
}

TEST_F(ScriptedPosterTest, AnswersOfTheChannelAreNotRecorded) {
    channel.AnswerAlways(1, "");
    IZRChannelProxy::SendCommand(kCSChannelMain, CSProtoData{1, ""}, nullptr, nullptr, &context);

    EXPECT_THAT(poster.Delays(), IsEmpty());
}
