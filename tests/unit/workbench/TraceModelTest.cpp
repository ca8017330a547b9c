#include "workbench/TraceModel.h"

#include <QSignalSpy>

#include "support/ScriptedHostTest.h"
#include "workbench/WireDecoder.h"

using namespace ::testing;

namespace {

class TraceModelTest : public ScriptedHostTest {
protected:
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

    CWireDecoder decoder;
    CTraceModel model{NewTrafficFormat(decoder)};
    CTraceFilter filter{model};
    uint64_t number = 0;
};

}  // namespace

TEST_F(TraceModelTest, AStormIsAppliedInBatchesOfBoundedSize) {
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);

    AddMany(kMostRows);
    EXPECT_EQ(model.rowCount(), 0);
    time.Advance(std::chrono::milliseconds(100));
    EXPECT_EQ(model.rowCount(), CTraceModel::kMaxBatch);
    time.Advance(std::chrono::seconds(1));

    EXPECT_EQ(model.rowCount(), kMostRows);
    EXPECT_EQ(inserted.count(), kMostRows / CTraceModel::kMaxBatch);
    for (const auto& rows : inserted) {
        EXPECT_LE(rows[2].toInt() - rows[1].toInt() + 1, CTraceModel::kMaxBatch);
    }
    EXPECT_TRUE(model.IsSettled());
}

TEST_F(TraceModelTest, TheOldestGiveWayToTheYoungest) {
    AddMany(kMostRows + 3);
    time.Advance(std::chrono::seconds(2));
    Add(77'777);
    time.Advance(std::chrono::seconds(1));

    ASSERT_EQ(model.rowCount(), kMostRows);
    EXPECT_EQ(model.CellsAt(0)[1], QStringLiteral("4"));
    EXPECT_EQ(model.CellsAt(kMostRows - 1)[1], QStringLiteral("77777"));
}

TEST_F(TraceModelTest, OfCallsWithTheirBodiesFewerAreKept) {
    CTraceModel calls(NewHttpFormat());
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

TEST_F(TraceModelTest, WhatComesTwiceIsTakenOnce) {
    Add(1);
    number = 0;
    Add(1);
    time.Advance(std::chrono::seconds(1));

    EXPECT_EQ(model.rowCount(), 1);
}

TEST_F(TraceModelTest, WhilePausedNothingMovesAndNothingIsLost) {
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

TEST_F(TraceModelTest, APauseHoldsBackWhatWasCollectedBeforeItToo) {
    Add(1);
    model.SetPaused(true);
    time.Advance(std::chrono::seconds(1));
    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_FALSE(model.IsSettled());

    model.SetPaused(false);
    EXPECT_EQ(model.rowCount(), 1);
}

TEST_F(TraceModelTest, TheFilterTellsKindsAndFindsNames) {
    Add(20300);
    TraceEvent command;
    command.number = ++number;
    command.what = CommandTrace{CommandTrace::EnKind::Sent, 20982, 1, 0, -1, "", 20982};
    model.Add(command);
    time.Advance(std::chrono::seconds(1));

    filter.SetKind(0);
    ASSERT_EQ(filter.rowCount(), 1);
    EXPECT_EQ(filter.index(0, 3).data().toString(), QStringLiteral("GetChatEntry"));
    filter.SetKind(-1);
    filter.SetText(QStringLiteral("entrieschanged"));
    ASSERT_EQ(filter.rowCount(), 1);
    EXPECT_EQ(filter.index(0, 2).data().toString(), QStringLiteral("20300"));
}
