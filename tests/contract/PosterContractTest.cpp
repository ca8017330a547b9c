#include <gmock/gmock.h>

#include <QThread>
#include <thread>

#include "HostSet.h"
#include "core/post.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class PosterContractTest : public HostContractTest {
protected:
    std::function<void()> Note(int number) {
        return [this, number] { notes.push_back(number); };
    }

    QObject context;
    std::vector<int> notes;
};

}  // namespace

TEST_F(PosterContractTest, TasksRunLaterAndInPostingOrder) {
    core::post::ToMain(&context, Note(1), "name");
    core::post::ToMain(&context, Note(2), nullptr);
    core::post::ToMain(&context, Note(3), nullptr);
    EXPECT_THAT(notes, IsEmpty());

    ASSERT_TRUE(WaitUntil([&] { return notes.size() == 3; }));
    EXPECT_THAT(notes, ElementsAre(1, 2, 3));
}

TEST_F(PosterContractTest, NoDelayAndNegativeDelaysRunLaterInOneOrderWithTheRest) {
    core::post::ToMainDelay(&context, -5, Note(1), nullptr);
    core::post::ToMain(&context, Note(2), nullptr);
    core::post::ToMainDelay(&context, 0, Note(3), nullptr);
    core::post::ToMainDelay(&context, -1, Note(4), nullptr);
    EXPECT_THAT(notes, IsEmpty());

    ASSERT_TRUE(WaitUntil([&] { return notes.size() == 4; }));
    EXPECT_THAT(notes, ElementsAre(1, 2, 3, 4));
}

TEST_F(PosterContractTest, DelayedTasksRunByTheirMoment) {
    core::post::ToMainDelay(&context, 80, Note(3), nullptr);
    core::post::ToMainDelay(&context, 40, Note(2), nullptr);
    core::post::ToMain(&context, Note(1), nullptr);

    ASSERT_TRUE(WaitUntil([&] { return notes.size() == 3; }));
    EXPECT_THAT(notes, ElementsAre(1, 2, 3));
}

TEST_F(PosterContractTest, ATaskPostedInsideATaskRunsAfterThoseThatWait) {
    core::post::ToMain(
        &context, [&] { core::post::ToMain(&context, Note(3), nullptr); }, nullptr);
    core::post::ToMain(&context, Note(2), nullptr);

    ASSERT_TRUE(WaitUntil([&] { return notes.size() == 2; }));
    EXPECT_THAT(notes, ElementsAre(2, 3));
}

TEST_F(PosterContractTest, NothingRunsWithoutAContext) {
    core::post::ToMain(nullptr, Note(1), nullptr);
    core::post::ToMainDelay(nullptr, -1, Note(2), nullptr);

    RunPosted();

    EXPECT_THAT(notes, IsEmpty());
}

TEST_F(PosterContractTest, NothingRunsForAContextThatDiedBefore) {
    auto dying = std::make_unique<QObject>();
    core::post::ToMain(dying.get(), Note(1), nullptr);
    core::post::ToMainDelay(dying.get(), 10, Note(2), nullptr);
    core::post::ToMainDelay(&context, 20, Note(3), nullptr);

    dying.reset();

    ASSERT_TRUE(WaitUntil([&] { return !notes.empty(); }));
    EXPECT_THAT(notes, ElementsAre(3));
}

TEST_F(PosterContractTest, AnEmptyTaskDoesNothing) {
    core::post::ToMain(&context, nullptr, nullptr);
    core::post::ToMain(&context, Note(1), nullptr);

    ASSERT_TRUE(WaitUntil([&] { return !notes.empty(); }));
}

TEST_F(PosterContractTest, TasksOfAnotherThreadRunOnTheMainThreadInOrder) {
    bool allOnMainThread = true;
    std::thread([&] {
        for (int i = 0; i < 100; ++i) {
            core::post::ToMain(
                &context,
                [&, i] {
                    allOnMainThread = allOnMainThread && QThread::currentThread() == context.thread();
                    notes.push_back(i);
                },
                nullptr);
        }
    }).join();

    ASSERT_TRUE(WaitUntil([&] { return notes.size() == 100; }));
    EXPECT_TRUE(std::is_sorted(notes.begin(), notes.end()));
    EXPECT_TRUE(allOnMainThread);
}

TEST_F(PosterContractTest, ATaskThatThrowsStopsNoOther) {
    core::post::ToMain(
        &context, [] { throw 1; }, nullptr);
    core::post::ToMain(&context, Note(2), nullptr);

    ASSERT_TRUE(WaitUntil([&] { return !notes.empty(); }));
}

TEST_F(PosterContractTest, ATaskThatOpensALoopOfItsOwnHoldsUpNoOther) {
    core::post::ToMain(
        &context,
        [this] {
            EXPECT_TRUE(WaitUntil([this] { return notes.size() == 2; }));
            notes.push_back(3);
        },
        nullptr);
    core::post::ToMain(&context, Note(1), nullptr);
    core::post::ToMainDelay(&context, 1, Note(2), nullptr);

    ASSERT_TRUE(WaitUntil([&] { return notes.size() == 3; }));
    EXPECT_THAT(notes, ElementsAre(1, 2, 3));
}
