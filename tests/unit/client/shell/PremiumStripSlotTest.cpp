#include "PremiumStripSlot.h"

#include "FakeGrowthService.h"
#include "PremiumRights.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

constexpr EnPremiumAccess kRight = EnPremiumAccess_AIStockExplain;

class PremiumStripSlotTest : public ScriptedHostTest {
protected:
    PremiumStripSlotTest() {
        page.show();
        slot = std::make_unique<CPremiumStripSlot>(kRight, rights, &page);
    }

    void SetRight(int activationType, const char* title = "title", int days = 12) {
        CPremiumUIAccessData record = RecordOf(kRight, true, title);
        record.nActivationType = activationType;
        record.nDaysLeft = days;
        service->table[kRight] = record;
        bus.HostSend(80050);
        time.Settle();
    }

    CFakePremiumStrip* Strip() const { return service->strips.empty() ? nullptr : service->strips.back().data(); }

    std::shared_ptr<CFakeGrowthService> service = CFakeGrowthService::Offer();
    CPremiumRights rights;
    QWidget page;
    std::unique_ptr<CPremiumStripSlot> slot;
};

}  // namespace

TEST_F(PremiumStripSlotTest, StripIsShownForARightOfLimitedTimeOnly) {
    EXPECT_FALSE(slot->isVisible());
    for (const int type : {0, 2, 3, 4, 5, 6}) {
        SetRight(type);
        EXPECT_FALSE(slot->isVisible()) << type;
        EXPECT_EQ(Strip(), nullptr) << type;
    }

    SetRight(1);

    ASSERT_TRUE(Strip());
    EXPECT_TRUE(Strip()->isVisible());
    EXPECT_EQ(Strip()->parentWidget(), slot.get());
    EXPECT_EQ(Strip()->shown, "title|main button|D|detail title|12");

    SetRight(3);
    EXPECT_FALSE(slot->isVisible());
    EXPECT_EQ(Strip(), nullptr);
}

TEST_F(PremiumStripSlotTest, StripFollowsTheRightAndStaysTheSame) {
    SetRight(1);
    const QPointer<QWidget> strip = Strip();

    SetRight(1, "other", 1);

    EXPECT_THAT(service->strips, SizeIs(1));
    EXPECT_EQ(Strip(), strip);
    EXPECT_EQ(Strip()->shown, "other|main button|D|detail title|1");
}

TEST_F(PremiumStripSlotTest, ClickGoesToTheModuleAndMayEndTheStrip) {
    SetRight(1);
    Strip()->clicked(false);
    EXPECT_EQ(service->vipClicks, 1);

    const auto clicked = Strip()->clicked;
    SetRight(3);
    slot.reset();
    clicked(false);
    EXPECT_EQ(service->vipClicks, 1);
}

TEST_F(PremiumStripSlotTest, StripGoesWithTheModule) {
    SetRight(1);
    const QPointer<QWidget> strip = Strip();
    service.reset();

    rights.Refresh();
    time.Settle();

    EXPECT_FALSE(slot->isVisible());
    EXPECT_EQ(strip, nullptr);
}
