#include "support/VirtualTime.h"

#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>

#include <QBasicTimer>
#include <QCoreApplication>
#include <QDialog>
#include <QEventLoop>
#include <QTimer>
#include <QTimerEvent>
#include <QVariantAnimation>
#include <memory>
#include <thread>
#include <vector>

#include "support/VirtualEventDispatcher.h"

using ::testing::ElementsAre;
using namespace std::chrono_literals;

namespace {

/// Records when each of its timers fires, and runs the test's reaction.
class CTimerWitness : public QObject {
public:
    explicit CTimerWitness(CVirtualTime& time) : m_time(time) {}

    std::vector<std::pair<int, int64_t>> fired;  // timer, moment
    std::function<void(int timer)> reaction;

protected:
    void timerEvent(QTimerEvent* event) override {
        fired.emplace_back(event->timerId(), m_time.Now());
        if (reaction) {
            reaction(event->timerId());
        }
    }

private:
    CVirtualTime& m_time;
};

class VirtualTimeTest : public ::testing::Test {
protected:
    CVirtualTime time;
    CTimerWitness witness{time};
};

using Firings = std::vector<std::pair<int, int64_t>>;

}  // namespace

TEST_F(VirtualTimeTest, TimersFireInOrderOfTheirMomentsAndEachAtItsOwn) {
    const int late = witness.startTimer(300);
    const int early = witness.startTimer(200);

    time.Advance(650ms);

    EXPECT_EQ(witness.fired, (Firings{{early, 200}, {late, 300}, {early, 400}, {late, 600}, {early, 600}}));
    EXPECT_EQ(time.Now(), 650);
}

TEST_F(VirtualTimeTest, TimersOfOneMomentFireInOrderOfRegistration) {
    const int first = witness.startTimer(100);
    const int second = witness.startTimer(50);
    const int third = witness.startTimer(100);
    witness.killTimer(second);

    time.Advance(100ms);

    EXPECT_EQ(witness.fired, (Firings{{first, 100}, {third, 100}}));
}

TEST_F(VirtualTimeTest, AnHourlyTimerFiresTwentyFiveTimesInTwentyFiveHours) {
    const int hourly = witness.startTimer(60 * 60 * 1000);

    time.Advance(25h);

    ASSERT_EQ(witness.fired.size(), 25u);
    EXPECT_EQ(witness.fired.back(), std::make_pair(hourly, int64_t(25 * 60 * 60 * 1000)));
}

TEST_F(VirtualTimeTest, ATimerThatIsNotDueDoesNotFire) {
    witness.startTimer(100);

    time.Advance(99ms);

    EXPECT_TRUE(witness.fired.empty());
}

TEST_F(VirtualTimeTest, ATimerMayEndItselfInsideItsEvent) {
    const int timer = witness.startTimer(10);
    witness.reaction = [this](int id) { witness.killTimer(id); };

    time.Advance(100ms);

    EXPECT_EQ(witness.fired, (Firings{{timer, 10}}));
}

TEST_F(VirtualTimeTest, ATimerThatStartsItselfAnewCountsFromThere) {
    QTimer timer;
    std::vector<int64_t> moments;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        moments.push_back(time.Now());
        timer.start(30);
    });

    timer.start(10);
    time.Advance(100ms);

    EXPECT_THAT(moments, ElementsAre(10, 40, 70, 100));
}

TEST_F(VirtualTimeTest, AnObjectThatDiesInItsTimerEventEndsItsTimers) {
    auto* object = new CTimerWitness(time);
    int firings = 0;
    object->startTimer(10);
    object->startTimer(10);
    object->reaction = [&](int) {
        ++firings;
        object->deleteLater();
    };

    time.Advance(10ms);
    const int ofTheFirstMoment = firings;
    time.Advance(100ms);

    EXPECT_EQ(ofTheFirstMoment, 2);
    EXPECT_EQ(firings, 2);
}

TEST_F(VirtualTimeTest, ATimerDoesNotFireInsideItsOwnEvent) {
    const int repeated = witness.startTimer(10);
    witness.reaction = [&](int id) {
        if (id == repeated && witness.fired.size() == 1) {
            QEventLoop loop;
            QTimer::singleShot(35, &loop, &QEventLoop::quit);
            loop.exec();
        }
    };

    time.Advance(50ms);

    EXPECT_EQ(witness.fired, (Firings{{repeated, 10}, {repeated, 50}}));
}

TEST_F(VirtualTimeTest, TheRemainingTimeShrinksWithTheClock) {
    QTimer timer;
    timer.start(100);

    time.Advance(30ms);

    EXPECT_EQ(timer.remainingTime(), 70);
}

TEST_F(VirtualTimeTest, SettleRunsWhatIsPostedAndLeavesTheClock) {
    std::vector<int> order;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { order.push_back(3); });
    timer.start(1);
    QMetaObject::invokeMethod(
        &witness,
        [&] {
            order.push_back(1);
            QMetaObject::invokeMethod(
                &witness, [&] { order.push_back(2); }, Qt::QueuedConnection);
        },
        Qt::QueuedConnection);

    time.Settle();

    EXPECT_THAT(order, ElementsAre(1, 2));
    EXPECT_EQ(time.Now(), 0);
}

TEST_F(VirtualTimeTest, SettleRunsDeferredDeletesAndWhatTheyPost) {
    auto* object = new QObject;
    bool ran = false;
    QObject::connect(object, &QObject::destroyed, &witness, [&] {
        QMetaObject::invokeMethod(
            &witness, [&] { ran = true; }, Qt::QueuedConnection);
    });
    object->deleteLater();

    time.Settle();

    EXPECT_TRUE(ran);
}

TEST_F(VirtualTimeTest, SettleEndsATimerWithoutIntervalWhenItEndsItself) {
    QTimer idle;
    int firings = 0;
    QObject::connect(&idle, &QTimer::timeout, [&] {
        if (++firings == 5) {
            idle.stop();
        }
    });
    idle.start(0);

    time.Settle();

    EXPECT_EQ(firings, 5);
}

TEST_F(VirtualTimeTest, WhatNeverComesToRestFailsTheTest) {
    EXPECT_FATAL_FAILURE(
        {
            QTimer idle;
            idle.start(0);
            CVirtualTime clock;
            clock.Settle();
        },
        "follow each other for ever");
}

TEST_F(VirtualTimeTest, ANestedLoopMovesTheClockToTheNextTimer) {
    QEventLoop loop;
    QTimer::singleShot(1h, &loop, &QEventLoop::quit);

    loop.exec();

    EXPECT_EQ(time.Now(), 60 * 60 * 1000);
}

TEST_F(VirtualTimeTest, ANestedLoopRunsWhatIsPostedBeforeItMovesTheClock) {
    QEventLoop loop;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { loop.exit(1); });
    timer.start(1h);
    QMetaObject::invokeMethod(
        &loop, [&] { loop.exit(2); }, Qt::QueuedConnection);

    EXPECT_EQ(loop.exec(), 2);
    EXPECT_EQ(time.Now(), 0);
}

TEST_F(VirtualTimeTest, TimePassesInALoopThatIdleTimersKeepBusy) {
    QTimer idle;
    idle.start(0);
    QEventLoop loop;
    QTimer::singleShot(50, &loop, &QEventLoop::quit);

    loop.exec();

    EXPECT_EQ(time.Now(), 50);
}

TEST_F(VirtualTimeTest, AModalDialogEndsByItsTimer) {
    QDialog dialog;
    QTimer::singleShot(5s, &dialog, &QDialog::accept);

    EXPECT_EQ(dialog.exec(), int(QDialog::Accepted));
    EXPECT_EQ(time.Now(), 5000);
}

TEST_F(VirtualTimeTest, APostFromAnotherThreadWakesALoopWithoutTimers) {
    QEventLoop loop;
    std::thread other([&] {
        QMetaObject::invokeMethod(
            &loop, [&] { loop.exit(7); }, Qt::QueuedConnection);
    });

    EXPECT_EQ(loop.exec(), 7);

    other.join();
    EXPECT_EQ(time.Now(), 0);
}

TEST_F(VirtualTimeTest, AQuitFromAnotherThreadEndsALoopWithoutTimers) {
    QEventLoop loop;
    std::thread other([&] { loop.quit(); });
    other.join();
    QMetaObject::invokeMethod(
        &loop, [&] { loop.exit(7); }, Qt::QueuedConnection);

    EXPECT_EQ(loop.exec(), 7);
}

TEST_F(VirtualTimeTest, WaitUntilSeesWhatAnotherThreadPosts) {
    bool arrived = false;
    std::thread other([&] {
        QMetaObject::invokeMethod(
            &witness, [&] { arrived = true; }, Qt::QueuedConnection);
    });

    EXPECT_TRUE(time.WaitUntil([&] { return arrived; }));

    other.join();
}

TEST_F(VirtualTimeTest, WaitUntilGivesUpAtItsBound) {
    EXPECT_FALSE(time.WaitUntil([] { return false; }, 1ms));
}

TEST_F(VirtualTimeTest, ServerTimeMovesWithTheClockAndMayBeSet) {
    EXPECT_EQ(time.ServerTime(), 1'700'000'000'000);

    time.Advance(2s);
    EXPECT_EQ(time.ServerTime(), 1'700'000'002'000);

    time.SetServerTime(5000);
    time.Advance(1ms);
    EXPECT_EQ(time.ServerTimeMs(), 5001);
}

TEST_F(VirtualTimeTest, AnimationsFollowTheClock) {
    QVariantAnimation animation;
    animation.setStartValue(0);
    animation.setEndValue(1000);
    animation.setDuration(1000);
    animation.start();

    time.Advance(500ms);
    EXPECT_NEAR(animation.currentValue().toInt(), 500, 20);
    EXPECT_EQ(animation.state(), QAbstractAnimation::Running);

    time.Advance(520ms);
    EXPECT_EQ(animation.currentValue().toInt(), 1000);
    EXPECT_EQ(animation.state(), QAbstractAnimation::Stopped);
}
