#include "VipSlot.h"

#include <QAccessible>
#include <QLabel>
#include <QPushButton>

#include "FakeGrowthService.h"
#include "PremiumRights.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

constexpr EnPremiumAccess kRight = EnPremiumAccess_hk_stock_lv2;

class VipSlotTest : public ScriptedHostTest {
protected:
    VipSlotTest() {
        covered.setGeometry(20, 40, 200, 120);
        card.resize(400, 300);
        card.show();
        time.Settle();
    }

    std::unique_ptr<CVipSlot> NewSlot(EnVipKind kind, QWidget* behind = nullptr) {
        auto slot =
            std::make_unique<CVipSlot>(VipPlace{kind, kRight, ZRVipUIDataDetail, "page"}, rights, &card, behind);
        time.Settle();
        return slot;
    }

    void Allow(bool allowed) {
        const std::set<int> numbers = allowed ? std::set<int>{kRight} : std::set<int>{};
        service->icons = service->tags = service->vipBanners = service->masks = numbers;
    }

    void Notify(unsigned int message = 80050) {
        bus.HostSend(message);
        time.Settle();
    }

    /// The names that a screen reader finds in the card, also of invisible elements.
    std::multiset<std::string> Spoken() {
        std::multiset<std::string> names;
        std::function<void(QAccessibleInterface*)> walk = [&](QAccessibleInterface* element) {
            for (int child = 0; child < element->childCount(); ++child) {
                const std::string name = element->child(child)->text(QAccessible::Name).toStdString();
                if (!name.empty()) {
                    names.insert(name);
                }
                walk(element->child(child));
            }
        };
        walk(QAccessible::queryAccessibleInterface(&card));
        return names;
    }

    QWidget* Widget() const { return service->vipCreated.empty() ? nullptr : service->vipCreated.back().widget.data(); }
    int Updates() const { return static_cast<CFakeVipWidget*>(Widget())->updates; }

    std::shared_ptr<CFakeGrowthService> service = CFakeGrowthService::Offer();
    CPremiumRights rights;
    QWidget card;
    QPushButton covered{&card};
};

struct Kind {
    const char* name;
    EnVipKind kind;
    int type;
    std::set<int> CFakeGrowthService::*rule;
    const char* page;
};

class VipKindTest : public VipSlotTest, public WithParamInterface<Kind> {};

class VipMessageTest : public VipSlotTest, public WithParamInterface<unsigned int> {};

}  // namespace

TEST_P(VipKindTest, WidgetAppearsAndGoesByItsRule) {
    const auto slot = NewSlot(GetParam().kind, &covered);
    EXPECT_FALSE(slot->isVisible());
    EXPECT_FALSE(slot->IsFilled());

    (*service).*GetParam().rule = {kRight};
    Notify();

    ASSERT_THAT(service->vipCreated, SizeIs(1));
    EXPECT_TRUE(Widget()->isVisible());
    EXPECT_EQ(Widget()->parentWidget(), slot.get());
    EXPECT_EQ(service->vipCreated[0].type, GetParam().type);
    EXPECT_EQ(service->vipCreated[0].pageId, QString::fromLatin1(GetParam().page));

    ((*service).*GetParam().rule).clear();
    Notify();

    EXPECT_EQ(Widget(), nullptr);
    EXPECT_FALSE(slot->isVisible());
}

INSTANTIATE_TEST_SUITE_P(Kinds, VipKindTest,
                         Values(Kind{"Icon", EnVipKind::Icon, 0, &CFakeGrowthService::icons, ""},
                                Kind{"TagGrade", EnVipKind::TagGrade, 0, &CFakeGrowthService::tags, "page"},
                                Kind{"TagName", EnVipKind::TagName, 1, &CFakeGrowthService::tags, "page"},
                                Kind{"Banner", EnVipKind::Banner, 0, &CFakeGrowthService::vipBanners, "page"},
                                Kind{"MaskLocked", EnVipKind::MaskLocked, 0, &CFakeGrowthService::masks, "page"},
                                Kind{"MaskCompact", EnVipKind::MaskCompact, 1, &CFakeGrowthService::masks, "page"},
                                Kind{"MaskExclusive", EnVipKind::MaskExclusive, 2, &CFakeGrowthService::masks, "page"}),
                         [](const auto& row) { return row.param.name; });

TEST_P(VipMessageTest, ShownWidgetIsUpdated) {
    Allow(true);
    const auto slot = NewSlot(EnVipKind::Banner);
    EXPECT_EQ(Updates(), 0);

    Notify(GetParam());

    EXPECT_THAT(service->vipCreated, SizeIs(1));
    EXPECT_EQ(Updates(), 1);
    EXPECT_EQ(static_cast<CFakeVipWidget*>(Widget())->right, kRight);
    EXPECT_EQ(static_cast<CFakeVipWidget*>(Widget())->texts, ZRVipUIDataDetail);
}

INSTANTIATE_TEST_SUITE_P(Messages, VipMessageTest, Values(80050u, 80051u, 80052u, 20100u),
                         [](const auto& row) { return std::to_string(row.param); });

TEST_F(VipSlotTest, WidgetGoesAtALogoutWithoutAMessage) {
    Allow(true);
    const auto slot = NewSlot(EnVipKind::Banner);

    Allow(false);
    rights.Refresh();
    time.Settle();

    EXPECT_EQ(Widget(), nullptr);
}

TEST_F(VipSlotTest, SlotIsEmptyWithoutTheModule) {
    Allow(true);
    const auto slot = NewSlot(EnVipKind::MaskLocked, &covered);
    EXPECT_FALSE(covered.isEnabled());

    service.reset();
    rights.Refresh();

    EXPECT_FALSE(slot->IsFilled());
    EXPECT_TRUE(covered.isEnabled());
}

TEST_F(VipSlotTest, UnwantedSlotStaysEmpty) {
    Allow(true);
    const auto slot = NewSlot(EnVipKind::Banner);

    slot->SetWanted(false);
    Notify();
    EXPECT_FALSE(slot->IsFilled());

    slot->SetWanted(true);
    EXPECT_TRUE(slot->IsFilled());
}

TEST_F(VipSlotTest, MaskCoversExactlyItsAreaAndFollowsIt) {
    Allow(true);
    const auto slot = NewSlot(EnVipKind::MaskLocked, &covered);
    EXPECT_EQ(slot->geometry(), covered.geometry());
    EXPECT_EQ(Widget()->rect().size(), covered.size());
    EXPECT_EQ(card.childAt(covered.geometry().center()), Widget());
    EXPECT_EQ(service->vipCreated[0].source, &covered);

    covered.setGeometry(5, 6, 300, 150);
    time.Settle();
    EXPECT_EQ(slot->geometry(), QRect(5, 6, 300, 150));
    covered.move(30, 30);
    EXPECT_EQ(slot->geometry(), QRect(30, 30, 300, 150));
}

TEST_F(VipSlotTest, MaskMovedWhileItWasEmptyCoversTheNewArea) {
    const auto slot = NewSlot(EnVipKind::MaskLocked, &covered);
    covered.setGeometry(5, 6, 300, 150);

    Allow(true);
    Notify();

    EXPECT_EQ(slot->geometry(), QRect(5, 6, 300, 150));
}

TEST_F(VipSlotTest, MaskKeepsTheKeyboardFromWhatItCovers) {
    card.activateWindow();
    covered.setFocus();
    time.Settle();
    ASSERT_TRUE(covered.hasFocus());
    const auto slot = NewSlot(EnVipKind::MaskCompact, &covered);
    EXPECT_TRUE(covered.isEnabled());

    Allow(true);
    Notify();
    EXPECT_FALSE(covered.isEnabled());
    EXPECT_FALSE(covered.hasFocus());

    Allow(false);
    Notify();
    EXPECT_TRUE(covered.isEnabled());
}

TEST_F(VipSlotTest, ScreenReaderFindsNothingOfWhatAMaskCovers) {
    covered.setText(QStringLiteral("Buy"));
    (new QLabel(QStringLiteral("Price"), &covered))->show();
    const auto slot = NewSlot(EnVipKind::MaskLocked, &covered);
    const auto unmasked = Spoken();
    ASSERT_THAT(unmasked, IsSupersetOf({"Buy", "Price"}));

    Allow(true);
    Notify();
    EXPECT_THAT(Spoken(), Not(AnyOf(Contains("Buy"), Contains("Price"))));
    QAccessibleInterface* element = QAccessible::queryAccessibleInterface(&covered);
    EXPECT_TRUE(element->state().invisible);
    EXPECT_EQ(element->interface_cast(QAccessible::ActionInterface), nullptr);
    EXPECT_EQ(element->childAt(60, 60), nullptr);
    Notify();
    EXPECT_THAT(Spoken(), Not(Contains("Price")));

    Allow(false);
    Notify();
    EXPECT_EQ(Spoken(), unmasked);
    EXPECT_FALSE(QAccessible::queryAccessibleInterface(&covered)->state().invisible);
}

TEST_F(VipSlotTest, OwnerIsNotifiedOfEachChangeOnce) {
    std::vector<bool> seen;
    const auto slot = NewSlot(EnVipKind::MaskLocked, &covered);
    slot->OnFilledChange([&seen](bool filled) { seen.push_back(filled); });

    Notify();
    Allow(true);
    Notify();
    Notify();
    Allow(false);
    Notify();

    EXPECT_THAT(seen, ElementsAre(false, true, false));
}
