// The strip of a right of limited time and the entry of the member page. The server's scenario decides what the user
// sees and clicks.
#include <QMenu>
#include <QTest>

#include "PremiumRights.h"
#include "VipClientFixture.h"
#include "ui/ZAction.h"
#include "ui/ZText.h"

using namespace ::testing;

namespace {

constexpr quint64 kOneDay = 20015, kNoMember = 20001, kNoRights = 20017;
constexpr int kEnglish = 2;

class PremiumTest : public VipClientTest {
protected:
    ~PremiumTest() override { End(); }

    QWidget* Slot() const { return Child<QWidget>("PremiumStrip202"); }

    /// The texts that the strip shows, in their order.
    std::string Shown() const {
        QStringList texts;
        for (const ZText* text : Slot()->findChildren<ZText*>()) {
            if (text->isVisible()) {
                texts << text->text().simplified();
            }
        }
        return texts.join(QLatin1Char('|')).toStdString();
    }

    void SetRight(quint64 user, const char* state) {
        server->Put(
            "/v1/users/" + std::to_string(user) + "/premium",
            std::string(R"({"rights":[{"access":202,"hasPermission":true,"activationSource":1,)") + state + "}]}");
        server->Post("/v1/push", R"({"premiumChange":{"delaySeconds":0,"needAll":false,"access":[202]}})");
    }

    ZAction* Entry() const { return Child<ZAction>("UserMenuPremium"); }
};

}  // namespace

TEST_F(PremiumTest, StripFollowsTheRight) {
    LogIn(kOneDay);
    client->SetLanguage(kEnglish);
    Choose("news");
    ASSERT_TRUE(WaitInRealTime([this] { return Slot()->isVisible() && Shown() == "Moves explained:|1|day"; }))
        << Shown();
    EXPECT_EQ(Slot()->height(), 32);

    SetRight(kOneDay, R"("activationType":1,"daysLeft":3)");
    EXPECT_TRUE(WaitInRealTime([this] { return Shown() == "Moves explained:|3|days"; })) << Shown();
    for (const int theme : {1, 2, 3}) {
        client->SetTheme(theme);
        Picture(("strip-" + std::to_string(theme)).c_str());
    }

    SetRight(kOneDay, R"("activationType":3)");
    EXPECT_TRUE(WaitInRealTime([this] { return !Slot()->isVisible(); }));
}

TEST_F(PremiumTest, EntryOfTheMemberPageReportsViewAndClick) {
    LogIn(kNoMember);
    ASSERT_NE(Entry(), nullptr);
    EXPECT_TRUE(Entry()->isVisible());
    EXPECT_TRUE(Child<QMenu>("UserMenu")->actions().contains(Entry()));
    EXPECT_TRUE(Child<QAction>("UserMenuVip")->isVisible());
    EXPECT_TRUE(WaitInRealTime([this] { return Reported("ViewPremiumFunctionEntrance") >= 1; }));
    const auto view = server->ReportsOf("ViewPremiumFunctionEntrance")[0];
    EXPECT_EQ(view["permission_type"], "1000");
    EXPECT_EQ(view["page_id"], "2");

    QMenu* menu = Child<QMenu>("UserMenu");
    menu->popup(window->mapToGlobal(QPoint(20, 60)));
    ASSERT_TRUE(WaitInRealTime([&] { return menu->isVisible(); }));
    Picture("user-menu", menu);
    QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(Entry()).center());

    EXPECT_TRUE(WaitInRealTime([this] { return Reported("ClickPremiumFunctionEntrance") == 1; }));

    LogIn(kNoRights);
    EXPECT_FALSE(Entry()->isVisible());
}
