// The board with the module itself: both receive the same traffic, and the board reads the module's own log.
#include "LogTee.h"
#include "Premium/ZRPremiumManager.h"
#include "PremiumRights.h"
#include "Vip/Controller/ZRVipManager.h"
#include "premium_svr.pb.h"
#include "support/ScriptedHostTest.h"
#include "tracing/BusRecorder.h"
#include "tracing/ChannelRecorder.h"
#include "tracing/TraceLog.h"
#include "vip_base_service.pb.h"
#include "workbench/rights/RefreshText.h"
#include "workbench/rights/RefreshTracker.h"

using namespace ::testing;

namespace {

using EnSubject = CRefreshTracker::EnSubject;

class TrackerOfModuleTest : public ScriptedHostTest {
protected:
    TrackerOfModuleTest() {
        // The test controls both clocks.
        QObject::connect(&traceLog, &CTraceLog::Recorded, &board, [this](TraceEvent seen) {
            seen.timeMs = time.ServerTime();
            board.Take(seen);
        });
        host::Ports ports = ScriptedPorts();
        ports.log = &tee;
        ports.bus = &busRecorder;
        ports.channel = &channelRecorder;
        host::Install(ports);
        CZRPremiumManager::Singleton()->Init();
        vip.Init();
    }

    ~TrackerOfModuleTest() override {
        log.Forget();
        store.Forget();
        channel.Forget();
        host::Install(ScriptedPorts());
    }

    void LogIn() {
        premium.OnLogin();
        vip.OnLogin();
    }

    unsigned long InFlight(EnSubject subject) const {
        for (const auto& refresh : board.InFlight()) {
            if (refresh.subject == subject) {
                return refresh.session;
            }
        }
        ADD_FAILURE() << "nothing is in flight";
        return 0;
    }

    void AnswerPremium(const std::string& bytes) { channel.Reply(InFlight(EnSubject::Premium), 20637, bytes); }
    void AnswerVip(const std::string& bytes) { channel.Reply(InFlight(EnSubject::Vip), 20831, bytes); }

    std::string Last(EnSubject subject) const {
        const auto last = board.Last(subject);
        return last ? (refresh_text::Why(last->why) + QLatin1Char(' ') + refresh_text::Outcome(*last)).toStdString()
                    : "none";
    }

    const std::string good = std::string("\x08\x00", 2);
    CRefreshTracker board;
    CLogTee tee{log, [this](const LogRecord& record) {
                    LogEntry entry;
                    entry.time = QDateTime::fromMSecsSinceEpoch(time.ServerTime());
                    entry.record = record;
                    board.TakeLine(entry);
                }};
    CTraceLog traceLog;
    CBusRecorder busRecorder{bus, traceLog, [](unsigned int) { return 0; }};
    CChannelRecorder channelRecorder{channel, traceLog};
    CZRPremiumManager& premium = *CZRPremiumManager::Singleton();
    CZRVipManager vip;
};

}  // namespace

TEST_F(TrackerOfModuleTest, ALoginIsTold) {
    LogIn();
    EXPECT_THAT(board.InFlight(), SizeIs(2));
    AnswerPremium(good);
    AnswerVip("");

    EXPECT_EQ(Last(EnSubject::Premium), "login good");
    EXPECT_EQ(Last(EnSubject::Vip), "login good");
    EXPECT_THAT(board.InFlight(), IsEmpty());
}

TEST_F(TrackerOfModuleTest, TheHourlyRefreshComesWhenTheBoardSaysSo) {
    const qint64 start = time.ServerTime();
    ASSERT_EQ(board.NextHourly(start), start + 3'600'000);

    time.Advance(std::chrono::milliseconds(3'599'999));
    EXPECT_THAT(board.InFlight(), IsEmpty());
    time.Advance(std::chrono::milliseconds(1));
    AnswerPremium(good);

    EXPECT_EQ(Last(EnSubject::Premium), "hourly good");
    EXPECT_EQ(board.NextHourly(time.ServerTime()), start + 7'200'000);
}

TEST_F(TrackerOfModuleTest, ALanguageAndACallerAreTold) {
    bus.HostSend(20100);
    AnswerPremium(good);
    EXPECT_EQ(Last(EnSubject::Premium), "language good");

    premium.GetUiMsgAndPremiumAccessReq(QVector<int>{1}, true);
    AnswerPremium(good);
    EXPECT_EQ(Last(EnSubject::Premium), "a caller good");
    premium.GetUiMsgAndPremiumAccessReq(false);
    AnswerPremium(good);
    EXPECT_EQ(Last(EnSubject::Premium), "a caller good");
}

TEST_F(TrackerOfModuleTest, APushIsToldWhileItWaitsAndWhenItHasCome) {
    web_premium_access::PremiumChangePush push;
    push.set_delay_seconds(5);
    push.add_access_list(1);
    push.add_access_list(2);
    channel.Push(20837, push);
    random.WillReturn({0x80000000u});
    vip_base_service::UserVipStateChangePush vipPush;
    vipPush.set_refresh_window_seconds(4);
    channel.Push(20832, vipPush);
    ASSERT_THAT(board.WaitingPushes(), SizeIs(2));
    EXPECT_EQ(board.WaitingPushes()[0].dueMs, time.ServerTime() + 2'000);
    EXPECT_EQ(board.WaitingPushes()[1].dueMs, time.ServerTime() + 5'000);

    time.Advance(std::chrono::seconds(2));
    AnswerVip("");
    EXPECT_THAT(board.WaitingPushes(), SizeIs(1));
    time.Advance(std::chrono::seconds(3));
    AnswerPremium(good);

    EXPECT_THAT(board.WaitingPushes(), IsEmpty());
    EXPECT_EQ(Last(EnSubject::Premium), "push good");
    EXPECT_EQ(Last(EnSubject::Vip), "push good");
}

TEST_F(TrackerOfModuleTest, EachBadAnswerIsToldWithItsReason) {
    const auto ask = [this] { return premium.GetUiMsgAndPremiumAccessReq(true); };
    channel.Fail(ask(), CSProtoError(7));
    EXPECT_EQ(Last(EnSubject::Premium), "a caller channel error 7");
    channel.Reply(ask(), 20637, std::string("\xFF"));
    EXPECT_EQ(Last(EnSubject::Premium), "a caller bad bytes");
    channel.Reply(ask(), 20637, std::string());
    EXPECT_EQ(Last(EnSubject::Premium), "a caller no code");
    channel.Reply(ask(), 20637, std::string("\x08\x05"));
    EXPECT_EQ(Last(EnSubject::Premium), "a caller code 5");
    channel.Reply(ask(), 20831, good);
    EXPECT_EQ(Last(EnSubject::Premium), "a caller good");

    vip.OnLogin();
    channel.Fail(channel.LastSession(), CSProtoError(8));
    EXPECT_EQ(Last(EnSubject::Vip), "a caller channel error 8");
    vip.OnLogin();
    channel.Reply(channel.LastSession(), 1, std::string());
    EXPECT_EQ(Last(EnSubject::Vip), "a caller wrong command 1");
    vip.OnLogin();
    channel.Reply(channel.LastSession(), 20831, std::string("\xFF"));
    EXPECT_EQ(Last(EnSubject::Vip), "a caller bad bytes");
    vip.OnLogout();
    EXPECT_EQ(Last(EnSubject::Vip), "a caller bad bytes");
}

TEST_F(TrackerOfModuleTest, RequestsThatOverlapAreToldApart) {
    const unsigned long first = premium.GetUiMsgAndPremiumAccessReq(false);
    const unsigned long second = premium.GetUiMsgAndPremiumAccessReq(false);
    channel.Reply(second, 20637, std::string());
    channel.Reply(first, 20637, std::string("\x08\x05"));

    EXPECT_EQ(refresh_text::Outcome(*board.Find(first)), QStringLiteral("code 5"));
    EXPECT_EQ(refresh_text::Outcome(*board.Find(second)), QStringLiteral("no code"));
}
