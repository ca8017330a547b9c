#include "VipGallery.h"

#include <QComboBox>

#include "FakeGrowthService.h"
#include "PremiumRights.h"
#include "VipSlot.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

constexpr EnPremiumAccess kFive{5};

class VipGalleryTest : public ScriptedHostTest {
protected:
    VipGalleryTest() {
        service->table[kFive] = RecordOf(kFive, true, "five");
        service->masks = {kFive};
        rights.Refresh();
        CVipGallery::Open(&window, rights);
    }

    CVipGallery* Gallery() const { return window.findChild<CVipGallery*>(); }

    void Choose(const char* box, int index) {
        Gallery()->findChild<QComboBox*>(QString::fromLatin1(box))->setCurrentIndex(index);
    }

    std::shared_ptr<CFakeGrowthService> service = CFakeGrowthService::Offer();
    CPremiumRights rights;
    QWidget window;
};

}  // namespace

TEST_F(VipGalleryTest, FirstFrameHasRowsAndTheOthersFollow) {
    EXPECT_FALSE(Gallery()->IsComplete());
    EXPECT_THAT(Gallery()->findChildren<CVipSlot*>(), SizeIs(8 * 3 * 7));

    time.Settle();

    EXPECT_TRUE(Gallery()->IsComplete());
}

TEST_F(VipGalleryTest, EachRightHasAllWidgetsInAllTextSets) {
    time.Settle();

    std::map<int, std::set<std::pair<int, int>>> shown;
    for (const CVipSlot* slot : Gallery()->findChildren<CVipSlot*>()) {
        shown[slot->Place().access].emplace(int(slot->Place().kind), slot->Place().dataType);
    }
    EXPECT_THAT(shown, SizeIs(46));
    EXPECT_THAT(shown, Each(Pair(_, SizeIs(21))));
    EXPECT_THAT(shown, Contains(Key(1000)));
    EXPECT_THAT(shown, Not(Contains(Key(112))));
}

TEST_F(VipGalleryTest, SlotsAskTheModule) {
    time.Settle();

    int filled = 0;
    for (const CVipSlot* slot : Gallery()->findChildren<CVipSlot*>()) {
        filled += slot->IsFilled() ? 1 : 0;
    }
    EXPECT_EQ(filled, 9);
    EXPECT_THAT(service->vipCreated, SizeIs(9));
}

TEST_F(VipGalleryTest, SwitchesReplaceTheValuesOfTheRights) {
    Choose("GalleryType", 1 + 5);
    EXPECT_EQ(service->table[kFive].nActivationType, 5);
    EXPECT_EQ(rights.Table()[kFive].nActivationType, 5);
    Choose("GalleryDays", 2);
    EXPECT_EQ(service->table[kFive].nDaysLeft, 1);
    Choose("GalleryLetter", 1);
    EXPECT_EQ(service->table[kFive].strUIType, QStringLiteral("A"));

    Choose("GalleryType", 0);
    EXPECT_EQ(service->table[kFive].nActivationType, 3);
}

TEST_F(VipGalleryTest, AnswerOfTheServerIsReplacedBeforeTheWidgetsShowIt) {
    Choose("GalleryType", 1 + 5);
    service->table[kFive].nActivationType = 2;
    int seen = 0;
    QObject::connect(&rights, &CPremiumRights::Changed, &window, [&] { seen = service->table[kFive].nActivationType; });

    bus.HostSend(80050);

    EXPECT_EQ(seen, 5);
}

TEST_F(VipGalleryTest, CloseRestoresTheValues) {
    Choose("GalleryType", 1 + 5);
    time.Settle();

    Gallery()->close();
    time.Settle();

    EXPECT_EQ(service->table[kFive].nActivationType, 3);
    EXPECT_EQ(rights.Table()[kFive].nActivationType, 3);
    EXPECT_EQ(Gallery(), nullptr);
}

TEST_F(VipGalleryTest, CloseBeforeTheLastRowEndsTheCreation) {
    Gallery()->close();
    time.Settle();

    EXPECT_EQ(Gallery(), nullptr);
    EXPECT_THAT(service->vipCreated, SizeIs(9));
}

TEST_F(VipGalleryTest, OpenWindowIsRaised) {
    const CVipGallery* const first = Gallery();

    CVipGallery::Open(&window, rights);

    EXPECT_EQ(Gallery(), first);
    EXPECT_THAT(window.findChildren<CVipGallery*>(), SizeIs(1));
}
