#include "pages/MembershipCard.h"

#include <QLabel>
#include <QPushButton>

#include "FakeGrowthService.h"
#include "FakeSession.h"
#include "PremiumRights.h"
#include "VipSlot.h"
#include "support/Click.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

class MembershipCardTest : public ScriptedHostTest {
protected:
    MembershipCardTest() {
        card.resize(680, 300);
        card.show();
        time.Settle();
    }

    std::string Texts() const {
        QStringList texts;
        for (const QLabel* label : card.findChildren<QLabel*>()) {
            texts << label->text();
        }
        return texts.join(QLatin1Char('|')).toStdString();
    }

    void AddRight(EnPremiumAccess right, int type, int days = 0) {
        CPremiumUIAccessData record = RecordOf(right, true, "Some right");
        record.nActivationType = type;
        record.nDaysLeft = days;
        service->table[right] = record;
    }

    std::shared_ptr<CFakeGrowthService> service = CFakeGrowthService::Offer();
    CFakeSession session;
    CPremiumRights rights;
    CMembershipCard card{session, rights, nullptr};
};

}  // namespace

TEST_F(MembershipCardTest, ShowsWhoIsLoggedInAndTheRightsByState) {
    EXPECT_THAT(Texts(), HasSubstr("Nobody is logged in"));

    session.user = 502;
    AddRight(EnPremiumAccess_hk_stock_lv2, 1, 12);
    AddRight(EnPremiumAccess_us_otc_order_book, 5);
    AddRight(EnPremiumAccess_us_arcabook, 5);
    rights.Refresh();
    time.Settle();

    EXPECT_THAT(Texts(), HasSubstr("Ben  502"));
    EXPECT_THAT(Texts(), HasSubstr("Limited time: 1"));
    EXPECT_THAT(Texts(), HasSubstr("Not activated: 2"));
    EXPECT_THAT(Texts(), HasSubstr("Some right"));
    EXPECT_THAT(Texts(), HasSubstr("Days left: 12"));
}

TEST_F(MembershipCardTest, ShowsAMemberOfTheOlderSystemWithTheGrade) {
    service->state = 1;
    service->grade = 3;
    service->newState = 0;
    rights.Refresh();

    EXPECT_THAT(Texts(), HasSubstr("|Older|"));
    EXPECT_THAT(Texts(), HasSubstr("|Member of grade 3|"));
    EXPECT_THAT(Texts(), HasSubstr("|Kestrel|"));
}

TEST_F(MembershipCardTest, ShowsAMemberOfTheNewerSystemByItsOwnState) {
    service->isNewSystem = true;
    service->state = 0;
    service->newState = 1;
    rights.Refresh();
    EXPECT_THAT(Texts(), HasSubstr("|Newer|"));
    EXPECT_THAT(Texts(), HasSubstr("|Member|"));

    service->state = 1;
    service->newState = 2;
    rights.Refresh();
    EXPECT_THAT(Texts(), HasSubstr("|No member|"));
}

TEST_F(MembershipCardTest, ShowsEachPlanInItsOwnWords) {
    std::set<std::string> shown;
    for (int status = -1; status <= 5; ++status) {
        service->engine = status;
        rights.Refresh();
        shown.insert(Texts());
    }

    EXPECT_THAT(shown, SizeIs(7));
}

TEST_F(MembershipCardTest, ShowsIconAndTagOfARight) {
    service->icons = service->tags = {EnPremiumAccess_hk_stock_lv2};
    rights.Refresh();
    time.Settle();

    ASSERT_THAT(service->vipCreated, SizeIs(2));
    EXPECT_TRUE(service->vipCreated[0].widget->isVisible());
    EXPECT_EQ(service->vipCreated[1].type, ZRVipTagGrade);
}

TEST_F(MembershipCardTest, LinkOpensTheMembershipCentre) {
    links.Set(202011732, "https://member.example/");

    Click(card.findChild<QPushButton*>(QStringLiteral("MembershipCentre")));

    EXPECT_THAT(service->openedPages, ElementsAre(QStringLiteral("https://member.example/")));
}

TEST_F(MembershipCardTest, LinkIsInTheReachOfTheKeyboard) {
    EXPECT_NE(card.findChild<QPushButton*>(QStringLiteral("MembershipCentre"))->focusPolicy() & Qt::TabFocus, 0);
}
