#include "workbench/ads/AdView.h"

#include <QLabel>
#include <QScrollBar>
#include <QTableWidget>
#include <QTreeWidget>

#include "support/ScriptedHostTest.h"
#include "workbench/ads/AdDiagnosisText.h"
#include "workbench/ads/AdTracker.h"

using namespace ::testing;

namespace {

constexpr qint64 kStart = 1'700'000'000'000;
const std::string kPopupEnd = "adType = 2, adPosition = 42, requestId = ";

class AdViewTest : public ScriptedHostTest {
protected:
    AdViewTest() {
        time.SetServerTime(kStart);
        view.resize(560, 600);
        view.show();
        time.Settle();
    }

    void Line(const std::string& text) {
        LogEntry entry;
        entry.time = QDateTime::fromMSecsSinceEpoch(now);
        entry.record.module = "ZRGrowth";
        entry.record.text = QString::fromStdString("[Ad] " + text);
        entry.number = ++number;
        lines.push_back(entry);
        board.TakeLine(entry);
    }

    void Ask(const std::string& slot, const std::string& id) {
        Line("Request ad start, path = /ad/search, " + slot + ", adIdList = , requestId = " + id);
    }

    void See(decltype(TraceEvent::what) what) {
        TraceEvent seen{++number, now, std::move(what)};
        sights.push_back(seen);
        board.Take(seen);
    }

    static HttpTrace Sent(const std::string& id) {
        HttpTrace call;
        call.task = 5;
        call.url = "https://ads.test/ad/search";
        call.body = R"({"ad_type": 2, "ad_position": 42, "request_id": ")" + id + "\"}";
        call.bodyBytes = call.body.size();
        return call;
    }

    void Answered(const std::string& id, const std::string& body) {
        HttpTrace call = Sent(id);
        call.kind = HttpTrace::EnKind::Answered;
        call.requestBody = call.body;
        call.body = body;
        call.bodyBytes = body.size();
        call.status = 200;
        See(call);
    }

    // A search with two ads, one of which has ended.
    void Exchange(const std::string& id) {
        Ask("adType = 2, adPosition = 42", id);
        See(Sent(id));
        now += 20;
        Answered(id, R"({"code": 0, "data": {"ad": [{"ad_id": "a", "end_time": 5}, {"ad_id": "b", "end_time": 9}]}})");
        Line("Request ad succeed, path = /ad/search, " + kPopupEnd + id);
        Line("CurrentTime > endTime, currentTime = 7, endTime = 5, adType = 2, adPosition = 42, remove adId = a");
    }

    void Show() { time.Advance(std::chrono::milliseconds(100)); }

    std::string Row(int row) const {
        QStringList cells;
        for (int column = 0; column < table->columnCount(); ++column) {
            cells << (column == 1 ? QString() : table->item(row, column)->text());
        }
        return cells.join(QLatin1Char('|')).toStdString();
    }

    QTreeWidgetItem* Item(const char* name) const {
        const auto items =
            detail->findItems(QString::fromUtf8(name), Qt::MatchExactly | Qt::MatchRecursive | Qt::MatchWrap);
        return items.isEmpty() ? nullptr : items.first();
    }

    /// A list that is refused because of the tab or the interval.
    void Refuse(const std::string& id, const std::string& refusal) {
        Exchange(id);
        Line("Ad popup data is OK, adType = 2, adPosition = 42, adId = b");
        Line(refusal);
        Show();
    }

    /// The value of a line of the first group.
    std::string Why(const char* name) const {
        const QTreeWidgetItem* group = detail->topLevelItem(0);
        for (int line = 0; group && line < group->childCount(); ++line) {
            if (group->child(line)->text(0) == QString::fromUtf8(name)) {
                return group->child(line)->text(1).toStdString();
            }
        }
        return "not there";
    }

    CAdTracker board{[](qint64 localMs) { return localMs; }};
    CAdView view{board};
    QTableWidget* table = view.findChild<QTableWidget*>(QStringLiteral("AdTable"));
    QTreeWidget* detail = view.findChild<QTreeWidget*>(QStringLiteral("AdDetail"));
    qint64 now = kStart;
    uint64_t number = 0;
    std::vector<LogEntry> lines;
    std::vector<TraceEvent> sights;
};

}  // namespace

TEST_F(AdViewTest, BeforeARequestThereIsNothingAndItIsSaid) {
    EXPECT_TRUE(view.findChild<QLabel*>(QStringLiteral("AdNothing"))->isVisible());
    Exchange("r1");
    Show();
    EXPECT_FALSE(view.findChild<QLabel*>(QStringLiteral("AdNothing"))->isVisible());
}

TEST_F(AdViewTest, ARowTellsASlotAndCountsItsWaitDown) {
    Exchange("r1");
    Show();
    ASSERT_EQ(table->rowCount(), 1);
    EXPECT_EQ(Row(0), "Popup 42||in 10 s|code 0, ads: 2|1 / 2|");

    time.Advance(std::chrono::milliseconds(9'500));
    EXPECT_EQ(Row(0), "Popup 42||in 1 s|code 0, ads: 2|1 / 2|");
    time.Advance(std::chrono::seconds(1));
    EXPECT_EQ(Row(0), "Popup 42||now|code 0, ads: 2|1 / 2|");
}

TEST_F(AdViewTest, TheFirstSlotIsChosenAndEachAdSaysWhy) {
    Exchange("r1");
    Show();

    ASSERT_TRUE(Item("a") && Item("b"));
    EXPECT_EQ(Item("a")->text(1), QStringLiteral("dropped: ended 1970-01-01 00:00:05 UTC"));
    EXPECT_EQ(Item("b")->text(1), QStringLiteral("kept"));
    EXPECT_NE(Item("a")->foreground(1), Item("b")->foreground(1));
    EXPECT_EQ(Item("Request id")->text(1), QStringLiteral("r1"));
}

TEST_F(AdViewTest, TheChosenSlotStaysChosenWhenAnotherComesAheadOfIt) {
    Ask("adType = 3, adPosition = 7", "banner");
    Show();
    Exchange("r1");
    Show();

    ASSERT_EQ(table->rowCount(), 2);
    EXPECT_EQ(Row(1), "Banner 7||in 10 s|no answer yet||");
    EXPECT_EQ(table->currentRow(), 1);
    EXPECT_EQ(Item("Request id")->text(1), QStringLiteral("banner"));
    table->selectRow(0);
    EXPECT_EQ(Item("Request id")->text(1), QStringLiteral("r1"));
}

TEST_F(AdViewTest, TrafficAndLinesMayComeOneAfterTheOther) {
    Exchange("r1");
    now += 20'000;
    Exchange("r2");
    const auto tell = [](const CAdTracker& one) {
        std::vector<std::string> told;
        std::vector<ad_text::Group> groups = ad_text::Groups(one, *one.Find({2, 42}));
        groups.push_back(ad_diagnosis_text::Why(one, *one.Find({2, 42}), kStart));
        for (const ad_text::Group& group : groups) {
            for (const FieldNode& line : group.lines) {
                told.push_back((line.name + QLatin1Char('=') + line.value).toStdString());
            }
        }
        return told;
    };
    const auto feedLines = [this](CAdTracker& one) {
        for (const LogEntry& line : lines) {
            one.TakeLine(line);
        }
    };
    const auto feedSights = [this](CAdTracker& one) {
        for (const TraceEvent& seen : sights) {
            one.Take(seen);
        }
    };
    CAdTracker linesFirst([](qint64 localMs) { return localMs; });
    feedLines(linesFirst);
    feedSights(linesFirst);
    CAdTracker trafficFirst([](qint64 localMs) { return localMs; });
    feedSights(trafficFirst);
    feedLines(trafficFirst);

    EXPECT_THAT(tell(board), Contains("a=dropped: ended 1970-01-01 00:00:05 UTC"));
    EXPECT_EQ(tell(linesFirst), tell(board));
    EXPECT_EQ(tell(trafficFirst), tell(board));
}

TEST_F(AdViewTest, WhatComesTwiceIsTakenOnce) {
    Exchange("r1");
    Line(
        "Request ad limited. currentTimeStamp = 1700000001, lastRequestTimeStamp = 1700000000, "
        "requestInterval = 10, adType = 2, adPosition = 42");
    for (const LogEntry& line : std::vector<LogEntry>(lines)) {
        board.TakeLine(line);
    }

    EXPECT_EQ(board.Find({2, 42})->refusedCount, 1);
    EXPECT_EQ(board.Request(QStringLiteral("r1"))->drops.size(), 1u);
}

TEST_F(AdViewTest, OldRequestsGiveWayAndTheLastOfEachSlotStays) {
    Ask("adType = 3, adPosition = 7", "banner");
    for (int count = 0; count < 400; ++count) {
        ++now;
        Ask("adType = 2, adPosition = 42", "r" + std::to_string(count));
    }

    EXPECT_EQ(board.Request(QStringLiteral("r0")), nullptr);
    EXPECT_NE(board.Request(QStringLiteral("r399")), nullptr);
    EXPECT_NE(board.Request(QStringLiteral("banner")), nullptr);
}

TEST_F(AdViewTest, WhyItIsNotShownIsToldFirst) {
    Refuse("r1",
           "ShowAreas donot contain currentTab, currentTab = 502, tabFrameKey = 20003, adType = 2, adPosition = 42, "
           "adId = b");

    EXPECT_EQ(detail->topLevelItem(0)->text(0), QStringLiteral("Why is it not shown?"));
    EXPECT_TRUE(detail->topLevelItem(0)->isExpanded());
    EXPECT_EQ(Why("Now"), "not shown");
    EXPECT_EQ(Why("Last"), "refused (moment): current tab · 22:13:20");
    EXPECT_EQ(Why("Found"), "Research (area 502), key 20003");
    EXPECT_EQ(Why("Needed"), "");  // the answer has no area
    EXPECT_EQ(Why("Time alone"), "changes nothing");
}

TEST_F(AdViewTest, WhatTheAnswerSaidIsNotGuessedWhereItIsNotKnown) {
    Ask("adType = 2, adPosition = 42", "r1");
    Line("Request ad succeed, path = /ad/search, " + kPopupEnd + "r1");
    Line("ShowAreas donot contain currentTab, currentTab = 0, tabFrameKey = 7, adType = 2, adPosition = 42, adId = b");
    Show();

    EXPECT_EQ(Why("Found"), "no tab (area 0), key 7");
    EXPECT_EQ(Why("Needed"), "not known: its answer was not seen whole");
}

TEST_F(AdViewTest, TheMomentIsCountedDownWhereItStands) {
    Refuse("r1",
           "CurrentTime donot exceed showInterval. currentTime = 1700000000, lastShowTime = 1699999990, "
           "showInterval = 12, adType = 2, adPosition = 42, adId = other, key = k");
    const QTreeWidgetItem* group = detail->topLevelItem(0);
    EXPECT_EQ(Why("Time alone"), "lets it through from 2023-11-14 22:13:23 UTC, in 3 s");

    time.Advance(std::chrono::milliseconds(1'900));
    EXPECT_EQ(Why("Time alone"), "lets it through from 2023-11-14 22:13:23 UTC, in 1 s");
    time.Advance(std::chrono::seconds(1));
    EXPECT_EQ(Why("Time alone"), "lets it through from 2023-11-14 22:13:23 UTC, now");
    EXPECT_EQ(detail->topLevelItem(0), group);
}

TEST_F(AdViewTest, TheTableFitsIntoItsWidth) {
    Exchange("r1");
    Show();
    for (const int width : {420, 560, 900}) {
        view.resize(width, 600);
        time.Settle();
        EXPECT_EQ(table->horizontalScrollBar()->maximum(), 0) << width;
        EXPECT_FALSE(table->horizontalScrollBar()->isVisible()) << width;
    }
}
