#include "workbench/server/RightsRequest.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "FakeGrowthService.h"
#include "support/Click.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

class RightsRequestTest : public ScriptedHostTest {
protected:
    RightsRequestTest() {
        panel.resize(500, 300);
        panel.show();
        time.Settle();
    }

    template <class Widget>
    Widget* Child(const char* name) {
        return panel.findChild<Widget*>(QString::fromLatin1(name));
    }
    void Press(const char* button) { Click(Child<QPushButton>(button)); }
    std::string Outcome() { return Child<QLabel>("AskOutcome")->text().toStdString(); }

    std::shared_ptr<CFakeGrowthService> service = CFakeGrowthService::Offer();
    CRightsRequest panel;
};

}  // namespace

TEST_F(RightsRequestTest, ListIsRequestedAsItIsTypedAlsoAnEmptyOne) {
    service->session = 12;
    Press("AskList");
    EXPECT_EQ(Outcome(), "Asked with session 12");
    Child<QLineEdit>("AskRights")->setText(QStringLiteral("1000, 5;5\t-3"));
    Child<QCheckBox>("AskServerPush")->setChecked(true);
    Press("AskList");
    Press("AskAll");

    EXPECT_THAT(service->asked, ElementsAre("wait", "1000 5 5 -3 push", "all push"));
}

TEST_F(RightsRequestTest, WordThatIsNoNumberIsNamedAndNobodyIsAsked) {
    for (const char* word : {"five", "2147483648"}) {
        Child<QLineEdit>("AskRights")->setText(QStringLiteral("5 ") + QString::fromLatin1(word));
        Press("AskList");
        EXPECT_EQ(Outcome(), std::string("No number of a right: ") + word);
    }
    EXPECT_THAT(service->asked, IsEmpty());
}

TEST_F(RightsRequestTest, NobodyIsAskedWithoutTheModule) {
    service.reset();

    Press("AskAll");

    EXPECT_EQ(Outcome(), "Nobody was asked: the module is not there or has not started");
}
