// The explanations of rights, VIP status and AI chat, compared with the real module.
#include "AIChat/Controller/ZRAIChatManager.h"
#include "AIChatEntries.h"
#include "DiagnosisModule.h"
#include "Premium/ZRPremiumManager.h"
#include "PremiumRights.h"
#include "Vip/Controller/ZRVipManager.h"
#include "Vip/View/ZRVipBannerWidget.h"
#include "Vip/View/ZRVipIconWidget.h"
#include "Vip/View/ZRVipMaskWidget.h"
#include "Vip/View/ZRVipTagWidget.h"
#include "premium_svr.pb.h"
#include "vip_base_service.pb.h"

using namespace ::testing;

namespace {

class RefreshTest : public DiagnosisModuleTest {
protected:
    RefreshTest() {
        premium.Init();
        vip.Init();
        LogIn(77);
    }

    void AskAtLogin() {
        premium.OnLogin();
        premiumSession = channel.LastSession();
        vip.OnLogin();
        vipSession = channel.LastSession();
    }

    unsigned long AskAll() { return premium.GetUiMsgAndPremiumAccessReq(true); }

    std::string Last() const {
        return explanation::OutcomeOf(tracker.State().rights.requests.value(tracker.State().rights.answered))
            .toStdString();
    }
    std::string LastVip() const {
        return explanation::OutcomeOf(tracker.State().vip.requests.value(tracker.State().vip.answered)).toStdString();
    }
    Explanation Refresh() const { return explanation::OfRefresh(tracker, time.ServerTime()); }

    const std::string good = std::string("\x08\x00", 2);
    CZRPremiumManager& premium = *CZRPremiumManager::Singleton();
    CZRVipManager vip;
    unsigned long premiumSession = 0;
    unsigned long vipSession = 0;
};

}  // namespace

TEST_F(RefreshTest, NewestFortyRequestsAreKept) {
    AskAtLogin();
    for (int i = 0; i < 40; ++i) {
        AskAll();
    }
    EXPECT_THAT(tracker.State().rights.requests.keys(),
                AllOf(SizeIs(40), Contains(channel.LastSession()), Not(Contains(premiumSession))));
    channel.Forget();
}

TEST_F(RefreshTest, LoginIsTheReasonOfBothRefreshes) {
    AskAtLogin();
    EXPECT_EQ(Refresh().sentence, QStringLiteral("The request of 00:03:20 has no answer yet. Wait for it."));
    channel.Reply(premiumSession, 20637, good);
    channel.Reply(vipSession, 20831, std::string());

    EXPECT_EQ(Last(), "login · good");
    EXPECT_EQ(LastVip(), "login · good");
    EXPECT_EQ(StoppedOf(Refresh()), "");
    EXPECT_EQ(DetailOf(Refresh().details, "Without an answer"), "missing");
}

TEST_F(RefreshTest, HourlyRefreshComesWhenItIsAnnounced) {
    EXPECT_EQ(DetailOf(Refresh().details, "Next hourly"), "01:03:20, in 1 h");

    time.Advance(std::chrono::hours(1));
    channel.Reply(channel.LastSession(), 20637, good);

    EXPECT_EQ(Last(), "hourly · good");
    EXPECT_EQ(DetailOf(Refresh().details, "Next hourly"), "02:03:20, in 1 h");
}

TEST_F(RefreshTest, LanguageAndCallerAreReasons) {
    bus.HostSend(20100);
    channel.Reply(channel.LastSession(), 20637, good);
    EXPECT_EQ(Last(), "language · good");

    channel.Reply(premium.GetUiMsgAndPremiumAccessReq(QVector<int>{1}, true), 20637, good);
    EXPECT_EQ(Last(), "a caller · good");
}

TEST_F(RefreshTest, PushIsNamedWhileItWaitsAndWhenItCame) {
    web_premium_access::PremiumChangePush push;
    push.set_delay_seconds(5);
    push.add_access_list(1);
    push.add_access_list(2);
    channel.Push(20837, push);
    random.WillReturn({0x80000000u});
    vip_base_service::UserVipStateChangePush vipPush;
    vipPush.set_refresh_window_seconds(4);
    channel.Push(20832, vipPush);
    EXPECT_EQ(DetailOf(Refresh().details, "Push, due"), "00:03:25 · rights: 2");

    time.Advance(std::chrono::seconds(2));
    channel.Reply(channel.LastSession(), 20831, std::string());
    time.Advance(std::chrono::seconds(3));
    channel.Reply(channel.LastSession(), 20637, good);

    EXPECT_EQ(Last(), "push · good");
    EXPECT_EQ(LastVip(), "push · good");
    EXPECT_EQ(DetailOf(Refresh().details, "Push, due"), "missing");
}

TEST_F(RefreshTest, EachBadAnswerStopsItsStep) {
    const auto expect = [this](const char* outcome, const char* step, const char* sentence) {
        EXPECT_EQ(Last(), std::string("a caller · ") + outcome);
        EXPECT_EQ(StoppedOf(Refresh()), step);
        EXPECT_EQ(DetailOf(Refresh().details, "Found"), outcome);
        EXPECT_EQ(Refresh().sentence.toStdString(),
                  std::string(sentence) + " The values from before remain. Ask again, or log in again.");
    };
    channel.Fail(AskAll(), CSProtoError(7));
    expect("channel error 7", "answered", "The channel failed with error 7.");
    channel.Reply(AskAll(), 20637, std::string("\xFF"));
    expect("bad bytes", "taken", "The answer is not readable.");
    channel.Reply(AskAll(), 20637, std::string());
    expect("no code", "taken", "The answer has no code.");
    channel.Reply(AskAll(), 20637, std::string("\x08\x05"));
    expect("code 5", "taken", "The server refused the request with code 5.");
    channel.Reply(AskAll(), 20831, good);
    EXPECT_EQ(Last(), "a caller · good");
}

TEST_F(RefreshTest, EachBadAnswerAboutTheVipStatusStopsItsStep) {
    CPremiumRights rights;
    const auto expect = [&](const char* outcome, const char* step) {
        EXPECT_EQ(LastVip(), std::string("a caller · ") + outcome);
        EXPECT_EQ(StoppedOf(explanation::OfVip(tracker, rights, time.ServerTime())), step);
    };
    vip.OnLogin();
    channel.Fail(channel.LastSession(), CSProtoError(8));
    expect("channel error 8", "answered");
    vip.OnLogin();
    channel.Reply(channel.LastSession(), 1, std::string());
    expect("wrong command 1", "answered");
    vip.OnLogin();
    channel.Reply(channel.LastSession(), 20831, std::string("\xFF"));
    expect("bad bytes", "taken");
    vip.OnLogin();
    channel.Reply(channel.LastSession(), 20831, std::string());
    expect("good", "member");
}

TEST_F(RefreshTest, OverlappingRequestsAreToldApart) {
    const unsigned long first = premium.GetUiMsgAndPremiumAccessReq(false);
    const unsigned long second = premium.GetUiMsgAndPremiumAccessReq(false);
    channel.Reply(second, 20637, std::string());
    channel.Reply(first, 20637, std::string("\x08\x05"));

    EXPECT_EQ(explanation::OutcomeOf(tracker.State().rights.requests.value(first)),
              QStringLiteral("a caller · code 5"));
    EXPECT_EQ(explanation::OutcomeOf(tracker.State().rights.requests.value(second)),
              QStringLiteral("a caller · no code"));
}

TEST_F(RefreshTest, LogoutIsNamed) {
    AskAtLogin();
    TakeLine("Host.Login", QStringLiteral("User 77 logged out"));

    EXPECT_EQ(Refresh().sentence, QStringLiteral("Nobody is logged in. This is asked for at login."));
}

// The rules that the workbench evaluates refuse exactly what the module refuses, by the same check.
TEST_F(RefreshTest, WidgetRulesAgreeWithTheModule) {
    const std::map<std::string, std::string> rules{{"New Vip System", "newer system"},
                                                   {"Activation Source Not Vip", "activation source"},
                                                   {"Unknown Activation Type", "activation type"},
                                                   {"Activation Type Not Full", "activation type"},
                                                   {"UI Type Mismatch", "UI type"},
                                                   {"Activation Type Mismatch", "activation type"},
                                                   {"Empty Premium Data", "texts"}};
    int widgets = 0;
    const auto right = EnPremiumAccess(5);
    for (const char* uiType : {"A", "D"}) {
        for (int source = 0; source <= 3; ++source) {
            for (int type = 0; type <= 6; ++type) {
                for (const bool hasTexts : {false, true}) {
                    CPremiumUIAccessData record;
                    record.nActivationSource = source;
                    record.nActivationType = type;
                    record.strUIType = QString::fromUtf8(uiType);
                    record.strDetailTitle = record.strDetailBtn = hasTexts ? QStringLiteral("text") : QString();
                    record.strMainBtn = QStringLiteral("button");
                    premium.SetUIAccessData(right, record);
                    const QRegularExpression widget(
                        QStringLiteral("^. ([^(]*)( \\((\\w+).*\\))?: (hidden: (.*)|may be shown)$"));
                    for (const QString& text : explanation::WidgetsOf(record, false)) {
                        const auto match = widget.match(text);
                        if (!match.hasMatch()) {
                            continue;  // a rule
                        }
                        const QString set = match.captured(3);
                        const auto texts = set == QLatin1String("main")     ? ZRVipUIDataMain
                                           : set == QLatin1String("detail") ? ZRVipUIDataDetail
                                                                            : ZRVipUIDataDetailSub;
                        log.Forget();
                        const std::string kind = match.captured(1).toStdString();
                        const bool isShown = kind == "Icon"     ? CZRVipIconWidget::IsVipIconEnabled(right)
                                             : kind == "Tag"    ? CZRVipTagWidget::IsVipTagEnabled(right)
                                             : kind == "Banner" ? CZRVipBannerWidget::IsVipBannerEnabled(right, texts)
                                             : kind == "Locked Mask"
                                                 ? CZRVipLockedMaskWidget::IsVipMaskEnabled(right, texts)
                                                 : CZRVipExclusiveMaskWidget::IsVipMaskEnabled(right, texts);
                        ASSERT_EQ(isShown, match.captured(5).isEmpty()) << text.toStdString();
                        ++widgets;
                        int refusals = 0;
                        for (const LogLine& written : log.Lines()) {
                            const auto line = log_table::Read(QString::fromStdString(written.text));
                            if (line && line->row->kind == log_table::EnKind::Widget) {
                                ++refusals;
                                EXPECT_EQ(line->values[0].toStdString(), kind);
                                EXPECT_EQ(rules.at(line->values[1].toStdString()), match.captured(5).toStdString());
                            }
                        }
                        EXPECT_EQ(refusals, isShown ? 0 : 1);
                    }
                }
            }
        }
    }
    EXPECT_EQ(widgets, 2 * 4 * 7 * 2 * 11);
}

TEST_F(RefreshTest, EachSceneIsExplained) {
    CZRAIChatManager& chat = *CZRAIChatManager::Singleton();
    CAIChatEntries entries;
    const auto finish = [this] {
        time.Settle();
        web.View().Succeed();
        time.Settle();
        web.Forget();
    };
    chat.OnLogin();
    finish();
    const unsigned long session = tracker.State().chat.requests.lastKey();
    channel.Fail(session, CSProtoError(-7));
    EXPECT_EQ(tracker.State().chat.requests.value(session).red->line.values.front(), QStringLiteral("-7"));

    ASSERT_EQ(tracker.State().opens.size(), 1u);
    EXPECT_TRUE(tracker.State().opens[0].isPreload);
    EXPECT_EQ(tracker.State().opens[0].httpCode, std::make_optional(200));
    chat.OpenAIChatPage(ZRAIChatPageNews, {}, false, true, false, QString());
    finish();
    chat.OpenAIChatPage(ZRAIChatPageNews, {}, false, true, false, QString());
    time.Settle();

    ASSERT_EQ(tracker.State().opens.size(), 3u);
    EXPECT_EQ(explanation::OfOpen(tracker.State().opens[1]).sentence.toStdString(),
              "The page was loaded anew: the last load was the preload, the scene changed from 1 to 4.");
    EXPECT_EQ(explanation::OfOpen(tracker.State().opens[1]).steps.last(), QStringLiteral("✓ arrived"));
    EXPECT_EQ(explanation::OfOpen(tracker.State().opens[2]).state, QStringLiteral("no new load"));
    chat.OnLogout();
    time.Settle();
}
