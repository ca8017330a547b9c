#include <gtest/gtest-spi.h>

#include "core/uniform_resource_slot.h"
#include "modules/IMainFrameModuleUtil.h"
#include "plugin/IZRPluginCenter.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

const QString kUrl = QStringLiteral("https://pictures.test/a.png");

class ScriptedPicturesTest : public ScriptedHostTest {
protected:
    void Load(const QString& url, QObject* by) {
        pictures.Load(url, QSize(4, 3), false, by, [this](const std::shared_ptr<const Picture>& picture) {
            told.push_back(picture ? picture->frames[0].image : QImage());
        });
    }

    std::unique_ptr<QObject> guard = std::make_unique<QObject>();
    std::vector<QImage> told;
};

TEST_F(ScriptedPicturesTest, ALoadThatNobodyLookedAtFailsTheTest) {
    Load(kUrl, guard.get());

    EXPECT_NONFATAL_FAILURE(pictures.CheckAllLookedAt(),
                            "An unexpected picture was asked for: 1: https://pictures.test/a.png 4x3");
    pictures.CheckAllLookedAt();
}

TEST_F(ScriptedPicturesTest, AnAnswerIsALookAndRunsAtOnceAndOnce) {
    Load(kUrl, guard.get());
    EXPECT_EQ(pictures.OutstandingCount(), 1);

    pictures.Succeed(1, Qt::blue);
    pictures.Succeed(1, Qt::blue);

    ASSERT_THAT(told, SizeIs(1));
    EXPECT_EQ(told[0].size(), QSize(4, 3));
    EXPECT_EQ(told[0].pixelColor(1, 1), QColor(Qt::blue));
    EXPECT_EQ(pictures.OutstandingCount(), 0);
}

TEST_F(ScriptedPicturesTest, ALoadThatNeverWasFailsTheTest) {
    EXPECT_NONFATAL_FAILURE(pictures.Fail(1), "No picture was asked for by the number 1");
    EXPECT_NONFATAL_FAILURE(pictures.SucceedUrl("https://pictures.test/"), "by the number 0");
}

TEST_F(ScriptedPicturesTest, TheLastLoadOfAnAddressIsAnsweredByIt) {
    Load(kUrl, guard.get());
    Load(kUrl, guard.get());
    Load(QStringLiteral("https://pictures.test/b.png"), guard.get());

    pictures.FailUrl(kUrl.toStdString());

    EXPECT_EQ(pictures.OutstandingCount(), 2);
    ASSERT_THAT(told, SizeIs(1));
    EXPECT_TRUE(told[0].isNull());
    pictures.Succeed(2);
    EXPECT_THAT(told, SizeIs(1));
    EXPECT_THAT(pictures.Asked(), SizeIs(3));
}

TEST_F(ScriptedPicturesTest, PicturesMayBeInAtOnce) {
    Load(kUrl, guard.get());
    pictures.AnswerAtOnce();

    Load(QStringLiteral("https://pictures.test/b.png"), guard.get());

    ASSERT_THAT(told, SizeIs(1));
    EXPECT_EQ(told[0].size(), QSize(4, 3));
    EXPECT_EQ(pictures.OutstandingCount(), 1);
    EXPECT_THAT(pictures.Asked(), SizeIs(2));
}

TEST_F(ScriptedPicturesTest, AGuardThatIsGoneHearsNothing) {
    Load(kUrl, guard.get());
    guard.reset();

    pictures.Succeed(1);

    EXPECT_THAT(told, IsEmpty());
    EXPECT_EQ(pictures.OutstandingCount(), 0);
}

class ScriptedMainFrameTest : public ScriptedHostTest {
protected:
    static std::shared_ptr<IMainFrameModuleUtil> Ask() {
        return IZRPluginCenter::CreateInterface<IMainFrameModuleUtil>();
    }
};

TEST_F(ScriptedMainFrameTest, IsThereOnceItIsOfferedAndUntilItIsTakenAway) {
    EXPECT_EQ(Ask(), nullptr);
    QWidget window;

    mainFrame.Offer(&window);

    ASSERT_TRUE(Ask());
    EXPECT_EQ(Ask()->GetMainFrameWidget(), &window);
    mainFrame.TakeAway();
    EXPECT_EQ(Ask(), nullptr);
}

TEST_F(ScriptedMainFrameTest, AnswersWhatItWasTold) {
    mainFrame.Offer(nullptr);
    EXPECT_EQ(Ask()->GetMainFrameWidget(), nullptr);
    EXPECT_TRUE(Ask()->IsMainFrameFocusIn());
    EXPECT_FALSE(Ask()->IsNavigationCollapsed());

    mainFrame.SetTabKey(508);
    mainFrame.SetFocusIn(false);
    mainFrame.SetNavigationCollapsed(true);

    EXPECT_EQ(Ask()->GetCurrentTabFrameKey(), 508);
    EXPECT_FALSE(Ask()->IsMainFrameFocusIn());
    EXPECT_TRUE(Ask()->IsNavigationCollapsed());
}

TEST_F(ScriptedMainFrameTest, AWindowThatIsGoneIsNone) {
    auto window = std::make_unique<QWidget>();
    mainFrame.Offer(window.get());

    window.reset();

    EXPECT_EQ(Ask()->GetMainFrameWidget(), nullptr);
}

class ScriptedSlotsTest : public ScriptedHostTest {};

TEST_F(ScriptedSlotsTest, AreAllowedUntilTheTestForbidsThem) {
    using core::uniform_resource_slot::IsAllowedToShowUniformResourceSlot;
    EXPECT_TRUE(IsAllowedToShowUniformResourceSlot(kSlotAdPopup));

    slots.Allow(kSlotAdPopup, false);
    EXPECT_FALSE(IsAllowedToShowUniformResourceSlot(kSlotAdPopup));
    slots.Allow(kSlotAdPopup, true);

    EXPECT_TRUE(IsAllowedToShowUniformResourceSlot(kSlotAdPopup));
    EXPECT_EQ(slots.AskedCount(), 3);
}

}  // namespace
