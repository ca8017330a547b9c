#include "workbench/diagnosis/WhyPage.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QJsonArray>
#include <QJsonDocument>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTextDocument>

#include "AIChatEntries.h"
#include "FakeControlClient.h"
#include "FakeGrowthService.h"
#include "PremiumRights.h"
#include "modules/ZRGrowthMessages.h"
#include "support/Click.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

const QByteArray kScenario = R"({"ads": [{"adType": 3, "adPosition": 7}, {"adType": "2"}, 5,
    {"adType": 3, "adPosition": 12}]})";

class WhyPageTest : public ScriptedHostTest {
protected:
    WhyPageTest() {
        account.Set(300);
        page.resize(560, 700);
        page.show();
        time.Settle();
    }

    template <class Widget>
    Widget* Child(const char* name) {
        auto* child = page.findChild<Widget*>(QString::fromLatin1(name));
        EXPECT_NE(child, nullptr) << name;
        return child;
    }

    void Line(const char* text, const char* module = "ZRGrowth") {
        LogEntry entry;
        entry.time = QDateTime::currentDateTime();
        entry.record.module = module;
        entry.record.text = QString::fromUtf8(text);
        tracker.TakeLine(entry);
    }
    void Settle() { time.Advance(std::chrono::seconds(2)); }

    void ServerSays(const std::vector<std::pair<int, bool>>& table) {
        for (const auto& [right, has] : table) {
            service->table[EnPremiumAccess(right)] = RecordOf(EnPremiumAccess(right), has, "a <b>title</b>");
        }
        bus.HostSend(kMsgPremiumDataChanged);
        Settle();
    }

    /// The subjects in the order of the list.
    std::vector<std::string> Subjects() {
        const QAbstractItemModel* model = Child<QTableView>("WhyTable")->model();
        std::vector<std::string> subjects;
        for (int row = 0; row < model->rowCount(); ++row) {
            subjects.push_back(model->index(row, 0).data().toString().toStdString());
        }
        return subjects;
    }

    void Choose(const char* subject) {
        const auto all = Subjects();
        const auto found = std::find(all.begin(), all.end(), subject);
        ASSERT_NE(found, all.end()) << subject;
        auto* table = Child<QTableView>("WhyTable");
        const QModelIndex index = table->model()->index(int(found - all.begin()), 1);
        table->scrollTo(index);
        QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, table->visualRect(index).center());
    }

    std::string Sentence() { return Child<QLabel>("WhySentence")->text().toStdString(); }
    std::string Message() { return Child<QLabel>("WhyMessage")->text().toStdString(); }

    std::string Strip() {
        QTextDocument text;
        text.setHtml(Child<QLabel>("WhyStrip")->text());
        return text.toPlainText().simplified().toStdString();
    }
    std::string Details() { return Child<QPlainTextEdit>("WhyDetail")->toPlainText().toStdString(); }

    std::shared_ptr<CFakeGrowthService> service = CFakeGrowthService::Offer();
    CPremiumRights rights;
    CAIChatEntries entries;
    CFakeControlClient server;
    CTracker tracker{[](qint64 localMs) { return localMs; }};
    CWhyPage page{tracker, rights, entries, server};
};

}  // namespace

TEST_F(WhyPageTest, PopupIsChosenAtTheStart) {
    EXPECT_THAT(Strip(), HasSubstr("asked"));
    EXPECT_THAT(Sentence(), StartsWith("Nothing was asked for yet."));
}

TEST_F(WhyPageTest, PositionsOfTheScenarioAreListedBeforeTheyAsk) {
    ASSERT_EQ(server.wishes.back().path, "/v1/scenario");
    server.Answer(kScenario);
    Settle();

    EXPECT_THAT(Subjects(), ElementsAre("Popup 42", "Banner 7", "Banner 12", "Rights", "VIP status", "Chat scene 1",
                                        "Chat scene 2", "Chat scene 3", "Chat scene 4", "Chat scene 5"));
    Choose("Banner 12");
    EXPECT_EQ(Sentence(), "Nothing was asked for yet. A page that shows this banner asks when it is opened.");
}

TEST_F(WhyPageTest, PositionsStayListedWhenTheServerRefusesToNameThem) {
    server.Answer(kScenario);
    page.ForgetServer();
    server.Refuse(R"({"error": "no connection"})");
    Settle();

    EXPECT_THAT(Subjects(), Contains("Banner 12"));
}

TEST_F(WhyPageTest, AnswerOfAnotherShapeIsIgnored) {
    for (const char* body : {R"({"ads": 5})", R"({"ads": [[]]})", R"({})"}) {
        page.ForgetServer();
        server.Answer(body);
    }
    Settle();

    EXPECT_EQ(Subjects()[1], "Rights");
}

TEST_F(WhyPageTest, RefusalIsOneStoppedStepAndOneSentence) {
    Line("[Ad] Request ad start, path = /ad/search, adType = 2, adPosition = 42, adIdList = , requestId = x");
    Line("[Ad] Request ad failed, path = /ad/search, result = 3, adType = 2, adPosition = 42, requestId = x");
    Settle();

    EXPECT_EQ(Strip(), "✓ asked ✗ answered – kept – conditions – picture – shown");
    EXPECT_THAT(Sentence(), StartsWith("The exchange with the ad server failed with result 3."));
    EXPECT_THAT(Details(), HasSubstr("\n  Found: result 3\n"));
}

TEST_F(WhyPageTest, RightIsFoundByNumberNameTitleAndState) {
    ServerSays({{5, true}, {77, false}});
    auto* search = Child<QLineEdit>("WhySearch");
    const auto find = [&](const char* text) {
        search->setText(QString::fromUtf8(text));
        return Subjects();
    };

    EXPECT_THAT(find("right 77"), ElementsAre("Right 77"));
    EXPECT_THAT(find("us_cme_future_lv1"), Contains("Right 5"));
    EXPECT_THAT(find("title"), ElementsAre("Right 5", "Right 77"));
    EXPECT_THAT(find("not held"), ElementsAre("Right 77"));
    EXPECT_THAT(find("1000"), ElementsAre("Right 1000"));
    EXPECT_THAT(find("no such thing"), IsEmpty());
    EXPECT_THAT(Child<QLabel>("WhyNote")->text().toStdString(), StartsWith("Nothing with these words"));
    EXPECT_THAT(find("popup"), ElementsAre("Popup 42"));
}

TEST_F(WhyPageTest, WidgetsOfARightNameTheRuleThatHidesThem) {
    Line("[Premium] Send Request For All Premium Access, Session = 3, Server Push = false");
    TraceEvent replied;
    replied.timeMs = QDateTime::currentMSecsSinceEpoch();
    replied.what = CommandTrace{CommandTrace::EnKind::Replied, 20637, 3, 0, 1, "", 20637};
    tracker.Take(replied);
    Line("[Premium] Parse Response Success, Premium Data Updated And Saved");
    ServerSays({{5, false}});
    Choose("Right 5");

    EXPECT_EQ(Strip(), "✓ asked ✓ answered ✓ taken ✓ listed ✗ held");
    EXPECT_THAT(Sentence(), StartsWith("The server answers that the user does not hold it: full."));
    EXPECT_THAT(Details(), HasSubstr("✓ Icon: may be shown\n"));
    EXPECT_THAT(Details(), HasSubstr("\n✗ Banner (main texts): hidden: activation type\n"));
    EXPECT_THAT(Details(), ContainsRegex("\n  texts: not reached: .*, needed: title and button text\n"));
}

TEST_F(WhyPageTest, SceneAndItsOverrideAreExplained) {
    service->open = {1};
    entries.Refresh();
    Settle();
    Choose("Chat scene 1");
    EXPECT_EQ(Strip(), "✓ asked ✓ answered ✓ taken ✓ open");
    EXPECT_EQ(Sentence(), "The server opened scene 1 to this user.");
    entries.SetOverride(EnEntryOverride::Closed);
    Settle();

    EXPECT_EQ(Strip(), "✓ asked ✓ answered ✓ taken ✗ open");
    EXPECT_EQ(Sentence(), "The override closes all scenes. Remove it to see the server's answer.");
    EXPECT_FALSE(Child<QPushButton>("WhyAsk")->isEnabled());
}

TEST_F(WhyPageTest, PopupIsAskedForByAPush) {
    Click(Child<QPushButton>("WhyAsk"));

    EXPECT_EQ(server.wishes.back().path, "/v1/push");
    EXPECT_EQ(server.wishes.back().json, R"({"adNew":{"adType":2,"adPosition":42,"delay":0}})");
    server.Answer("{}");
    EXPECT_EQ(Message(), "Asked by a push of the server");
    Click(Child<QPushButton>("WhyAsk"));
    server.Refuse(R"({"error": "no connection"})");
    EXPECT_THAT(Message(), HasSubstr("no connection"));
}

TEST_F(WhyPageTest, LastShowingIsForgottenBeforeTheNextRequest) {
    store.SetInt64("AdLastShowTimeStampKey_2_42_300_1", 150);
    store.SetInt64("AdLastShowTimeStampKey_2_42_78_1", 150);

    Click(Child<QPushButton>("WhyForget"));

    EXPECT_EQ(store.Int64("AdLastShowTimeStampKey_2_42_300_1"), 0);
    EXPECT_EQ(store.Int64("AdLastShowTimeStampKey_2_42_78_1"), 150);
    EXPECT_EQ(server.wishes.back().path, "/v1/push");
}

TEST_F(WhyPageTest, BannerIsAskedForAndShownHere) {
    server.Answer(kScenario);
    Settle();
    Choose("Banner 7");
    Click(Child<QPushButton>("WhyAsk"));
    ASSERT_EQ(service->banners.size(), 1u);
    EXPECT_EQ(service->banners[0].position, 7);
    QPointer<QWidget> banner = new QWidget;
    service->banners[0].callback(banner);
    EXPECT_TRUE(banner->isVisible());

    Choose("Popup 42");
    EXPECT_EQ(banner, nullptr);
}

TEST_F(WhyPageTest, RightAndRefreshAreAskedForThroughTheModule) {
    ServerSays({{5, true}});
    service->session = 12;
    Choose("Right 5");
    Click(Child<QPushButton>("WhyAsk"));
    Choose("Rights");
    Click(Child<QPushButton>("WhyAsk"));

    EXPECT_THAT(service->asked, ElementsAre("5 push", "all push"));
    EXPECT_EQ(Message(), "Asked, session 12");
}

TEST_F(WhyPageTest, AnswerAndRowsAreCopied) {
    Click(Child<QPushButton>("WhyCopy"));
    EXPECT_THAT(QApplication::clipboard()->text().toStdString(), StartsWith("Popup 42, user 300\n– asked – answered"));

    Child<QTableView>("WhyTable")->setFocus();
    QTest::keyClick(Child<QTableView>("WhyTable"), Qt::Key_C, Qt::ControlModifier);
    EXPECT_THAT(QApplication::clipboard()->text().toStdString(), StartsWith("Popup 42\tbottom popup\tnot asked\t"));
}

TEST_F(WhyPageTest, StateNamesEachSubjectWithItsUser) {
    page.ShowUsers({{300, QStringLiteral("Ada")}});
    Settle();

    const QJsonArray subjects = page.State()[QStringLiteral("subjects")].toArray();
    ASSERT_EQ(subjects.size(), 8);
    EXPECT_EQ(subjects[0].toObject()[QStringLiteral("subject")].toString(), QStringLiteral("Popup 42"));
    EXPECT_EQ(subjects[0].toObject()[QStringLiteral("user")].toString(), QStringLiteral("Ada (300)"));
    EXPECT_EQ(subjects[0].toObject()[QStringLiteral("steps")].toArray().size(), 6);
}

TEST_F(WhyPageTest, TextOfTheServerIsNotReadAsRichText) {
    ServerSays({{5, true}});
    Choose("Right 5");
    EXPECT_THAT(Details(), HasSubstr("title “a <b>title</b>”"));

    const auto* table = Child<QTableView>("WhyTable");
    const QModelIndex title = table->selectionModel()->currentIndex().siblingAtColumn(1);
    EXPECT_THAT(title.data(Qt::ToolTipRole).toString().toStdString(), HasSubstr("a &lt;b&gt;title&lt;/b&gt;"));
}

TEST_F(WhyPageTest, ColumnsHoldTheirHeadersAtTheFirstPaintAndTabLeavesTheTable) {
    auto* table = Child<QTableView>("WhyTable");
    for (int column = 0; column < table->model()->columnCount(); ++column) {
        EXPECT_GE(table->columnWidth(column), table->horizontalHeader()->sectionSizeHint(column)) << column;
    }
    table->setFocus();
    QTest::keyClick(table, Qt::Key_Tab);
    EXPECT_FALSE(table->hasFocus());
}
