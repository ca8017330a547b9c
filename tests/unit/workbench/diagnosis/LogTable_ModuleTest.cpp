// The table of log lines, compared with lines that the module itself writes.
#include "AIChat/Controller/ZRAIChatManager.h"
#include "Ad/Controller/ZRAdController.h"
#include "Ad/Controller/ZRAdManager.h"
#include "AdScreen.h"
#include "LinesRead.h"
#include "Premium/Model/ZRPremiumDataHandler.h"
#include "Premium/ZRPremiumManager.h"
#include "TabPages.h"
#include "Vip/Controller/ZRActiveVipPopupController.h"
#include "Vip/Controller/ZRVipManager.h"
#include "Vip/Model/ZRVipDataHandler.h"
#include "Vip/View/ZRVipBannerWidget.h"
#include "Vip/View/ZRVipIconWidget.h"
#include "Vip/View/ZRVipMaskWidget.h"
#include "Vip/View/ZRVipTagWidget.h"
#include "ad_push_20145.pb.h"
#include "ad_push_20170.pb.h"
#include "ad_push_20171.pb.h"
#include "premium_svr.pb.h"
#include "vip_base_service.pb.h"

using namespace ::testing;
using log_table::EnKind;

namespace {

/// The module's own handler, with access to its internals.
class CVipHandler : public CZRVipDataHandler {
public:
    using CZRVipDataHandler::CZRVipDataHandler;
    using CZRVipDataHandler::OnVipStatusChangedPushCallback;
};

class LogTableTest : public AdScreenTest {
protected:
    void Read() {
        for (const log_table::Row* row : RowsRead(log)) {
            seen.insert(row);
        }
    }

    /// Checks that each row of these kinds was read.
    void ExpectAll(const std::set<EnKind>& kinds) {
        Read();
        int rows = 0;
        for (const log_table::Row& row : log_table::All()) {
            if (kinds.count(row.kind) != 0) {
                ++rows;
                EXPECT_EQ(seen.count(&row), 1u) << row.text;
            }
        }
        EXPECT_GT(rows, 0);
    }

    template <class Push>
    static std::string PushOf(uint32_t delay) {
        Push push;
        push.set_ad_type(2);
        push.set_ad_position(42);
        push.set_delay(delay);
        return push.SerializeAsString();
    }

    void RefuseRequests() {
        time.SetServerTime(110'000);
        Ask();
        Ask();  // too early
        http.Fail(http.LastTask(), kHttpCut);
        Exchange(Card());
        for (const char* body : {"x", "[]"}) {
            WaitForLimit();
            Ask();
            Answer(body);
        }
        Json::Value refused = Card();
        refused["code"] = -4;
        refused["message"] = "closed, adType = 1";
        Exchange(refused);
        WaitForLimit();
        Ask();
        const unsigned long first = http.LastTask();
        WaitForLimit();
        Ask();
        http.Answer(first, "");
        WaitForLimit();
        http.RefuseStarts(Failing::Always());
        Ask();
        http.RefuseStarts(Failing::Never());
    }

    void RefuseLists() {
        Exchange(Card({Popup("e", 999, 999, 999), Popup("o", 1, 2, 999), Popup("x, adType = 7", 1, 999, 3)}));
        Exchange(With(Strip(), "ad_position", 42));
        Exchange(With(Card(), "ad_position", 43));
        Exchange(Card(std::vector<Json::Value>()));
        EXPECT_FALSE(slot.CheckAdIsValid(nullptr));
        const std::unique_ptr<CZRAdModelList> list(ListOf(Card()));
        EXPECT_TRUE(slot.CheckAdIsValid(list.get()));
        qobject_cast<CZRAdPopupModel*>(list->GetAdList()->first())->GetShowAreas()->clear();
        EXPECT_FALSE(slot.CheckAdIsValid(list.get()));
        const qint64 now = time.ServerTime();
        time.SetServerTime(0);  // due, because its times are all 0
        list->GetAdList()->first() = new CZRAdPopupModel(list.get());
        EXPECT_FALSE(slot.CheckAdIsValid(list.get()));
        list->GetAdList()->first() = new CZRAdModel(list.get());
        EXPECT_FALSE(slot.CheckAdIsValid(list.get()));
        time.SetServerTime(now);
    }

    void RefuseDisplay() {
        const std::unique_ptr<CZRAdModelList> list(ListOf(Card(60)));
        EXPECT_FALSE(slot.CheckCanShowAd(nullptr));
        mainFrame.SetTabKey(20005);
        EXPECT_FALSE(slot.CheckCanShowAd(list.get()));
        mainFrame.SetTabKey(20001);
        store.SetInt64(kLastShow, 10'000);
        EXPECT_FALSE(slot.CheckCanShowAd(list.get()));
        store.SetInt64(kLastShow, 0);
        slots.Allow(kSlotAdPopup, false);
        EXPECT_FALSE(slot.CheckCanShowAd(list.get()));
        slots.Allow(kSlotAdPopup, true);
        mainFrame.SetFocusIn(false);
        EXPECT_FALSE(slot.CheckCanShowAd(list.get()));
        mainFrame.SetFocusIn(true);
        slot.TryShowAdPopup();
        slot.ShowAd(nullptr);
        const std::unique_ptr<CZRAdModelList> other(ListOf(With(Card(), "ad_position", 43)));
        slot.ShowAd(other.get());
        const std::unique_ptr<CZRAdModelList> empty(ListOf(Card(std::vector<Json::Value>())));
        slot.ShowAd(empty.get());
    }

    void RefuseCards() {
        const std::unique_ptr<CZRAdModelList> list(ListOf(Card()));
        auto* good = qobject_cast<CZRAdPopupModel*>(list->GetAdList()->first());
        CZRAdPopupModel bare(nullptr);
        const auto add = [&](CZRAdPopupModel* model) {
            slot.AddAdPopupView(model, true, 15, QStringLiteral("a b"), QStringLiteral("p"));
        };
        add(nullptr);
        add(&bare);
        mainFrame.TakeAway();
        add(good);
        mainFrame.Offer(nullptr);
        add(good);
        mainFrame.Offer(&window);
        Exchange(Card());
        for (int tries = 0; tries < 3; ++tries) {
            pictures.Fail(pictures.LastLoad());
        }
        slot.OnImageLoadSucceeded(QString(), 0, 1, QString(), QString());
        Exchange(Card());
        LetPictureIn();
        slot.DeleteAdPopupView();
        slot.OnImageLoadSucceeded(QString(), 0, 1, QStringLiteral("18088"), QString());
    }

    void ReportExposures() {
        CSlotController other(ZRAdTypePopup, 42);
        const auto close = [&other](ZRAdCloseType type) {
            other.CloseAd(type, QStringLiteral("18088"), QStringLiteral("p"));
        };
        close(ZRAdCloseTypeTimeout);
        AnswerJson(Parsed("{}"));
        close(ZRAdCloseTypeLogout);
        http.Fail(http.LastTask(), kHttpTooLarge);
        close(ZRAdCloseTypePushOffline);
        http.Answer(http.LastTask(), "5", 500);
        close(ZRAdCloseTypeLogin);
        AnswerJson(Parsed(R"({"code": 3})"));
        http.RefuseStarts(Failing::Always());
        close(ZRAdCloseTypeTabSwitched);
        http.RefuseStarts(Failing::Never());
        for (const ZRAdCloseType type :
             {ZRAdCloseTypeAdClicked, ZRAdCloseTypeCloseButton, ZRAdCloseTypeLanguageChanged}) {
            close(type);
        }
    }

    void RefuseBanners() {
        CZRAdBannerController banner(nullptr, 7);
        std::unique_ptr<QWidget> view;
        Json::Value noLayout = Strip();
        noLayout["data"].removeMember("banner_position");
        Json::Value noAds = Strip();
        noAds["data"]["ad"].clear();
        banner.ShowAd(nullptr);
        for (const Json::Value& answer : {noLayout, noAds, Strip(0)}) {
            const std::unique_ptr<CZRAdModelList> list(ListOf(answer));
            banner.ShowAd(list.get());
        }
        banner.GetAdBannerAsync(QSize(600, 100), nullptr, 0, false, {});
        AnswerJson(Strip());
        WaitForLimit();
        banner.GetAdBannerAsync(QSize(600, 100), [&view](QWidget* made) { view.reset(made); }, 0, false, {});
        AnswerJson(Strip());
    }

    void PushAds() {
        environment.SetRelease(false);
        CZRAdManager manager;
        manager.Init();
        manager.OnLogout();
        bus.HostSend(20100);
        channel.Push(20145, PushOf<ad_manage_oss::AdPush>(7));
        channel.Push(20171, PushOf<ads_service::AdPush>(8));
        channel.Push(20170, PushOf<ad_manage_oss::AdCheckPush>(9));
        for (const uint32_t push : {20145u, 20171u, 20170u}) {
            channel.Push(push, std::string("\xFF"));
        }
        time.Settle();
    }

    static CPremiumUIAccessData Record(int source, int type, const char* uiType, bool hasTexts) {
        CPremiumUIAccessData record;
        record.nActivationSource = source;
        record.nActivationType = type;
        record.strUIType = QString::fromUtf8(uiType);
        record.strMainTitle = record.strMainBtn = hasTexts ? QStringLiteral("text") : QString();
        return record;
    }

    std::set<const log_table::Row*> seen;
};

}  // namespace

TEST_F(LogTableTest, EachLineAboutAdsIsRead) {
    RefuseRequests();
    RefuseLists();
    RefuseDisplay();
    RefuseCards();
    ReportExposures();
    RefuseBanners();
    PushAds();

    ExpectAll({EnKind::Ad});
}

TEST_F(LogTableTest, EachLineAboutTheRefreshesIsRead) {
    CZRPremiumManager& premium = *CZRPremiumManager::Singleton();
    CZRVipManager vip;
    premium.Init();
    vip.Init();
    premium.OnLogin();
    bus.HostSend(20100);
    time.Advance(std::chrono::hours(1));
    const auto ask = [&] { return premium.GetUiMsgAndPremiumAccessReq(QVector<int>{1, 5}, true); };
    channel.Fail(ask(), CSProtoError(-7));
    for (const std::string& bytes :
         {std::string("\xFF"), std::string(), std::string("\x08\x05"), std::string("\x08\x00", 2)}) {
        channel.Reply(ask(), 20637, bytes);
    }
    CZRPremiumDataHandler(nullptr).ParsePremiumRsp(77, kCSProtoOk, CSProtoData(), nullptr);
    channel.Push(20837, std::string("\x08\x05\x10\x00\x18\x01\x18\x02", 8));
    channel.Push(20837, std::string());
    channel.Push(20837, std::string("\xFF"));
    channel.Push(20837, std::string("\x10\x01"));
    for (const std::string& bytes : {std::string("\xFF"), std::string("\x1a\x02\x0a\x00", 4), std::string()}) {
        vip.OnLogin();
        channel.Reply(channel.LastSession(), 20831, bytes);
    }
    vip.OnLogin();
    channel.Fail(channel.LastSession(), CSProtoError(-7));
    vip.OnLogin();
    channel.Reply(channel.LastSession(), 1, std::string());
    channel.Push(20832, std::string());
    channel.Push(20832, std::string("\xFF"));
    CVipHandler(nullptr).OnVipStatusChangedPushCallback(0, kCSProtoOk, CSProtoData(), nullptr);
    time.Settle();

    ExpectAll({EnKind::Rights, EnKind::Vip});
}

TEST_F(LogTableTest, EachLineAboutTheChatIsRead) {
    CZRAIChatManager& chat = *CZRAIChatManager::Singleton();
    const auto finish = [this] {
        time.Settle();
        web.View().Succeed();
        time.Settle();
        web.Forget();
    };
    chat.OnLogin();
    finish();
    channel.Fail(channel.LastSession(), CSProtoError(-7));
    for (const std::string& bytes : {std::string("\x08"), std::string("\x1a\x06\x0a\x04\x08\x01\x10\x01")}) {
        chat.OnLogin();
        finish();
        channel.Reply(channel.LastSession(), 20982, bytes);
    }
    chat.IsAIChatEnable(ZRAIChatEntryWatchlist);
    chat.OpenAIChatPage(ZRAIChatPageNews, {}, false, true, false, QString());
    finish();
    chat.OnLogout();
    time.Settle();

    ExpectAll({EnKind::Chat, EnKind::ChatOpen});
}

TEST_F(LogTableTest, EachLineAboutWidgetsAndTheActivationIsRead) {
    CZRPremiumManager& premium = *CZRPremiumManager::Singleton();
    CZRVipManager& vip = *CZRVipManager::Singleton();
    premium.Init();
    const auto right = EnPremiumAccess(5);
    const auto ask = [&](const CPremiumUIAccessData& record) {
        premium.SetUIAccessData(right, record);
        CZRVipIconWidget::IsVipIconEnabled(right);
        CZRVipTagWidget::IsVipTagEnabled(right);
        CZRVipBannerWidget::IsVipBannerEnabled(right, ZRVipUIDataMain);
        CZRVipLockedMaskWidget::IsVipMaskEnabled(right, ZRVipUIDataMain);
        CZRVipExclusiveMaskWidget::IsVipMaskEnabled(right, ZRVipUIDataMain);
    };
    ask(Record(1, 0, "A", false));
    ask(Record(2, 0, "D", false));
    ask(Record(2, 5, "D", false));
    environment.SetVelora(true);
    vip.OnLogin();
    vip_base_service::GetAppEntryMessageRsp newer;
    newer.mutable_data()->mutable_vip_basic_data()->set_vip_version(vip_base_service::VIP_VERSION_NEW);
    channel.Reply(channel.LastSession(), 20831, newer);
    ask(Record(2, 5, "D", false));

    CPremiumUIAccessData ready = Record(2, 6, "D", true);
    ready.strOtherInfo = QStringLiteral(R"({"active_premium_popup_info": {"target_url": "https://www.test/"}})");
    premium.SetUIAccessData(right, ready);
    const auto activate = [&] {
        vip.HandleVipWidgetClicked(right, ZRVipUIDataMain, &window);
        return channel.LastSession();
    };
    channel.Fail(activate(), CSProtoError(-7));
    time.Settle();
    for (const std::string& bytes : {std::string("\xFF"), std::string("\x08\x05"), std::string("\x08\x00", 2)}) {
        channel.Reply(activate(), 20981, bytes);
        time.Settle();
    }
    Json::Value images;
    images["image_info"]["US"]["en"] = "https://pictures.test/active.png";
    config.Set("premium_active_popup_image", images);
    account.Set(77, 1, {2});
    channel.Reply(activate(), 20981, std::string("\x08\x00", 2));
    time.Settle();
    vip.HandleVipWidgetClicked(right, ZRVipUIDataMain, nullptr);
    channel.Reply(channel.LastSession(), 20981, std::string("\x08\x00", 2));
    premium.SetUIAccessData(right, Record(2, 5, "D", true));
    vip.HandleVipWidgetClicked(right, ZRVipUIDataMain, &window);
    CPremiumUIAccessData linked = Record(2, 5, "D", true);
    linked.nMainBtnUrlID = 1;
    premium.SetUIAccessData(right, linked);
    vip.HandleVipWidgetClicked(right, ZRVipUIDataMain, &window);
    CZRActiveVipPopupController popup(nullptr);
    popup.OnImageLoadSucceeded(QString(), 0, 1);
    popup.OnImageLoadFailed(QString(), QString(), 0, 1);
    popup.OnImageClicked(true);
    popup.OnClosed();
    time.Settle();

    ExpectAll({EnKind::Widget});
}

TEST_F(LogTableTest, NoTwoRowsAreTakenForEachOther) {
    for (const log_table::Row& row : log_table::All()) {
        QString text = log_table::PatternOf(row.text);
        for (const char* mark : {"{n}", "{t}", "{p}", "{s}", "{w}", "{}"}) {
            text.replace(QString::fromLatin1(mark), QStringLiteral("1"));
        }
        const auto line = log_table::Read(text);
        ASSERT_TRUE(line) << row.text;
        EXPECT_EQ(line->row, &row) << row.text;
        EXPECT_FALSE(log_table::Read(QStringLiteral("more ") + text)) << row.text;
    }
}

TEST_F(LogTableTest, TheLastValuesAreTheModulesWhateverTheServersTextContains) {
    const auto line = log_table::Read(
        QStringLiteral("[Ad] Request ad failed, path = /ad/search, code = 3, message= no, adType = 9, adPosition = 9, "
                       "requestId = x, adType = 2, adPosition = 42, requestId = y"));

    ASSERT_TRUE(line);
    EXPECT_EQ(line->Number(line->row->at), 2);
    EXPECT_EQ(line->values[5], QStringLiteral("y"));
}

TEST_F(LogTableTest, LinesOfSeverityEightOnGoodPathsAreMarked) {
    EXPECT_TRUE(log_table::IsExpectedError(QStringLiteral("[Ad] adModelList is null, m_adType = 2, adPosition = 42")));
    EXPECT_TRUE(log_table::IsExpectedError(
        QStringLiteral("[Ad] Expose ad start, path = /ad/expose, adType = 3, adPosition = 7, adId = 1, exposeId = 2, "
                       "exposeDuration = 5000, pushId = ")));
    EXPECT_FALSE(log_table::IsExpectedError(
        QStringLiteral("[Ad] Request ad failed, path = /ad/search, result = 3, adType = 2, adPosition = 42, "
                       "requestId = x")));
    EXPECT_FALSE(log_table::IsExpectedError(QStringLiteral("anything else")));
}

TEST_F(LogTableTest, AreasAreNamedByTheTabsThatTheModuleGivesThem) {
    for (const TabPage& tab : kTabPages) {
        const int area = CZRAdController::ConvertTabFrameKeyToShowAreaType(tab.tab);
        EXPECT_EQ(log_table::Area(area),
                  QStringLiteral("%1 (area %2)").arg(QString::fromUtf8(tab.page.title)).arg(area));
    }
    for (const int area : {0, 499, 508}) {
        EXPECT_EQ(log_table::Area(area), QStringLiteral("no tab (area %1)").arg(area));
    }
}
