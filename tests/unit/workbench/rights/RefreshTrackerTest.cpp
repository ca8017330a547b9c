#include "workbench/rights/RefreshTracker.h"

#include <QLabel>
#include <QSignalSpy>

#include "PremiumNumbers.h"
#include "support/ScriptedHostTest.h"
#include "workbench/rights/RefreshText.h"
#include "workbench/rights/RefreshView.h"

using namespace ::testing;

namespace {

using EnOutcome = CRefreshTracker::EnOutcome;
using EnSubject = CRefreshTracker::EnSubject;
using EnRefreshReason = CRefreshTracker::EnRefreshReason;
using EnKind = CommandTrace::EnKind;

constexpr qint64 kStart = 1'700'000'000'000;

class RefreshTrackerTest : public ScriptedHostTest {
protected:
    void Line(const std::string& text) {
        LogEntry entry;
        entry.time = QDateTime::fromMSecsSinceEpoch(now);
        entry.record.module = "ZRGrowth";
        entry.record.text = QString::fromStdString(text);
        entry.number = ++lines;
        lineEntries.push_back(entry);
        board.TakeLine(entry);
    }

    void See(decltype(TraceEvent::what) what) {
        TraceEvent seen{++sights, now, std::move(what)};
        seenEntries.push_back(seen);
        board.Take(seen);
    }

    void Command(EnKind kind, uint32_t command, unsigned long session, int error = 0) {
        See(CommandTrace{kind, command, session, error, -1, "", command});
    }

    void Message(unsigned int id, uint64_t p1 = 0, uint64_t p2 = 0) {
        MessageTrace message;
        message.id = id;
        message.p1 = p1;
        message.p2 = p2;
        See(message);
    }

    // Request and log line in the module's order.
    void Ask(unsigned long session, bool serverPush) {
        Command(EnKind::Sent, 20637, session);
        Line("[Premium] Send Request For All Premium Access, Session = " + std::to_string(session) +
             ", Server Push = " + (serverPush ? "true" : "false"));
    }

    void AskList(unsigned long session, int count, bool serverPush) {
        Command(EnKind::Sent, 20637, session);
        Line("[Premium] Send Request For Custom Premium Access, Count = " + std::to_string(count) +
             ", Session = " + std::to_string(session) + ", Server Push = " + (serverPush ? "true" : "false"));
    }

    void AskVip(unsigned long session) {
        Line("[Vip] Send Request For Vip Status From Server");
        Command(EnKind::Sent, 20831, session);
    }

    // A failed reply and the line with its reason, in the module's order.
    void FailPremium(unsigned long session, const std::string& line) {
        Command(EnKind::Replied, 20637, session);
        Line(line);
        Message(80051, session, 2);
    }

    std::string Last(EnSubject subject) const {
        const auto last = board.Last(subject);
        return last ? std::to_string(last->session) + " " + refresh_text::Why(last->why).toStdString() + " " +
                          refresh_text::Outcome(*last).toStdString()
                    : "none";
    }

    std::vector<unsigned long> InFlight() const {
        std::vector<unsigned long> sessions;
        for (const auto& refresh : board.InFlight()) {
            sessions.push_back(refresh.session);
        }
        return sessions;
    }

    std::vector<qint64> Dues() const {
        std::vector<qint64> dues;
        for (const auto& push : board.WaitingPushes()) {
            dues.push_back(push.dueMs - kStart);
        }
        return dues;
    }

    qint64 now = kStart;
    uint64_t lines = 0;
    uint64_t sights = 0;
    std::vector<LogEntry> lineEntries;
    std::vector<TraceEvent> seenEntries;
    CRefreshTracker board;
};

}  // namespace

TEST_F(RefreshTrackerTest, ALoginAsksForBothAndTheirEndsAreTold) {
    EXPECT_EQ(Last(EnSubject::Premium), "none");
    Line("[Premium] User Login Received, Request All Premium Data From Server");
    Ask(1, false);
    AskVip(2);
    EXPECT_THAT(InFlight(), ElementsAre(1, 2));

    now += 20;
    Command(EnKind::Replied, 20637, 1);
    Message(80051, 1, 0);
    Command(EnKind::Replied, 20831, 2);
    Message(80052);

    EXPECT_EQ(Last(EnSubject::Premium), "1 login good");
    EXPECT_EQ(Last(EnSubject::Vip), "2 login good");
    EXPECT_EQ(board.Last(EnSubject::Premium)->sentMs, kStart);
    EXPECT_EQ(board.Last(EnSubject::Premium)->answeredMs, kStart + 20);
    EXPECT_THAT(InFlight(), IsEmpty());
}

TEST_F(RefreshTrackerTest, EachReasonIsTakenFromTheLineBeforeTheRequest) {
    Line("[Premium] Hourly Timer Fired, Refresh All Premium Data");
    Ask(1, true);
    Line("[Premium] Language Changed, Refresh All Premium Data");
    Ask(2, true);
    Ask(3, true);
    AskList(4, 2, false);
    AskVip(5);

    EXPECT_EQ(board.Find(1)->why, EnRefreshReason::Hourly);
    EXPECT_EQ(board.Find(2)->why, EnRefreshReason::Language);
    EXPECT_EQ(board.Find(3)->why, EnRefreshReason::Caller);
    EXPECT_EQ(board.Find(4)->why, EnRefreshReason::Caller);
    EXPECT_EQ(board.Find(5)->why, EnRefreshReason::Caller);
}

TEST_F(RefreshTrackerTest, AGoodAnswerThatNobodyWaitedForIsTellableByItsMessage) {
    Ask(1, true);
    Command(EnKind::Replied, 20637, 1);
    EXPECT_EQ(Last(EnSubject::Premium), "1 a caller answered");

    Message(80050);

    EXPECT_EQ(Last(EnSubject::Premium), "1 a caller good");
}

struct BadAnswer {
    const char* name;
    const char* line;
    const char* outcome;
};

class BadPremiumAnswerTest : public RefreshTrackerTest, public WithParamInterface<BadAnswer> {};

TEST_P(BadPremiumAnswerTest, IsToldWithItsReason) {
    Ask(1, false);
    FailPremium(1, GetParam().line);

    EXPECT_EQ(Last(EnSubject::Premium), std::string("1 a caller ") + GetParam().outcome);
}

INSTANTIATE_TEST_SUITE_P(
    Reasons, BadPremiumAnswerTest,
    Values(BadAnswer{"Bytes", "[Premium] Parse Response Failed, Invalid Protobuf Data", "bad bytes"},
           BadAnswer{"NoCode", "[Premium] Parse Response Failed, Missing Code Field", "no code"},
           BadAnswer{"Code", "[Premium] Server Returned Error Code = -5", "code -5"},
           BadAnswer{"Session", "[Premium] Unknown Request Session, Already Removed Or Never Sent, Session = 1",
                     "unknown session"},
           BadAnswer{"Unsaid", "[Premium] Something else", "failed"}),
    [](const auto& row) { return row.param.name; });

TEST_F(RefreshTrackerTest, AnErrorOfTheChannelIsTold) {
    Ask(1, false);
    Command(EnKind::Failed, 20637, 1, 7);
    Line("[Premium] Request Failed On Channel Error, Session = 1, Error = 7");
    Message(80051, 1, 2);
    AskVip(2);
    Command(EnKind::Failed, 20831, 2, 9);
    Line("[Vip] Vip Status Response Failed, Error = 9, Cmd = 20831");

    EXPECT_EQ(Last(EnSubject::Premium), "1 a caller channel error 7");
    EXPECT_EQ(Last(EnSubject::Vip), "2 a caller channel error 9");
}

TEST_F(RefreshTrackerTest, BadAnswersAboutTheVipStatusAreToldAndAGoodOneAfterThemToo) {
    AskVip(1);
    Command(EnKind::Replied, 20831, 1);
    EXPECT_EQ(Last(EnSubject::Vip), "1 a caller answered");
    Line("[Vip] Vip Status Response Failed, Error = 0, Cmd = 20832");
    EXPECT_EQ(Last(EnSubject::Vip), "1 a caller wrong command 20832");
    AskVip(2);
    Command(EnKind::Replied, 20831, 2);
    Line("[Vip] Vip Status Response Parse Failed, Invalid Protobuf Data");
    EXPECT_EQ(Last(EnSubject::Vip), "2 a caller bad bytes");

    AskVip(3);
    Command(EnKind::Replied, 20831, 3);
    Message(80052);

    EXPECT_EQ(Last(EnSubject::Vip), "3 a caller good");
    EXPECT_EQ(board.Find(2)->outcome, EnOutcome::BadBytes);
}

TEST_F(RefreshTrackerTest, APushWaitsUntilItsRequestGoesOut) {
    Line(
        "[Premium] Premium Change Push Received, Need All Access = false, Custom Access Count = 2, "
        "Will Refresh After 5000 Ms");
    now += 1'000;
    Line("[Vip] Vip Status Change Push Received, Will Refresh After 1500 Ms");
    EXPECT_THAT(Dues(), ElementsAre(2'500, 5'000));
    EXPECT_EQ(board.WaitingPushes()[1].count, 2);
    EXPECT_FALSE(board.WaitingPushes()[1].needAll);

    now = kStart + 2'501;
    AskVip(1);
    EXPECT_THAT(Dues(), ElementsAre(5'000));
    now = kStart + 5'002;
    AskList(2, 2, true);

    EXPECT_THAT(Dues(), IsEmpty());
    EXPECT_EQ(board.Find(1)->why, EnRefreshReason::Push);
    EXPECT_EQ(board.Find(2)->why, EnRefreshReason::Push);
}

TEST_F(RefreshTrackerTest, RequestsThatAPushDidNotAskForLeaveItWaiting) {
    Line(
        "[Premium] Premium Change Push Received, Need All Access = true, Custom Access Count = 3, "
        "Will Refresh After 5000 Ms");
    Ask(1, true);  // too early
    now += 5'000;
    AskList(2, 3, true);  // a list, although the push is for all rights
    Ask(3, false);        // a caller waits for the answer
    Line("[Premium] User Login Received, Request All Premium Data From Server");
    Ask(4, false);
    EXPECT_THAT(Dues(), ElementsAre(5'000));

    Ask(5, true);

    EXPECT_THAT(Dues(), IsEmpty());
    EXPECT_EQ(board.Find(1)->why, EnRefreshReason::Caller);
    EXPECT_EQ(board.Find(2)->why, EnRefreshReason::Caller);
    EXPECT_EQ(board.Find(3)->why, EnRefreshReason::Caller);
    EXPECT_EQ(board.Find(4)->why, EnRefreshReason::Login);
    EXPECT_EQ(board.Find(5)->why, EnRefreshReason::Push);
}

TEST_F(RefreshTrackerTest, ADelayThatIsNegativeAsASignedNumberIsDueAtOnce) {
    Line(
        "[Premium] Premium Change Push Received, Need All Access = true, Custom Access Count = 0, "
        "Will Refresh After 4294967000 Ms");

    EXPECT_THAT(Dues(), ElementsAre(0));
}

TEST_F(RefreshTrackerTest, TheNextHourCountsFromTheTimersStartAndFromEachTimeItFires) {
    EXPECT_EQ(board.NextHourly(now), std::nullopt);
    Line("[Premium] Premium Data Handler Module Init End, Timer And Callbacks Ready");
    EXPECT_EQ(board.NextHourly(now), kStart + 3'600'000);
    EXPECT_EQ(board.NextHourly(kStart + 7'200'000), kStart + 10'800'000);

    now += 3'600'250;
    Line("[Premium] Hourly Timer Fired, Refresh All Premium Data");
    EXPECT_EQ(board.NextHourly(now), kStart + 7'200'250);

    Line("[Premium] Premium Data Handler Module Uninit Begin");
    EXPECT_EQ(board.NextHourly(now), std::nullopt);
}

TEST_F(RefreshTrackerTest, LinesOfOthersAndOtherCommandsAreNoneOfItsBusiness) {
    QSignalSpy changed(&board, &CRefreshTracker::Changed);
    LogEntry entry;
    entry.record.module = "Client";
    entry.record.text = QStringLiteral("[Premium] Premium Data Handler Module Init End, Timer And Callbacks Ready");
    board.TakeLine(entry);
    Line("[Premium] User Logout Received");
    Command(EnKind::Sent, 20982, 1);
    Command(EnKind::Pushed, 20837, 0);
    Message(20300);
    Message(80051, 99, 2);

    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(board.NextHourly(now), std::nullopt);
    EXPECT_THAT(InFlight(), IsEmpty());
}

TEST_F(RefreshTrackerTest, WhatComesTwiceIsTakenOnce) {
    Line(
        "[Premium] Premium Change Push Received, Need All Access = true, Custom Access Count = 0, "
        "Will Refresh After 5000 Ms");
    Ask(1, false);
    Command(EnKind::Replied, 20637, 1);
    Message(80051, 1, 0);

    for (const LogEntry& entry : std::vector<LogEntry>(lineEntries)) {
        board.TakeLine(entry);
    }
    for (const TraceEvent& seen : std::vector<TraceEvent>(seenEntries)) {
        board.Take(seen);
    }

    EXPECT_THAT(Dues(), ElementsAre(5'000));
    EXPECT_THAT(InFlight(), IsEmpty());
    EXPECT_EQ(Last(EnSubject::Premium), "1 a caller good");
}

namespace {

/// Requests with every kind of outcome, for boards that receive the entries late.
class LateTrackerTest : public RefreshTrackerTest {
protected:
    LateTrackerTest() {
        Line("[Premium] User Login Received, Request All Premium Data From Server");
        Ask(1, false);
        AskVip(2);
        now += 30;
        FailPremium(1, "[Premium] Parse Response Failed, Missing Code Field");
        Command(EnKind::Replied, 20831, 2);
        Message(80052);
        now += 1'000;
        Line("[Vip] Vip Status Change Push Received, Will Refresh After 0 Ms");
        AskVip(3);
        Ask(4, false);
        now += 30;
        Command(EnKind::Replied, 20831, 3);
        Line("[Vip] Vip Status Response Parse Failed, Invalid Protobuf Data");
        FailPremium(4, "[Premium] Server Returned Error Code = 8");
        AskVip(5);
    }

    void ExpectTheMorning() const {
        for (const unsigned long session : {1ul, 2ul, 3ul, 4ul, 5ul}) {
            ASSERT_TRUE(late.Find(session)) << session;
            EXPECT_EQ(late.Find(session)->outcome, board.Find(session)->outcome) << session;
            EXPECT_EQ(late.Find(session)->why, board.Find(session)->why) << session;
            EXPECT_EQ(late.Find(session)->number, board.Find(session)->number) << session;
        }
        EXPECT_EQ(late.Find(1)->outcome, EnOutcome::NoCode);
        EXPECT_EQ(late.Find(2)->outcome, EnOutcome::Good);
        EXPECT_EQ(late.Find(3)->outcome, EnOutcome::BadBytes);
        EXPECT_EQ(late.Find(3)->why, EnRefreshReason::Push);
        EXPECT_EQ(late.Find(4)->outcome, EnOutcome::OtherCode);
        EXPECT_EQ(late.Find(5)->outcome, EnOutcome::InFlight);
        EXPECT_THAT(late.WaitingPushes(), IsEmpty());
    }

    CRefreshTracker late;
};

}  // namespace

TEST_F(LateTrackerTest, TheLogMayComeAheadOfAllTraffic) {
    for (const LogEntry& entry : lineEntries) {
        late.TakeLine(entry);
    }
    for (const TraceEvent& seen : seenEntries) {
        late.Take(seen);
    }

    ExpectTheMorning();
}

TEST_F(LateTrackerTest, TheLogMayComeBehindAllTraffic) {
    for (const TraceEvent& seen : seenEntries) {
        late.Take(seen);
    }
    for (const LogEntry& entry : lineEntries) {
        late.TakeLine(entry);
    }

    ExpectTheMorning();
}

TEST_F(LateTrackerTest, ALineWhoseAnswerWasNotSeenIsNotTakenForTheNextOne) {
    for (const LogEntry& entry : lineEntries) {
        late.TakeLine(entry);
    }
    // the traffic of the first answers is no longer kept
    for (const TraceEvent& seen : seenEntries) {
        if (seen.timeMs > kStart + 500) {
            late.Take(seen);
        }
    }

    EXPECT_EQ(late.Find(4)->outcome, EnOutcome::OtherCode);
    EXPECT_EQ(late.Find(4)->number, 8);
    EXPECT_EQ(late.Find(3)->outcome, EnOutcome::BadBytes);
}

TEST_F(RefreshTrackerTest, OldAnswersAreForgottenAndRequestsInFlightAreNot) {
    Ask(1, false);
    for (unsigned long session = 2; session < 1'500; ++session) {
        Ask(session, false);
        Command(EnKind::Replied, 20637, session);
        Message(80051, session, 0);
    }

    EXPECT_EQ(board.Find(2), std::nullopt);
    EXPECT_TRUE(board.Find(1'400));
    EXPECT_THAT(InFlight(), ElementsAre(1));
}

TEST_F(RefreshTrackerTest, TheViewSaysItInWordsAFewTimesASecond) {
    CRefreshView view(board);
    const auto said = [&view](const char* name) {
        return view.findChild<QLabel*>(QString::fromLatin1(name))->text().toStdString();
    };
    EXPECT_EQ(said("RefreshPremium"), "never");
    EXPECT_EQ(said("RefreshInFlight"), "none");
    EXPECT_EQ(said("RefreshWaiting"), "none");
    EXPECT_EQ(said("RefreshHourly"), "the timer does not run");

    for (unsigned long session = 1; session <= 6; ++session) {
        Ask(session, false);
    }
    Line(
        "[Premium] Premium Change Push Received, Need All Access = false, Custom Access Count = 2, "
        "Will Refresh After 5000 Ms");
    Line("[Vip] Vip Status Change Push Received, Will Refresh After 6000 Ms");
    Command(EnKind::Failed, 20637, 1, 3);
    EXPECT_EQ(said("RefreshPremium"), "never");
    time.Advance(std::chrono::milliseconds(100));

    EXPECT_EQ(said("RefreshPremium"), "22:13:20 \u00B7 a caller \u00B7 channel error 3 \u00B7 session 1");
    EXPECT_EQ(said("RefreshVip"), "never");
    EXPECT_EQ(said("RefreshInFlight"),
              "20637 \u00B7 22:13:20 \u00B7 a caller \u00B7 session 2\n"
              "20637 \u00B7 22:13:20 \u00B7 a caller \u00B7 session 3\n"
              "20637 \u00B7 22:13:20 \u00B7 a caller \u00B7 session 4\n"
              "20637 \u00B7 22:13:20 \u00B7 a caller \u00B7 session 5\nand 1 more");
    EXPECT_EQ(said("RefreshWaiting"), "20637 \u00B7 22:13:25 \u00B7 rights listed: 2\n20831 \u00B7 22:13:26");
    EXPECT_EQ(refresh_text::NextHourly(kStart + 3'599'000, kStart).toStdString(), "23:13:19, in 59:59");
    EXPECT_EQ(refresh_text::NextHourly(kStart + 61'000, kStart).toStdString(), "22:14:21, in 1:01");
}
