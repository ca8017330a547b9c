#include "Vip/View/ZRVipTitleBarEntryWidget.h"

#include <memory>

#include "Vip/VipWidgetTest.h"
#include "ui/ZSvgWidget.h"

using namespace ::testing;

namespace {

class VipTitleBarEntryWidgetTest : public VipWidgetTest {
protected:
    VipTitleBarEntryWidgetTest() { Show(); }

    CSafeFunction<void()> Counting() {
        return CSafeFunction<void()>(guard.get(), [this] { ++changes; });
    }

    CZRVipTitleBarEntryWidget* Add() { return new CZRVipTitleBarEntryWidget(&window, Counting()); }

    static ZSvgWidget* PictureOf(const QWidget& entry) { return entry.findChild<ZSvgWidget*>(); }

    static void ExpectLook(const QWidget& entry, const char* icon, int width) {
        EXPECT_EQ(PictureOf(entry)->svgIconName().toStdString(), icon);
        EXPECT_EQ(entry.minimumSize(), QSize(width, 16));
        EXPECT_EQ(entry.maximumSize(), QSize(width, 16));
        EXPECT_EQ(PictureOf(entry)->minimumSize(), QSize(width, 16));
        EXPECT_EQ(PictureOf(entry)->maximumSize(), QSize(width, 16));
    }

    std::unique_ptr<QObject> guard = std::make_unique<QObject>();
    int changes = 0;
};

TEST_F(VipTitleBarEntryWidgetTest, EntryIsAPlainWidgetWithoutSignalsOrSlots) {
    EXPECT_EQ(CZRVipTitleBarEntryWidget::staticMetaObject.superClass(), &QWidget::staticMetaObject);
    EXPECT_THAT(MethodsOf(CZRVipTitleBarEntryWidget::staticMetaObject), IsEmpty());
}

TEST_F(VipTitleBarEntryWidgetTest, PictureFillsTheEntry) {
    const CZRVipTitleBarEntryWidget* entry = Add();

    ASSERT_TRUE(qobject_cast<QHBoxLayout*>(entry->layout()));
    EXPECT_EQ(LayoutOf(*entry->layout()), "0,0,0,0 0");
    ASSERT_EQ(entry->layout()->count(), 1);
    EXPECT_EQ(entry->layout()->itemAt(0)->widget(), PictureOf(*entry));
    EXPECT_EQ(entry->parentWidget(), &window);
}

struct LookCase {
    bool isNew;
    int language;
    const char* icon;
    int width;
};

void PrintTo(const LookCase& row, std::ostream* stream) {
    *stream << (row.isNew ? "new" : "old") << ", language " << row.language;
}

class VipTitleBarEntryWidgetLookTest : public VipTitleBarEntryWidgetTest, public WithParamInterface<LookCase> {};

TEST_P(VipTitleBarEntryWidgetLookTest, MembersEntryIsVisibleInTheSizeOfSystemAndLanguage) {
    UserIs(GetParam().isNew ? NewMember() : LegacyMember());
    language.Set(GetParam().language);
    log.Forget();

    const CZRVipTitleBarEntryWidget* entry = Add();

    EXPECT_TRUE(entry->isVisible());
    ExpectLook(*entry, GetParam().icon, GetParam().width);
    EXPECT_THAT(log.Lines(), ElementsAre(Info(std::string("[Vip] Vip Title Bar Entry Refreshed, Is New Vip System = ") +
                                              (GetParam().isNew ? "true" : "false"))));
    EXPECT_EQ(changes, 0);
}

INSTANTIATE_TEST_SUITE_P(
    All, VipTitleBarEntryWidgetLookTest,
    Values(LookCase{false, -1, "icon_viptab_normal", 70}, LookCase{false, 0, "icon_viptab_normal", 42},
           LookCase{false, 1, "icon_viptab_normal", 42}, LookCase{false, 2, "icon_viptab_normal", 70},
           LookCase{false, 5, "icon_viptab_normal", 70}, LookCase{false, 7, "icon_viptab_normal", 70},
           LookCase{true, 0, "icon_engine_36x16_normal", 36}, LookCase{true, 1, "icon_engine_36x16_normal", 36},
           LookCase{true, 2, "icon_engine_36x16_normal", 36}, LookCase{true, 8, "icon_engine_36x16_normal", 36}));

TEST_F(VipTitleBarEntryWidgetTest, EntryIsHiddenWhenTheUserIsNoMember) {
    for (const VipUser& user : {LegacyUser(3), NewUser()}) {
        UserIs(user);
        log.Forget();

        const CZRVipTitleBarEntryWidget* entry = Add();

        EXPECT_TRUE(entry->isHidden());
        EXPECT_EQ(PictureOf(*entry)->svgIconName().toStdString(), "");
        EXPECT_THAT(log.Lines(), ElementsAre(Info("[Vip] Vip Title Bar Entry Hidden")));
        delete entry;
    }
    EXPECT_EQ(changes, 0);
}

TEST_F(VipTitleBarEntryWidgetTest, EntryFollowsTheStatusAndThenCallsBack) {
    CZRVipTitleBarEntryWidget* entry = Add();
    EXPECT_TRUE(entry->isHidden());

    UserIs(NewMember());
    EXPECT_TRUE(entry->isVisible());
    ExpectLook(*entry, "icon_engine_36x16_normal", 36);
    EXPECT_EQ(changes, 1);

    UserIs(LegacyMember());
    ExpectLook(*entry, "icon_viptab_normal", 70);
    EXPECT_EQ(changes, 2);
}

TEST_F(VipTitleBarEntryWidgetTest, HiddenEntryKeepsSizeAndPictureAndCallsBack) {
    UserIs(NewMember());
    const CZRVipTitleBarEntryWidget* entry = Add();

    UserIs(LegacyUser());

    EXPECT_TRUE(entry->isHidden());
    ExpectLook(*entry, "icon_engine_36x16_normal", 36);
    EXPECT_EQ(changes, 1);
}

TEST_F(VipTitleBarEntryWidgetTest, CallbackComesAfterTheRefresh) {
    const CZRVipTitleBarEntryWidget* entry = nullptr;
    bool visible = false;
    int width = 0;
    entry = new CZRVipTitleBarEntryWidget(&window, CSafeFunction<void()>(guard.get(), [&] {
        visible = entry->isVisible();
        width = entry->maximumWidth();
    }));

    UserIs(NewMember());

    EXPECT_TRUE(visible);
    EXPECT_EQ(width, 36);
}

TEST_F(VipTitleBarEntryWidgetTest, StatusMessageCallsBackAlsoWhenNothingChanged) {
    CZRVipTitleBarEntryWidget* entry = Add();

    bus.HostSend(80052);
    entry->OnStateChanged(80052, 0, nullptr);
    entry->RefreshState();

    EXPECT_EQ(changes, 2);
}

TEST_F(VipTitleBarEntryWidgetTest, EntryIsRefreshedWithoutACallWhenTheGuardIsGone) {
    const CZRVipTitleBarEntryWidget* entry = Add();
    guard.reset();

    UserIs(NewMember());

    EXPECT_TRUE(entry->isVisible());
    EXPECT_EQ(changes, 0);
}

TEST_F(VipTitleBarEntryWidgetTest, EntryIsRefreshedWhenThereIsNoCallback) {
    const auto* none = new CZRVipTitleBarEntryWidget(&window, CSafeFunction<void()>());
    const auto* noFunction = new CZRVipTitleBarEntryWidget(&window, CSafeFunction<void()>(guard.get(), nullptr));

    UserIs(NewMember());

    EXPECT_TRUE(none->isVisible());
    EXPECT_TRUE(noFunction->isVisible());
}

TEST_F(VipTitleBarEntryWidgetTest, CallbackMayDeleteTheEntryAndUseItsOwnData) {
    QPointer<CZRVipTitleBarEntryWidget> entry;
    std::string told;
    const std::string data(100, 'x');
    entry = new CZRVipTitleBarEntryWidget(&window, CSafeFunction<void()>(guard.get(), [&entry, &told, data] {
        delete entry;
        told = data;
    }));

    UserIs(NewMember());

    EXPECT_FALSE(entry);
    EXPECT_EQ(told, std::string(100, 'x'));
}

TEST_F(VipTitleBarEntryWidgetTest, OtherMessagesTheLogoutAndTheThemeChangeNothing) {
    UserIs(NewMember());
    const CZRVipTitleBarEntryWidget* entry = Add();
    log.Forget();

    CZRVipManager::Singleton()->OnLogout();
    environment.SetVelora(false);
    bus.HostSend(80050);
    bus.HostSend(80051);
    bus.HostSend(20100);
    channel.Forget();  // the texts of the rights
    SetTheme(zr_ui_theme::Manager::kThemeBlack);

    EXPECT_TRUE(entry->isVisible());
    ExpectLook(*entry, "icon_engine_36x16_normal", 36);
    EXPECT_EQ(changes, 0);
    EXPECT_THAT(log.Lines(), Not(Contains(Info(HasSubstr("Title Bar")))));
}

TEST_F(VipTitleBarEntryWidgetTest, EntryLeavesTheBusWhenItIsDeleted) {
    const int before = bus.SubscriptionCount();
    CZRVipTitleBarEntryWidget* entry = Add();
    EXPECT_EQ(bus.SubscriptionCount(), before + 1);

    delete entry;

    EXPECT_EQ(bus.SubscriptionCount(), before);
    UserIs(NewMember());
    EXPECT_EQ(changes, 0);
}

TEST_F(VipTitleBarEntryWidgetTest, MembersEntryOpensAsAWindowWhenItHasNoParent) {
    UserIs(NewMember());
    const CZRVipTitleBarEntryWidget member(nullptr, Counting());
    EXPECT_TRUE(member.isVisible());
    EXPECT_TRUE(member.isWindow());

    UserIs(LegacyUser());
    EXPECT_FALSE(CZRVipTitleBarEntryWidget(nullptr, Counting()).isVisible());
}

}  // namespace
