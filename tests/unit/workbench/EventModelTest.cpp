#include "workbench/EventModel.h"

#include <QSignalSpy>

#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

class EventModelTest : public ScriptedHostTest {
protected:
    EventModelTest() { filter.setSourceModel(&model); }

    void Add(unsigned int id) {
        TraceEvent seen;
        seen.number = ++number;
        MessageTrace message;
        message.id = id;
        seen.what = message;
        model.Add(seen);
    }

    void AddMany(int count) {
        for (int i = 0; i < count; ++i) {
            Add(unsigned(i));
        }
    }

    static constexpr int kMostRows = 10'000;

    CEventModel model{NewTrafficFormat()};
    CEventFilter filter;
    uint64_t number = 0;
};

}  // namespace

TEST_F(EventModelTest, AStormIsAppliedInBatchesOfBoundedSize) {
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);

    AddMany(kMostRows);
    EXPECT_EQ(model.rowCount(), 0);
    time.Advance(std::chrono::milliseconds(100));
    EXPECT_EQ(model.rowCount(), CEventModel::kMaxBatch);
    time.Advance(std::chrono::seconds(1));

    EXPECT_EQ(model.rowCount(), kMostRows);
    EXPECT_EQ(inserted.count(), kMostRows / CEventModel::kMaxBatch);
    for (const auto& rows : inserted) {
        EXPECT_LE(rows[2].toInt() - rows[1].toInt() + 1, CEventModel::kMaxBatch);
    }
    EXPECT_TRUE(model.IsSettled());
}

TEST_F(EventModelTest, TheOldestGiveWayToTheYoungest) {
    AddMany(kMostRows + 3);
    time.Advance(std::chrono::seconds(2));
    Add(77'777);
    time.Advance(std::chrono::seconds(1));

    ASSERT_EQ(model.rowCount(), kMostRows);
    EXPECT_EQ(model.At(0).cells[1], QStringLiteral("4"));
    EXPECT_EQ(model.At(kMostRows - 1).cells[1], QStringLiteral("77777"));
}

TEST_F(EventModelTest, OfCallsWithTheirBodiesFewerAreKept) {
    CEventModel calls(NewHttpFormat());
    for (int i = 1; i <= 1'002; ++i) {
        TraceEvent seen;
        seen.number = uint64_t(i);
        HttpTrace call;
        call.task = static_cast<unsigned long>(i);
        seen.what = call;
        calls.Add(seen);
    }
    time.Advance(std::chrono::seconds(2));

    EXPECT_EQ(calls.rowCount(), 1'000);
}

TEST_F(EventModelTest, WhatComesTwiceIsTakenOnce) {
    Add(1);
    number = 0;
    Add(1);
    time.Advance(std::chrono::seconds(1));

    EXPECT_EQ(model.rowCount(), 1);
}

TEST_F(EventModelTest, WhilePausedNothingMovesAndNothingIsLost) {
    model.SetPaused(true);
    AddMany(3);
    time.Advance(std::chrono::seconds(1));
    EXPECT_EQ(model.rowCount(), 0);

    model.SetPaused(false);
    EXPECT_EQ(model.rowCount(), 3);

    Add(9);
    model.Clear();
    time.Advance(std::chrono::seconds(1));
    EXPECT_EQ(model.rowCount(), 0);
}

TEST_F(EventModelTest, APauseHoldsBackWhatWasCollectedBeforeItToo) {
    Add(1);
    model.SetPaused(true);
    time.Advance(std::chrono::seconds(1));
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_FALSE(model.IsSettled());

    model.SetPaused(false);
    EXPECT_EQ(model.rowCount(), 1);
}

TEST_F(EventModelTest, TheFilterTellsKindsAndFindsNames) {
    Add(20300);
    TraceEvent command;
    command.number = ++number;
    command.what = CommandTrace{CommandTrace::EnKind::Sent, 20982, 1, 0, -1, "", 20982};
    model.Add(command);
    time.Advance(std::chrono::seconds(1));

    filter.SetChoice(0, QStringLiteral("Sent"));
    ASSERT_EQ(filter.rowCount(), 1);
    EXPECT_EQ(filter.index(0, 3).data().toString(), QStringLiteral("GetChatEntry"));
    filter.SetChoice(0, QString());
    filter.SetText(QStringLiteral("entrieschanged"));
    ASSERT_EQ(filter.rowCount(), 1);
    EXPECT_EQ(filter.index(0, 2).data().toString(), QStringLiteral("20300"));
}

TEST_F(EventModelTest, ALongCellIsCutInTheTable) {
    CEventModel values(NewStoreFormat());
    TraceEvent seen;
    seen.what = StoreTrace{false, std::nullopt, std::string(8 << 20, 'k'), "", false, false};
    values.Add(seen);
    values.Flush();

    EXPECT_EQ(values.index(0, 3).data().toString().size(), CEventModel::kMaxCell + 1);
    EXPECT_LE(values.index(0, 3).data(Qt::ToolTipRole).toString().size(), 5 * CEventModel::kMaxCell);
}

TEST_F(EventModelTest, ATooltipIsPlainTextWhateverTheServerSent) {
    CEventModel values(NewStoreFormat());
    TraceEvent seen;
    seen.what = StoreTrace{false, std::nullopt, "<img src='/dev/zero'>", "", false, false};
    values.Add(seen);
    values.Flush();

    EXPECT_EQ(values.index(0, 3).data(Qt::ToolTipRole).toString(),
              QStringLiteral("<p>&lt;img src='/dev/zero'&gt;</p>"));
}

TEST_F(EventModelTest, NumbersAreSortedAsNumbersAndTextsAsTexts) {
    for (const unsigned id : {20300u, 9u, 10650u}) {
        Add(id);
    }
    model.Flush();
    const auto shown = [this](int column) {
        QStringList cells;
        for (int row = 0; row < filter.rowCount(); ++row) {
            cells << filter.index(row, column).data().toString();
        }
        return cells.join(QLatin1Char(' '));
    };

    filter.sort(2);
    EXPECT_EQ(shown(2), QStringLiteral("9 10650 20300"));
    filter.sort(3);
    EXPECT_EQ(shown(3), QStringLiteral(" AIChatEntriesChanged LoginChannelConnected"));
    filter.sort(-1);
    EXPECT_EQ(shown(2), QStringLiteral("20300 9 10650"));
}

TEST_F(EventModelTest, TheTimeNamesItsZoneAndTheDateOfAnotherDay) {
    TraceEvent seen;
    seen.timeMs = 1'700'000'000'123;
    seen.what = MessageTrace{};
    model.Add(seen);
    seen.timeMs = QDateTime::currentMSecsSinceEpoch();
    model.Add(seen);
    model.Flush();

    EXPECT_EQ(model.headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(),
              QStringLiteral("Time (%1)").arg(QDateTime::currentDateTime().timeZoneAbbreviation()));
    EXPECT_EQ(model.index(0, 0).data().toString(), QStringLiteral("2023-11-14 22:13:20.123"));
    EXPECT_EQ(model.index(1, 0).data().toString().size(), 12);
}
