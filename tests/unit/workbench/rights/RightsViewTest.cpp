#include "workbench/rights/RightsView.h"

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "FakeGrowthService.h"
#include "PremiumNumbers.h"
#include "PremiumRights.h"
#include "modules/ZRGrowthMessages.h"
#include "support/ScriptedHostTest.h"
#include "workbench/WireDecoder.h"
#include "workbench/rights/RightDetail.h"
#include "workbench/rights/RightText.h"
#include "workbench/rights/VipPanel.h"

using namespace ::testing;

namespace {

class RightsViewTest : public ScriptedHostTest {
protected:
    RightsViewTest() {
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(view);
        layout->addWidget(detail);
        layout->addWidget(new CVipPanel(rights, &window));
        QObject::connect(view, &CRightsView::Chosen, detail, &CRightDetail::ShowRight);
        window.resize(560, 700);
        window.show();
        time.Settle();
    }

    template <class Widget>
    Widget* Child(const char* name) {
        return window.findChild<Widget*>(QString::fromLatin1(name));
    }

    void ServerSays(std::vector<std::pair<int, bool>> table) {
        service->table.clear();
        for (const auto& [right, has] : table) {
            service->table[EnPremiumAccess(right)] =
                RecordOf(EnPremiumAccess(right), has, ("title " + std::to_string(right)).c_str());
        }
        bus.HostSend(kMsgPremiumDataChanged);
    }

    /// Each row in one text.
    std::vector<std::string> Rows() {
        const QAbstractItemModel* model = Child<QTableView>("RightsTable")->model();
        std::vector<std::string> rows;
        for (int row = 0; row < model->rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < model->columnCount(); ++column) {
                cells << model->index(row, column).data().toString();
            }
            rows.push_back(cells.join(QLatin1Char('|')).toStdString());
        }
        return rows;
    }

    std::string Field(const char* name) {
        const auto items = Child<QTreeWidget>("RightFields")
                               ->findItems(QString::fromLatin1(name), Qt::MatchExactly | Qt::MatchRecursive);
        return items.size() == 1 ? items.first()->text(1).toStdString() : "not there once";
    }

    std::string ParsedLine(const char* label) { return Child<QLabel>(label)->text().toStdString(); }

    void ClickRow(int row) {
        auto* table = Child<QTableView>("RightsTable");
        const QRect cell = table->visualRect(table->model()->index(row, 1));
        QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
    }

    std::shared_ptr<CFakeGrowthService> service = CFakeGrowthService::Offer();
    CPremiumRights rights;
    CWireDecoder decoder;
    QWidget window;
    CRightsView* view = new CRightsView(rights, decoder, &window);
    CRightDetail* detail = new CRightDetail(rights, decoder, &window);
};

}  // namespace

TEST_F(RightsViewTest, EachRightIsARowInOrderOfNumber) {
    ServerSays({{1000, true}, {5, false}, {77, true}});

    EXPECT_THAT(Rows(),
                ElementsAre("5|us_cme_future_lv1|no|full|12|VIP rule|D|title 5", "77||yes|full|12|VIP rule|D|title 77",
                            "1000|MyPagePremium|yes|full|12|VIP rule|D|title 1000"));
    EXPECT_EQ(ParsedLine("RightsCount"), "Rights in the table: 3");
}

TEST_F(RightsViewTest, NumbersWithoutAWordStandForThemselves) {
    ServerSays({{5, true}});
    service->table[EnPremiumAccess(5)].nActivationType = -9;
    service->table[EnPremiumAccess(5)].nActivationSource = 0;
    bus.HostSend(kMsgPremiumRequestAnswered);

    EXPECT_THAT(Rows(), ElementsAre("5|us_cme_future_lv1|yes|-9|12|not said|D|title 5"));
}

TEST_F(RightsViewTest, TheTableFollowsAndIsEmptyAfterALogout) {
    ServerSays({{5, true}, {6, true}});
    ServerSays({{6, false}});
    EXPECT_THAT(Rows(), ElementsAre(StartsWith("6|us_cme_future_lv2|no|")));

    service->table.clear();
    rights.Refresh();

    EXPECT_THAT(Rows(), IsEmpty());
    EXPECT_EQ(ParsedLine("RightsCount"), "Rights in the table: 0");
}

TEST_F(RightsViewTest, ARightThatIsClickedIsShownWithAllFields) {
    ServerSays({{5, true}, {6, false}});
    EXPECT_EQ(ParsedLine("RightChosen"), "Choose a right, or type its number");

    ClickRow(0);

    EXPECT_EQ(ParsedLine("RightChosen"), "5  us_cme_future_lv1");
    EXPECT_EQ(Field("enAccess"), "5");
    EXPECT_EQ(Field("bHasPermission"), "yes");
    EXPECT_EQ(Field("nActivationType"), "3 \u00B7 full");
    EXPECT_EQ(Field("nDaysLeft"), "12");
    EXPECT_EQ(Field("nActivationSource"), "2 \u00B7 VIP rule");
    EXPECT_EQ(Field("enUIAccess"), "5");
    EXPECT_EQ(Field("strUIType"), "D");
    EXPECT_EQ(Field("strMainTitle"), "title 5");
    EXPECT_EQ(Field("strMainBtn"), "main button");
    EXPECT_EQ(Field("strDetailTitle"), "detail title");
    EXPECT_EQ(Field("strDetailSubTitle"), "detail sub title");
    EXPECT_EQ(Field("strDetailBtn"), "detail button");
    EXPECT_EQ(Field("strDetailSubBtn"), "detail sub button");
    EXPECT_EQ(Field("nMainBtnUrlID"), "101");
    EXPECT_EQ(Field("nDetailBtnUrlID"), "102");
    EXPECT_EQ(Field("nDetailSubBtnUrlID"), "103");
    EXPECT_EQ(Child<QPlainTextEdit>("RightOtherInfo")->toPlainText().toStdString(),
              "{\n  \"group\" : \"market\",\n  \"tags\" : \n  [\n    1,\n    2\n  ]\n}");
}

TEST_F(RightsViewTest, ARightIsFoundByItsNumberAndSelected) {
    ServerSays({{5, true}, {6, false}});

    QTest::keyClicks(Child<QLineEdit>("RightNumber"), QStringLiteral("6"));

    EXPECT_EQ(ParsedLine("RightChosen"), "6  us_cme_future_lv2");
    const QModelIndexList rows = Child<QTableView>("RightsTable")->selectionModel()->selectedRows();
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(rows.first().row(), 1);
}

TEST_F(RightsViewTest, ARightThatIsNotInTheTableShowsItsDefaultRecord) {
    ServerSays({{5, true}});
    ClickRow(0);

    QTest::keyClicks(Child<QLineEdit>("RightNumber"), QStringLiteral("1000"));

    EXPECT_EQ(ParsedLine("RightChosen"), "1000  MyPagePremium \u00B7 not in the table: a default record");
    EXPECT_EQ(Field("enAccess"), "0");
    EXPECT_EQ(Field("bHasPermission"), "no");
    EXPECT_EQ(Field("strMainTitle"), "");
    EXPECT_EQ(Child<QPlainTextEdit>("RightOtherInfo")->toPlainText(), QString());
    EXPECT_FALSE(Child<QTableView>("RightsTable")->selectionModel()->hasSelection());
}

TEST_F(RightsViewTest, TheChoiceStaysWithTheRightWhateverBecomesOfTheTable) {
    ServerSays({{5, true}, {6, false}});
    ClickRow(1);
    QSignalSpy chosen(view, &CRightsView::Chosen);

    ServerSays({{1, true}, {3, true}, {6, true}});
    EXPECT_EQ(ParsedLine("RightChosen"), "6  us_cme_future_lv2");
    EXPECT_EQ(Field("bHasPermission"), "yes");
    EXPECT_EQ(Child<QTableView>("RightsTable")->selectionModel()->selectedRows().value(0).row(), 2);
    ServerSays({{1, true}});
    EXPECT_THAT(ParsedLine("RightChosen"), EndsWith("not in the table: a default record"));
    ServerSays({{6, false}});

    EXPECT_EQ(Child<QTableView>("RightsTable")->selectionModel()->selectedRows().value(0).row(), 0);
    EXPECT_EQ(Field("bHasPermission"), "no");
    EXPECT_EQ(chosen.count(), 0);
}

TEST_F(RightsViewTest, OtherInfoThatIsNoJsonIsShownAsItIs) {
    EXPECT_EQ(right_text::Pretty(QStringLiteral("{\"a\":")), QStringLiteral("{\"a\":"));
    EXPECT_EQ(right_text::Pretty(QString()), QString());
    EXPECT_EQ(right_text::Pretty(QStringLiteral("{\"名\":\"价\"}")), QStringLiteral("{\n  \"名\" : \"价\"\n}"));
}

TEST_F(RightsViewTest, TheVipStatusIsLiveAndInWords) {
    EXPECT_EQ(ParsedLine("VipEngineStatus"), "-1 \u00B7 undetermined");
    EXPECT_EQ(ParsedLine("VipQualification"), "no");

    service->engine = kVipEngineRenewalOff;
    service->qualification = true;
    service->newState = 2;
    service->isNewSystem = true;
    service->state = 1;
    service->grade = 4;
    bus.HostSend(kMsgVipStatusChanged);

    EXPECT_EQ(ParsedLine("VipEngineStatus"), "5 \u00B7 member, renewal off");
    EXPECT_EQ(ParsedLine("VipQualification"), "yes");
    EXPECT_EQ(ParsedLine("VipNewState"), "2 \u00B7 expired");
    EXPECT_EQ(ParsedLine("VipNewSystem"), "yes");
    EXPECT_EQ(ParsedLine("VipOldState"), "1 \u00B7 member");
    EXPECT_EQ(ParsedLine("VipGrade"), "4");
}

TEST_F(RightsViewTest, EveryEngineStatusHasItsWords) {
    const std::map<int, std::string> words = {{-1, "undetermined"},      {0, "on trial"}, {1, "member"},
                                              {2, "asset protection"},   {3, "expired"},  {4, "no member"},
                                              {5, "member, renewal off"}};
    for (const auto& [status, word] : words) {
        EXPECT_EQ(right_text::Engine(status).toStdString(), std::to_string(status) + " \u00B7 " + word);
    }
    EXPECT_EQ(right_text::Engine(6), QStringLiteral("6"));
    EXPECT_EQ(right_text::NewState(2), QStringLiteral("2 \u00B7 expired"));
    EXPECT_EQ(right_text::OldState(2), QStringLiteral("2"));
}

TEST_F(RightsViewTest, WithoutTheModuleTheViewSaysSo) {
    service.reset();
    rights.Refresh();

    EXPECT_EQ(ParsedLine("RightsCount"), "Closed, no module");
}
