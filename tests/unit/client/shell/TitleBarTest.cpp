#include "TitleBar.h"

#include <QMenu>

#include "FakeGrowthService.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

class TitleBarTest : public ScriptedHostTest {
protected:
    QWidget* Entry() const { return bar.findChild<QWidget*>(QStringLiteral("TitleBarVip")); }
    QAction* MenuEntry() const { return bar.findChild<QAction*>(QStringLiteral("UserMenuVip")); }

    QAction* PremiumEntry() const { return bar.findChild<QAction*>(QStringLiteral("UserMenuPremium")); }

    std::shared_ptr<CFakeGrowthService> service = CFakeGrowthService::Offer();
    CTitleBar bar;
};

}  // namespace

TEST_F(TitleBarTest, VipEntriesAreCreatedAgain) {
    EXPECT_EQ(Entry(), nullptr);
    bar.RenewVipEntries();
    const QPointer<QWidget> entry = Entry();
    const QPointer<QAction> menuEntry = MenuEntry();
    ASSERT_NE(entry, nullptr);
    ASSERT_NE(menuEntry, nullptr);

    bar.RenewVipEntries();
    time.Settle();

    EXPECT_EQ(entry, nullptr);
    EXPECT_EQ(menuEntry, nullptr);
    EXPECT_EQ(service->titleEntries, 2);
    EXPECT_EQ(service->menuEntries, 2);
    EXPECT_THAT(bar.findChildren<QWidget*>(QStringLiteral("TitleBarVip")), SizeIs(1));
    EXPECT_THAT(bar.findChildren<QAction*>(QStringLiteral("UserMenuVip")), SizeIs(1));
}

TEST_F(TitleBarTest, VipEntriesGoWithTheModule) {
    bar.RenewVipEntries();
    service.reset();

    bar.RenewVipEntries();
    time.Settle();

    EXPECT_EQ(Entry(), nullptr);
    EXPECT_EQ(MenuEntry(), nullptr);
    EXPECT_EQ(PremiumEntry(), nullptr);
}

TEST_F(TitleBarTest, EntryOfTheMemberPageIsCreatedOnceAndPrecedesTheVipEntry) {
    bar.RenewVipEntries();
    const QPointer<QAction> entry = PremiumEntry();
    ASSERT_NE(entry, nullptr);

    bar.RenewVipEntries();
    time.Settle();

    EXPECT_EQ(PremiumEntry(), entry);
    EXPECT_EQ(service->premiumEntries, 1);
    const QList<QAction*> actions = bar.findChild<QMenu*>()->actions();
    EXPECT_EQ(actions.count(entry), 1);
    EXPECT_EQ(actions.indexOf(entry) + 1, actions.indexOf(MenuEntry()));
}

TEST_F(TitleBarTest, VipEntryHasANameForScreenReaders) {
    bar.RenewVipEntries();

    EXPECT_EQ(Entry()->accessibleName(), QStringLiteral("Member"));
    EXPECT_EQ(Entry()->toolTip(), QStringLiteral("Member"));
}

TEST_F(TitleBarTest, SizeOfTheVipEntryCanChange) {
    bar.resize(800, 46);
    bar.show();
    bar.RenewVipEntries();
    Entry()->setFixedSize(42, 16);
    time.Settle();

    Entry()->setFixedSize(70, 16);
    service->titleChanged();
    time.Settle();

    EXPECT_EQ(Entry()->width(), 70);
}
