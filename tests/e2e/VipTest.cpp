// VIP widgets in the client's pages, from the server's scenario over the channel to what the user sees and clicks.
#include <QLabel>
#include <QMenu>
#include <QStackedWidget>
#include <QTableWidget>
#include <QTest>
#include <QWindow>

#include "PremiumRights.h"
#include "VipClientFixture.h"
#include "VipSlot.h"
#include "ui/ZButton.h"

using namespace ::testing;

namespace {

constexpr quint64 kNoMember = 20001, kMember = 20003, kReady = 20012;
constexpr int kChinese = 0, kEnglish = 2;

class VipTest : public VipClientTest {
protected:
    ~VipTest() override { End(); }

    CVipSlot* Slot(const char* name) const { return Child<CVipSlot>(name); }
    QTableWidget* Book() const { return Child<QTableWidget>("OrderBookTable"); }
    std::string BookText() const { return Book()->item(0, 1)->text().toStdString(); }

    /// The right of the order book becomes active for 7 days, as after an activation.
    void ActivateBook(quint64 user) {
        const std::string path = "/v1/users/" + std::to_string(user) + "/premium";
        server->Put(path, R"({"rights":[{"access":74,"hasPermission":true,"activationType":1,"daysLeft":7,
                             "activationSource":1}]})");
        server->Post("/v1/push", R"({"premiumChange":{"delaySeconds":0,"needAll":false,"access":[74]}})");
    }

    QWidget* TitleEntry() const { return Child<QWidget>("TitleBarVip"); }
    std::string MenuText() const { return Child<QAction>("UserMenuVip")->text().toStdString(); }
};

}  // namespace

TEST_F(VipTest, MaskOfTheOrderBookGoesWhenItsRightIsActivated) {
    LogIn(kReady);
    Choose("quotes");
    ASSERT_TRUE(WaitInRealTime([this] { return Slot("OrderBookMask")->isVisible(); }));
    EXPECT_EQ(Slot("OrderBookMask")->geometry(), Book()->geometry());
    EXPECT_FALSE(Book()->isEnabled());
    EXPECT_THAT(BookText(), Not(ContainsRegex("[0-9]")));
    EXPECT_FALSE(Slot("OrderBookBanner")->isVisible());

    ActivateBook(kReady);

    ASSERT_TRUE(WaitInRealTime([this] { return !Slot("OrderBookMask")->isVisible(); }));
    EXPECT_TRUE(Book()->isEnabled());
    EXPECT_THAT(BookText(), ContainsRegex("[0-9]"));
    EXPECT_TRUE(Slot("OrderBookBanner")->isVisible());
    // The exposure of the mask ended and was reported.
    ASSERT_TRUE(WaitInRealTime([this] { return Reported("ViewPremiumMarketEntrance") == 1; }));
    EXPECT_EQ(server->ReportsOf("ViewPremiumMarketEntrance")[0]["permission_type"], "74");
    EXPECT_EQ(server->ReportsOf("ViewPremiumMarketEntrance")[0]["page_id"], "quotes");
}

TEST_F(VipTest, ButtonOfTheMaskAsksForTheActivation) {
    LogIn(kReady);
    Choose("quotes");
    ASSERT_TRUE(WaitInRealTime([this] { return Slot("OrderBookMask")->isVisible(); }));

    Click(Slot("OrderBookMask")->findChild<ZButton*>());

    EXPECT_TRUE(WaitInRealTime([this] { return server->Requests(20981).size() == 1; }));
    EXPECT_TRUE(WaitInRealTime([this] { return Reported("ClickPremiumMarketEntrance") == 1; }));
}

TEST_F(VipTest, PressBesideTheButtonReachesNothingBehindTheMask) {
    LogIn(kReady);
    Choose("quotes");
    ASSERT_TRUE(WaitInRealTime([this] { return Slot("OrderBookMask")->isVisible(); }));
    auto* mask = Slot("OrderBookMask");
    const QPoint corner = mask->mapTo(window, QPoint(4, 4));

    for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton}) {
        QTest::mouseClick(window->windowHandle(), button, Qt::NoModifier, corner);
    }

    EXPECT_THAT(Book()->selectedItems(), IsEmpty());
    EXPECT_THAT(server->Requests(20981), IsEmpty());
    EXPECT_EQ(Reported("ClickPremiumMarketEntrance"), 0);
}

TEST_F(VipTest, AnalysesAreMaskedForANonMember) {
    LogIn(kNoMember);
    Choose("research");

    for (const char* name : {"AnalystConsensus", "ShortSelling"}) {
        const std::string mask = std::string(name) + "Mask";
        ASSERT_TRUE(WaitInRealTime([&] { return Slot(mask.c_str())->isVisible(); })) << name;
        for (const QLabel* label : Child<QWidget>(name)->findChildren<QLabel*>()) {
            EXPECT_THAT(label->text().toStdString(), Not(ContainsRegex("[0-9]"))) << name;
        }
    }

    LogIn(kMember);
    EXPECT_TRUE(WaitInRealTime([&] { return !Slot("AnalystConsensusMask")->isVisible(); }));
    EXPECT_FALSE(Slot("ShortSellingMask")->isVisible());
}

TEST_F(VipTest, TitleEntryFollowsUserLanguageAndEdition) {
    LogIn(kNoMember);
    ASSERT_NE(TitleEntry(), nullptr);
    EXPECT_FALSE(TitleEntry()->isVisible());

    LogIn(kMember);
    EXPECT_TRUE(TitleEntry()->isVisible());
    client->SetLanguage(kEnglish);
    EXPECT_EQ(TitleEntry()->width(), 70);
    client->SetLanguage(kChinese);
    EXPECT_EQ(TitleEntry()->width(), 42);
    client->SetVelora(true);
    EXPECT_EQ(TitleEntry()->width(), 36);

    client->Logout();
    EXPECT_FALSE(TitleEntry()->isVisible());
}

TEST_F(VipTest, MenuEntryFollowsLanguageAndEdition) {
    LogIn(kMember);
    client->SetLanguage(kEnglish);
    const std::string english = MenuText();
    EXPECT_FALSE(Child<QAction>("UserMenuVip")->icon().isNull());

    client->SetLanguage(kChinese);
    EXPECT_NE(MenuText(), english);
    const std::string older = MenuText();
    client->SetVelora(true);
    EXPECT_NE(MenuText(), older);
    EXPECT_TRUE(Child<QAction>("UserMenuVip")->icon().isNull());
}

TEST_F(VipTest, AccountPageNamesTheUserAndTheMembership) {
    LogIn(kMember);
    Choose("account");
    EXPECT_THAT(Child<QLabel>("MembershipName")->text().toStdString(), HasSubstr("Jade Monthly  20003"));

    client->Logout();
    EXPECT_THAT(Child<QLabel>("MembershipName")->text().toStdString(), HasSubstr("Nobody is logged in"));
}

struct PageUser {
    const char* name;
    quint64 id;
    bool velora;
};

class TourVipTest : public VipTest, public WithParamInterface<PageUser> {};

TEST_P(TourVipTest, ShowsThePagesInEachTheme) {
    LogIn(GetParam().id);
    client->SetVelora(GetParam().velora);
    for (const int theme : {1, 2, 3}) {
        client->SetTheme(theme);
        for (const char* page : {"quotes", "research", "account"}) {
            Choose(page);
            Picture(("vip-" + std::string(GetParam().name) + "-" + page + "-" + std::to_string(theme)).c_str());
        }
    }
    auto* menu = Child<QMenu>("UserMenu");
    menu->popup(window->mapToGlobal(QPoint(400, 60)));
    ASSERT_TRUE(WaitInRealTime([menu] { return menu->isVisible(); }));
    Picture(("vip-" + std::string(GetParam().name) + "-menu").c_str(), menu);
    menu->close();
}

INSTANTIATE_TEST_SUITE_P(Users, TourVipTest,
                         Values(PageUser{"no_member", 20001, true}, PageUser{"trial", 20002, true},
                                PageUser{"grade2", 20009, false}, PageUser{"ready", 20012, false},
                                PageUser{"limited5", 20016, false}),
                         [](const auto& row) { return row.param.name; });
