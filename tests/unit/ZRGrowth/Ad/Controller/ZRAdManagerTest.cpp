#include "Ad/Controller/ZRAdManager.h"

#include <thread>

#include "Ad/AdManagerTest.h"
#include "Ad/Controller/ZRAdBannerController.h"
#include "Ad/MethodsOf.h"
#include "Ad/View/ZRAdBottomPopupDeveloperView.h"
#include "modules/IZRGrowthModuleInterface.h"
#include "plugin/IZRPluginCenter.h"

using namespace ::testing;
using namespace std::chrono_literals;

namespace {

TEST_F(AdManagerTest, HasItsSlotsInTheFixedOrder) {
    EXPECT_THAT(
        MethodsOf(CZRAdManager::staticMetaObject),
        ElementsAre(
            "slot OnLoginChannelConnect(uint32_t uMsg, qulonglong wParam, std::shared_ptr<core::CMessageBody> pMsg)",
            "slot OnLanguageChanged(uint32_t uMsg, qulonglong wParam, std::shared_ptr<core::CMessageBody> pMsg)",
            "slot OnTabFrameChanged(uint32_t uMsg, qulonglong wParam, std::shared_ptr<core::CMessageBody> pMsg)",
            "slot OnAdStatusChangedPushCallback(qulonglong nReqKey, CSProtoError enError, CSProtoData stRspData, "
            "const CSResponseExt* pRspExt)",
            "slot OnAdPushCallback(qulonglong nReqKey, CSProtoError enError, CSProtoData stRspData, "
            "const CSResponseExt* pRspExt)",
            "slot OnAdCheckPushCallback(qulonglong nReqKey, CSProtoError enError, CSProtoData stRspData, "
            "const CSResponseExt* pRspExt)"));
}

TEST_F(AdManagerTest, IsOneForTheProcessAndLivesAsLongAsIt) {
    EXPECT_EQ(CZRAdManager::Singleton(), CZRAdManager::Singleton());
    EXPECT_EQ(CZRAdManager::Singleton()->parent(), nullptr);
    EXPECT_THAT(channel.BoundCommands(), IsEmpty());
    EXPECT_THAT(CZRAdManager::Singleton()->children(), IsEmpty());
}

TEST_F(AdManagerTest, StartMakesThePopupsSlotAndBindsMessagesAndPushes) {
    const int before = bus.SubscriptionCount();

    Start();

    ASSERT_TRUE(Popup());
    EXPECT_EQ(Popup()->parent(), manager.get());
    EXPECT_EQ(Popup()->GetAdPosition(), 42);
    EXPECT_EQ(bus.SubscriptionCount(), before + 3);
    EXPECT_THAT(channel.BoundCommands(), ElementsAre(20145, 20171));
    EXPECT_THAT(log.Lines(), IsEmpty());
}

TEST_F(AdManagerTest, AnInternalBuildHearsTheCheckPushAsWell) {
    environment.SetRelease(false);

    Start();

    EXPECT_THAT(channel.BoundCommands(), ElementsAre(20145, 20171, 20170));
}

TEST_F(AdManagerTest, TheEndUnbindsAllAndLeavesTheSlots) {
    environment.SetRelease(false);
    Start();
    const QPointer<CZRAdBottomPopupController> popup = Popup();

    manager->UnInit();

    EXPECT_EQ(bus.SubscriptionCount(), 0);
    EXPECT_THAT(channel.BoundCommands(), IsEmpty());
    EXPECT_FALSE(popup.isNull());
    bus.HostSend(10650);
    channel.Push(20171, AdPush(2, 42, 0));
    time.Settle();
    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_THAT(http.Started(), IsEmpty());
}

TEST_F(AdManagerTest, BeforeItsStartItDoesNothingForPopups) {
    environment.SetRelease(false);
    manager->OnLogin();
    manager->OnLogout();
    manager->OnLoginChannelConnect(10650, 0, nullptr);
    manager->OnLanguageChanged(20100, 0, nullptr);
    manager->OnTabFrameChanged(20157, 1, nullptr);
    manager->OnTabFrameChanged(20157, 2, nullptr);
    manager->UpdateAdBottomPopupCoordinates();
    manager->OnAdPushCallback(0, kCSProtoOk, Data(20171, AdPush(2, 42, 0)), nullptr);
    manager->OnAdStatusChangedPushCallback(0, kCSProtoOk, Data(20145, StatusPush(2, 42, 0, {"1"})), nullptr);
    manager->OnAdCheckPushCallback(0, kCSProtoOk, Data(20170, CheckPush(2, 42, 0, {"1"})), nullptr);
    EXPECT_THAT(poster.Delays(), ElementsAre(0, 0, 0));
    time.Settle();

    EXPECT_THAT(http.Started(), IsEmpty());
    EXPECT_THAT(reports.Events(), IsEmpty());
}

// The host's messages

TEST_F(AdManagerTest, ALoginAloneAsksForNothing) {
    Start();

    manager->OnLogin();
    time.Advance(1h);

    EXPECT_THAT(log.Lines(), IsEmpty());
    EXPECT_THAT(http.Started(), IsEmpty());
}

TEST_F(AdManagerTest, WhenTheChannelConnectsThePopupsAreSearchedFor) {
    Start();

    bus.HostSend(10650);

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Platform channel connected"), Info(StartsWith("[Ad] "))));
    ASSERT_THAT(http.Started(), SizeIs(1));
    EXPECT_EQ(http.Started()[0].request.m_strUrl, "https://ads.test/ad/search");
    EXPECT_EQ(http.Started()[0].request.m_strBody,
              "{\n\t\"ad_position\" : 42,\n\t\"ad_type\" : 2,\n\t\"request_id\" : \"dev20011\"\n}\n");
}

TEST_F(AdManagerTest, EachReconnectSearchesAgainWithinTheLimit) {
    Start();
    bus.HostSend(10650);
    time.Advance(9s);
    bus.HostSend(10650);
    EXPECT_THAT(http.Started(), SizeIs(1));
    ASSERT_THAT(reports.Names(), ElementsAre("SingleAdvertisementPullDataResult"));
    EXPECT_THAT(reports.Events()[0].params, HasSubstr(R"("result_code":"1001")"));

    time.Advance(1s);
    bus.HostSend(10650);
    EXPECT_THAT(http.Started(), SizeIs(2));
}

TEST_F(AdManagerTest, AnotherLanguageClosesClearsAndSearchesAnew) {
    StartAndShow();
    time.Advance(10s);
    Forget();

    bus.HostSend(20100);

    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] Language changed"), Info(StartsWith("[Ad] Delete ad popup close timer. ")),
                            Info(StartsWith("[Ad] Delete AdPopupView")),
                            Info("[Ad] Closed ad by language changed. adType = 2, adPosition = 42, adId = 18088"),
                            Info(StartsWith("[Ad] Report ExposeAd end ")), Error(StartsWith("[Ad] Expose ad start, ")),
                            Info(StartsWith("[Ad] Clear ad data. ")), Info(StartsWith("[Ad] Request ad"))));
    EXPECT_THAT(Paths(), ElementsAre("/ad/expose", "/ad/search"));
    EXPECT_EQ(Popup()->GetAdModelList(), nullptr);
    reports.Forget();
}

TEST_F(AdManagerTest, AnotherLanguageClearsAListThatWaits) {
    StartAndWait();

    bus.HostSend(20100);

    EXPECT_THAT(Texts(), StartsWith("[Ad] Language changed\n[Ad] Clear ad data. adType = 2, adPosition = 42, adId = \n"
                                    "[Ad] Request ad limited. "));
    EXPECT_EQ(Popup()->GetAdModelList(), nullptr);
    Forget();
}

TEST_F(AdManagerTest, ALanguageWithinTheLimitLeavesTheSlotEmpty) {
    StartAndShow();
    Forget();

    bus.HostSend(20100);

    EXPECT_THAT(Paths(), ElementsAre("/ad/expose"));
    EXPECT_EQ(Popup()->GetAdModelList(), nullptr);
    log.Forget();
    ASSERT_THAT(reports.Names(), ElementsAre("ExposeAd", "SingleAdvertisementPullDataResult"));
    EXPECT_THAT(reports.Events()[1].params, HasSubstr(R"("result_code":"1001")"));
}

TEST_F(AdManagerTest, AfterALanguageWithinTheLimitTheAnswerToTheSearchBeforeIsTaken) {
    Start();
    bus.HostSend(10650);
    const unsigned long task = http.LastTask();
    bus.HostSend(20100);
    EXPECT_THAT(Paths(), ElementsAre("/ad/search"));

    http.Answer(task, Text(DataOf({"18088"})));
    time.Settle();

    EXPECT_TRUE(Popup()->GetAdModelList());
    EXPECT_TRUE(Card());
    reports.Forget();
    pictures.Forget();
}

TEST_F(AdManagerTest, AfterALanguageWithItsOwnSearchTheAnswerToTheOneBeforeIsNobodys) {
    Start();
    bus.HostSend(10650);
    const unsigned long task = http.LastTask();
    time.Advance(10s);
    bus.HostSend(20100);
    EXPECT_THAT(Paths(), ElementsAre("/ad/search", "/ad/search"));

    http.Answer(task, Text(DataOf({"18088"})));
    time.Settle();

    EXPECT_EQ(Popup()->GetAdModelList(), nullptr);
    EXPECT_THAT(log.Lines(), Contains(Error(HasSubstr("requestTaskId unmatched"))));
}

TEST_F(AdManagerTest, ALogoutClosesAndClearsAndAsksForNothing) {
    StartAndShow();
    time.Advance(10s);
    Forget();

    manager->OnLogout();

    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] Login out"), Info(StartsWith("[Ad] Delete ad popup close timer. ")),
                            Info(StartsWith("[Ad] Delete AdPopupView")),
                            Info("[Ad] Closed ad by logout. adType = 2, adPosition = 42, adId = 18088"),
                            Info(StartsWith("[Ad] Report ExposeAd end ")), Error(StartsWith("[Ad] Expose ad start, ")),
                            Info(StartsWith("[Ad] Clear ad data. "))));
    EXPECT_THAT(Paths(), ElementsAre("/ad/expose"));
    reports.Forget();
}

TEST_F(AdManagerTest, ALogoutClearsAListThatWaits) {
    StartAndWait();

    manager->OnLogout();

    EXPECT_THAT(log.Lines(),
                ElementsAre(Info("[Ad] Login out"), Info("[Ad] Clear ad data. adType = 2, adPosition = 42, adId = ")));
    EXPECT_EQ(Popup()->GetAdModelList(), nullptr);
}

TEST_F(AdManagerTest, AnAnswerThatComesAfterALogoutIsTakenAllTheSame) {
    Start();
    bus.HostSend(10650);
    const unsigned long task = http.LastTask();
    manager->OnLogout();

    http.Answer(task, Text(DataOf({"18088"})));
    time.Settle();

    EXPECT_TRUE(Popup()->GetAdModelList());
    EXPECT_TRUE(Card());
    reports.Forget();
    pictures.Forget();
}

// Tabs

TEST_F(AdManagerTest, TheFirstTabIsOnlyNoted) {
    StartAndWait();
    mainFrame.SetFocusIn(true);

    bus.HostSend(20157, 20001);

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Tab changed, first changed, oldTab = 0, newTab = 20001")));
    EXPECT_EQ(Card(), nullptr);

    bus.HostSend(20157, 20002);
    EXPECT_TRUE(Card());
    pictures.Forget();
}

TEST_F(AdManagerTest, TheFirstTabClosesNothing) {
    StartAndShow();

    bus.HostSend(20157, 20001);

    EXPECT_TRUE(Card() && Card()->isVisible());
    EXPECT_THAT(reports.Events(), IsEmpty());
}

TEST_F(AdManagerTest, TheSameTabAgainClosesNothing) {
    Start();
    bus.HostSend(20157, 20001);
    ShowByAnswer();

    bus.HostSend(20157, 20001);

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Tab unchanged, current tab = 20001")));
    EXPECT_TRUE(Card() && Card()->isVisible());
}

TEST_F(AdManagerTest, AnotherTabClosesThePopupAndFindsNoList) {
    Start();
    bus.HostSend(20157, 20001);
    ShowByAnswer();

    bus.HostSend(20157, 20002);

    EXPECT_THAT(
        log.Lines(),
        ElementsAre(Info("[Ad] Tab changed, oldTab = 20001, newTab = 20002"),
                    Info(StartsWith("[Ad] Delete ad popup close timer. ")), Info(StartsWith("[Ad] Delete AdPopupView")),
                    Info("[Ad] Closed ad by tab switched. adType = 2, adPosition = 42, adId = 18088"),
                    Info(StartsWith("[Ad] Report ExposeAd end ")), Error(StartsWith("[Ad] Expose ad start, ")),
                    Info(StartsWith("[Ad] Clear ad data. ")),
                    Info("[Ad] Try show ad popup, adType = 2, adPosition = 42"),
                    Error("[Ad] adModelList is null, m_adType = 2, adPosition = 42")));
    Forget();
}

TEST_F(AdManagerTest, AnotherTabWithoutAPopupTriesTheListThatWaits) {
    Start();
    bus.HostSend(20157, 20001);
    mainFrame.SetTabKey(20003);
    ShowByAnswer();  // which its areas forbid
    EXPECT_EQ(Card(), nullptr);
    CZRAdModelList* list = Popup()->GetAdModelList();
    ASSERT_TRUE(list);

    bus.HostSend(20157, 20003);
    EXPECT_EQ(Popup()->GetAdModelList(), list);
    EXPECT_EQ(Card(), nullptr);
    mainFrame.SetTabKey(20002);
    bus.HostSend(20157, 20002);

    EXPECT_TRUE(Card());
    pictures.Forget();
    Forget();
}

TEST_F(AdManagerTest, AnotherTabWhileThePictureComesTakesTheCardAndTriesTheListAnew) {
    Start();
    bus.HostSend(20157, 20001);
    bus.HostSend(10650);
    http.Answer(http.LastTask(), Text(DataOf({"18088"})));
    time.Settle();
    const QPointer<CZRAdBottomPopupView> loading = Card();
    ASSERT_TRUE(loading);
    Forget();

    mainFrame.SetTabKey(20002);
    bus.HostSend(20157, 20002);
    time.Settle();

    EXPECT_TRUE(loading.isNull());
    EXPECT_TRUE(Card());
    EXPECT_THAT(reports.Events(), IsEmpty());
    pictures.Forget();
}

TEST_F(AdManagerTest, ATabOfNothingMakesTheNextOneTheFirstAgain) {
    Start();
    bus.HostSend(20157, 5);
    bus.HostSend(20157, 0);
    log.Forget();

    bus.HostSend(20157, 0);
    bus.HostSend(20157, 7);
    bus.HostSend(20157, 7);

    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Tab changed, first changed, oldTab = 0, newTab = 0"),
                                         Info("[Ad] Tab changed, first changed, oldTab = 0, newTab = 7"),
                                         Info("[Ad] Tab unchanged, current tab = 7")));
}

TEST_F(AdManagerTest, ATabsKeyHas64Bits) {
    Start();
    bus.HostSend(20157, 0x1'0000'0001);
    log.Forget();

    bus.HostSend(20157, 1);

    EXPECT_THAT(log.Lines().front(), Info("[Ad] Tab changed, oldTab = 4294967297, newTab = 1"));
}

// Requests of other modules

TEST_F(AdManagerTest, AChangedLayoutMovesTheCard) {
    StartAndShow();
    mainFrame.SetNavigationCollapsed(true);

    manager->UpdateAdBottomPopupCoordinates();

    EXPECT_EQ(Card()->pos(), QPoint(84, 432));
}

TEST_F(AdManagerTest, ABannerMayBeAskedForFromAnyThread) {
    std::thread([this] { manager->GetAdBannerAsync(9, QSize(10, 10), [](QWidget*) {}, 0, false, {}); }).join();
    EXPECT_THAT(http.Started(), IsEmpty());

    time.Settle();

    EXPECT_THAT(Paths(), ElementsAre("/ad/search"));
    EXPECT_THAT(manager->findChildren<CZRAdBannerController*>(), SizeIs(1));
}

TEST_F(AdManagerTest, ABannerThatWasAskedForBeforeTheEndIsStillLookedFor) {
    Start();
    manager->GetAdBannerAsync(9, QSize(10, 10), [](QWidget*) {}, 0, false, {});

    manager->UnInit();
    time.Settle();

    EXPECT_THAT(Paths(), ElementsAre("/ad/search"));
    EXPECT_THAT(manager->findChildren<CZRAdBannerController*>(), SizeIs(1));
}

TEST_F(AdManagerTest, ABannerThatIsAskedForOnTheWayOutIsNotLookedFor) {
    manager->GetAdBannerAsync(9, QSize(10, 10), [](QWidget*) {}, 0, false, {});

    manager.reset();
    time.Settle();

    EXPECT_THAT(http.Started(), IsEmpty());
}

TEST_F(AdManagerTest, TheServiceReachesTheOneManager) {
    const auto service = IZRPluginCenter::CreateInterface<IZRGrowthModuleInterface>();
    ASSERT_TRUE(service);

    service->UpdateAdBottomPopupCoordinates();
    const std::unique_ptr<QWidget> panel(service->GetAdBottomPopupDeveloperView());
    EXPECT_TRUE(qobject_cast<CZRAdBottomPopupDeveloperView*>(panel.get()));
    service->GetAdBannerAsync(7, QSize(10, 10), [](QWidget*) {}, 0, true, {QStringLiteral("8")});
    time.Settle();

    ASSERT_THAT(CZRAdManager::Singleton()->findChildren<CZRAdBannerController*>(), SizeIs(1));
    EXPECT_THAT(Paths(), ElementsAre("/ad/check"));
}

}  // namespace
