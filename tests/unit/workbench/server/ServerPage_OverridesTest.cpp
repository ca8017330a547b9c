#include "workbench/server/ServerPage.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>

#include "FakeControlClient.h"
#include "support/Click.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

class ServerPageOverridesTest : public ScriptedHostTest {
protected:
    ServerPageOverridesTest() {
        popup.resize(560, 760);
        popup.show();
        Child<QTabWidget>("ServerTabs")->setCurrentIndex(5);
        time.Settle();
        QObject::connect(&popup, &CServerPage::TabWanted, &popup, [this](int index) { tabs.push_back(index); });
        QObject::connect(&popup, &CServerPage::FocusWanted, &popup,
                         [this](EnFocusAnswer answer) { focus.push_back(answer); });
        QObject::connect(&popup, &CServerPage::SlotRefusalWanted, &popup,
                         [this](bool refused) { refusals.push_back(refused); });
        QObject::connect(&popup, &CServerPage::OverridesChanged, &popup,
                         [this](const QStringList& all) { overridden = all; });
    }

    template <class Widget>
    Widget* Child(const char* name) {
        return popup.findChild<Widget*>(QString::fromLatin1(name));
    }

    void Choose(const char* combo, int index) { Child<QComboBox>(combo)->setCurrentIndex(index); }
    void Press(const char* button) { Click(Child<QPushButton>(button)); }
    std::string ParsedLine() { return Child<QLabel>("PopupOutcome")->text().toStdString(); }
    bool IsGood() { return Child<QLabel>("PopupOutcome")->property("good").toBool(); }

    std::string Overridden() { return overridden.join(QStringLiteral(", ")).toStdString(); }

    CFakeControlClient server;
    CServerPage popup{server};
    std::vector<int> tabs;
    std::vector<EnFocusAnswer> focus;
    std::vector<bool> refusals;
    QStringList overridden;
};

}  // namespace

TEST_F(ServerPageOverridesTest, NothingIsOverriddenAtFirst) {
    EXPECT_EQ(Overridden(), "");
    EXPECT_EQ(Child<QComboBox>("AdFocus")->currentText(), QStringLiteral("as it is"));
    EXPECT_EQ(Child<QComboBox>("AdSlotPermission")->currentText(), QStringLiteral("as it is"));
}

TEST_F(ServerPageOverridesTest, ATabIsWantedByItsPlaceAndShownWithoutBeingWanted) {
    EXPECT_EQ(Child<QComboBox>("AdTab")->count(), 8);
    popup.ShowTab(6);
    EXPECT_EQ(Child<QComboBox>("AdTab")->currentText(), QStringLiteral("Portfolio"));
    EXPECT_THAT(tabs, IsEmpty());

    Choose("AdTab", 1);

    EXPECT_THAT(tabs, ElementsAre(1));
    EXPECT_EQ(Overridden(), "");
}

TEST_F(ServerPageOverridesTest, TheFocusIsOverriddenUntilItIsAsItIs) {
    Choose("AdFocus", 1);
    EXPECT_EQ(Overridden(), "focus always");
    Choose("AdFocus", 2);
    EXPECT_EQ(Overridden(), "focus never");
    Choose("AdFocus", 0);
    EXPECT_EQ(Overridden(), "");

    EXPECT_THAT(focus, ElementsAre(EnFocusAnswer::Always, EnFocusAnswer::Never, EnFocusAnswer::AsItIs));
}

TEST_F(ServerPageOverridesTest, TheSlotIsRefusedUntilItIsAsItIs) {
    Choose("AdSlotPermission", 1);
    EXPECT_EQ(Overridden(), "slot 2 refused");
    Choose("AdSlotPermission", 0);
    EXPECT_EQ(Overridden(), "");

    EXPECT_THAT(refusals, ElementsAre(true, false));
}

TEST_F(ServerPageOverridesTest, TheLastShowsOfThisUsersPopupAreForgottenAndNoOthers) {
    account.Set(7);
    store.SetInt64("AdLastShowTimeStampKey_2_42_7_0", 100);
    store.SetInt64("AdLastShowTimeStampKey_2_42_7_9", 200);
    store.SetInt64("AdLastShowTimeStampKey_2_42_8_0", 300);
    store.SetInt64("AdLastShowTimeStampKey_3_42_7_0", 400);

    Press("AdLastShownForget");

    EXPECT_THAT(store.Saves(), ElementsAre(StoreSave{std::nullopt, "AdLastShowTimeStampKey_2_42_7_0", "0"},
                                           StoreSave{std::nullopt, "AdLastShowTimeStampKey_2_42_7_9", "0"}));
    EXPECT_EQ(ParsedLine(), "It is forgotten when the popup was last shown to this user");
    Press("AdLastShownForget");
    EXPECT_EQ(ParsedLine(), "Nothing to forget: no time is stored for this user");
    EXPECT_THAT(store.Saves(), SizeIs(2));
}

TEST_F(ServerPageOverridesTest, AStoreThatTakesNothingIsTold) {
    store.SetInt64("AdLastShowTimeStampKey_2_42_0_1", 100);
    store.RefuseSaves(Failing::Always());

    Press("AdLastShownForget");

    EXPECT_THAT(store.Saves(), SizeIs(1));
    EXPECT_EQ(ParsedLine(), "The store did not take the change");
    EXPECT_FALSE(IsGood());
}
