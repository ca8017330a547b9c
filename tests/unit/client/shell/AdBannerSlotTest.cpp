#include "AdBannerSlot.h"

#include <QVBoxLayout>

#include "Ads.h"
#include "FakeGrowthService.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

class AdBannerSlotTest : public ScriptedHostTest {
protected:
    AdBannerSlotTest() {
        auto* layout = new QVBoxLayout(&page);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(0);
        slot = new CAdBannerSlot(7, ads, &page);
        layout->addWidget(slot);
        layout->addWidget(&below, 1);
        page.resize(700, 300);
        account.Set(501, 1);
    }

    void ShowPage() {
        page.show();
        time.Settle();
    }

    void LogIn(uint64_t userId) {
        account.Set(userId, userId == 0 ? 0 : 1);
        ads.Refresh();
        time.Settle();
    }

    /// The module passes a banner to the last caller.
    QPointer<QWidget> Arrive() {
        const QPointer<QWidget> banner = new QWidget;
        banner->setFixedSize(service->banners.back().size);
        service->banners.back().callback(banner);
        time.Settle();
        return banner;
    }

    int Room() const { return below.y(); }

    std::shared_ptr<CFakeGrowthService> service = CFakeGrowthService::Offer();
    CAds ads;
    QWidget page;
    QWidget below;
    CAdBannerSlot* slot;
};

}  // namespace

TEST_F(AdBannerSlotTest, ABannerIsAskedForWhenThePageIsFirstShown) {
    time.Settle();
    EXPECT_THAT(service->banners, IsEmpty());

    ShowPage();

    ASSERT_THAT(service->banners, SizeIs(1));
    EXPECT_EQ(service->banners[0].position, 7);
    EXPECT_EQ(service->banners[0].size, QSize(700, 116));
    time.Advance(60s);
    page.hide();
    ShowPage();
    EXPECT_THAT(service->banners, SizeIs(1));
}

TEST_F(AdBannerSlotTest, TheSlotTakesNoRoomWithoutABannerAndTheBannersRoomWithOne) {
    ShowPage();
    EXPECT_EQ(Room(), 0);

    const auto banner = Arrive();

    EXPECT_EQ(Room(), 116);
    ASSERT_NE(banner, nullptr);
    EXPECT_TRUE(banner->isVisible());
    EXPECT_EQ(banner->mapTo(&page, QPoint()), QPoint(0, 0));
}

TEST_F(AdBannerSlotTest, ABannerNeverHoldsThePageWide) {
    ShowPage();
    const auto banner = Arrive();

    page.resize(300, 300);
    time.Settle();

    EXPECT_EQ(page.width(), 300);
    EXPECT_EQ(banner->mapTo(&page, QPoint()), QPoint(0, 0));
    EXPECT_EQ(banner->width(), 700);
}

TEST_F(AdBannerSlotTest, AnotherWidthOfThePageBringsABannerOfThatWidth) {
    ShowPage();
    const auto narrow = Arrive();
    time.Advance(11s);

    page.resize(900, 300);
    time.Advance(100ms);
    page.resize(1200, 300);
    time.Advance(499ms);
    EXPECT_THAT(service->banners, SizeIs(1));
    time.Advance(1ms);

    ASSERT_THAT(service->banners, SizeIs(2));
    EXPECT_EQ(service->banners[1].size, QSize(1200, 150));
    EXPECT_NE(narrow, nullptr);
    Arrive();
    EXPECT_EQ(narrow, nullptr);
    EXPECT_EQ(Room(), 150);
    time.Advance(60s);
    EXPECT_THAT(service->banners, SizeIs(2));
}

TEST_F(AdBannerSlotTest, AnotherLanguageBringsAnotherBannerInPlaceOfTheFirst) {
    ShowPage();
    const auto first = Arrive();
    time.Advance(11s);

    ads.Refresh();
    ASSERT_THAT(service->banners, SizeIs(2));
    EXPECT_NE(first, nullptr);
    const auto second = Arrive();

    EXPECT_EQ(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_TRUE(second->isVisible());
    EXPECT_EQ(Room(), 116);
}

TEST_F(AdBannerSlotTest, NothingToShowEndsTheBannerBefore) {
    ShowPage();
    const auto first = Arrive();
    time.Advance(11s);
    ads.Refresh();

    service->banners.back().callback(nullptr);
    time.Settle();

    EXPECT_EQ(first, nullptr);
    EXPECT_EQ(Room(), 0);
}

TEST_F(AdBannerSlotTest, NobodyIsAskedForBeforeTheLoginAndAPageThatNobodySawNeither) {
    account.Set(0);
    ShowPage();
    EXPECT_THAT(service->banners, IsEmpty());
    LogIn(501);
    EXPECT_THAT(service->banners, SizeIs(1));

    page.hide();
    QWidget unseen;
    const CAdBannerSlot other(9, ads, &unseen);
    time.Advance(11s);
    LogIn(502);

    ASSERT_THAT(service->banners, SizeIs(2));
    EXPECT_EQ(service->banners[1].position, 7);
}

TEST_F(AdBannerSlotTest, ABannerGoesWithItsUser) {
    ShowPage();
    const auto banner = Arrive();

    LogIn(0);

    EXPECT_EQ(banner, nullptr);
    EXPECT_EQ(Room(), 0);
}

TEST_F(AdBannerSlotTest, ABannerThatComesAfterItsUserHasLeftIsDeleted) {
    ShowPage();

    LogIn(0);
    EXPECT_EQ(Arrive(), nullptr);
    LogIn(502);
    EXPECT_EQ(Arrive(), nullptr);

    EXPECT_EQ(Room(), 0);
}

TEST_F(AdBannerSlotTest, WhatIsDueTooSoonIsAskedForLaterAndOnce) {
    ShowPage();
    time.Advance(4s);
    LogIn(0);
    LogIn(502);
    time.Advance(1s);
    ads.Refresh();

    time.Advance(5s);
    EXPECT_THAT(service->banners, SizeIs(1));
    time.Advance(1s);
    EXPECT_THAT(service->banners, SizeIs(2));
    time.Advance(60s);
    EXPECT_THAT(service->banners, SizeIs(2));
}

TEST_F(AdBannerSlotTest, AClockThatIsSetBackAndOnAgainDelaysABannerByOnePause) {
    time.SetServerTime(2'000'000'000'000);
    ShowPage();
    time.SetServerTime(1'000'000'000'000);
    ads.Refresh();
    time.Advance(60s);
    EXPECT_THAT(service->banners, SizeIs(1));

    time.SetServerTime(2'000'000'060'000);
    time.Advance(11s);

    EXPECT_THAT(service->banners, SizeIs(2));
}

TEST_F(AdBannerSlotTest, NothingIsAskedForLaterOnceTheUserHasLeft) {
    ShowPage();
    time.Advance(4s);
    ads.Refresh();

    LogIn(0);
    time.Advance(60s);

    EXPECT_THAT(service->banners, SizeIs(1));
}

TEST_F(AdBannerSlotTest, ABannerThatComesAfterThePageHasGoneIsDeleted) {
    ShowPage();

    delete slot;

    EXPECT_EQ(Arrive(), nullptr);
}

TEST_F(AdBannerSlotTest, WithoutTheModuleThereIsNoBanner) {
    service.reset();

    ShowPage();
    ads.Refresh();

    EXPECT_EQ(Room(), 0);
}
