// The workbench's explanation of a slot from its first request to the end of its ad, compared with the real module.
#include "Ad/Controller/ZRAdManager.h"
#include "AdScreen.h"
#include "ad_push_20145.pb.h"
#include "ad_push_20171.pb.h"

using namespace ::testing;

namespace {

class AdDiagnosisStatesTest : public AdScreenTest {
protected:
    /// The module's own manager and slot send a request and receive `answer`.
    void Connect(const Json::Value& answer) {
        manager.Init();
        bus.HostSend(10650);
        AnswerJson(answer);
    }

    void ChangeTab(int64_t key) {
        mainFrame.SetTabKey(key);
        bus.HostSend(20157, (unsigned long)(key));
    }

    void PushOffline(const std::string& ad, uint32_t delay = 1'000) {
        ad_manage_oss::AdPush push;
        push.set_ad_type(2);
        push.set_ad_position(42);
        push.set_delay(delay);
        push.add_offline_ad_id(ad);
        channel.Push(20145, push.SerializeAsString());
    }

    void PushNew(uint32_t delay, uint32_t position = 42) {
        ads_service::AdPush push;
        push.set_ad_type(2);
        push.set_ad_position(position);
        push.set_delay(delay);
        channel.Push(20171, push.SerializeAsString());
    }

    std::string Now() const { return Told()["Now"]; }
    /// The line without its time.
    static std::string Short(const std::string& line) { return line.substr(0, line.rfind(" · ")); }
    std::string Last() const { return Short(Told()["Last"]); }
    std::string Before() const { return Short(Told()["Before that"]); }

    CZRAdManager manager;
};

}  // namespace

TEST_F(AdDiagnosisStatesTest, ASlotThatNeverAskedSaysSo) {
    slot.TryShowAdPopup();

    EXPECT_EQ(Now(), "nothing was asked for yet");
}

TEST_F(AdDiagnosisStatesTest, TheWayToTheScreenIsFollowed) {
    Ask();
    EXPECT_EQ(Now(), "waits for the answer");
    AnswerJson(Card());
    EXPECT_EQ(Now(), "waits for its picture");
    EXPECT_EQ(Told()["Passed"], "request, list, moment, view");
    EXPECT_EQ(Told()["Not reached"], "picture, moment, with its picture in");
    time.Advance(std::chrono::seconds(2));
    LetPictureIn();
    EXPECT_EQ(Now(), "shown since 00:03:22 · 18088");
    EXPECT_EQ(Told().count("Last"), 0u);

    time.Advance(std::chrono::seconds(15));
    EXPECT_EQ(Now(), "not shown");
    EXPECT_EQ(Last(), "closed by timeout");
    EXPECT_EQ(Told()["Tried again"], "with the next request: login, change of language, push");
}

TEST_F(AdDiagnosisStatesTest, WhatRefusedBeforeIsForgottenWhenTheAdIsShown) {
    mainFrame.SetFocusIn(false);
    Exchange(Card());
    Ask();
    EXPECT_THAT(Told(), AllOf(Contains(Key("Last")), Contains(Key("Before that"))));
    mainFrame.SetFocusIn(true);
    slot.TryShowAdPopup();
    LetPictureIn();

    EXPECT_THAT(Told(), ElementsAre(Pair("Now", "shown since 00:03:30 · 18088")));
}

TEST_F(AdDiagnosisStatesTest, ARefusalOfAnotherListLeavesWhatIsOnScreen) {
    Exchange(Card());
    LetPictureIn();
    Ask();

    EXPECT_EQ(Now(), "shown since 00:03:30 · 18088");
    EXPECT_EQ(Last(), "refused (request): pause between requests");
}

TEST_F(AdDiagnosisStatesTest, AListThatWaitsIsToldBehindARequestThatWasRefused) {
    mainFrame.SetFocusIn(false);
    Exchange(Card());
    Ask();
    EXPECT_EQ(Last(), "refused (request): pause between requests");
    EXPECT_EQ(Before(), "refused (moment): focus");

    Exchange(Card(std::vector<Json::Value>()));
    EXPECT_EQ(Last(), "refused (list): ads in it");
    EXPECT_EQ(Before(), "refused (moment): focus");
    EXPECT_EQ(Told()["Tried again"], "at a change of the tab, or with the next request");

    slot.TryShowAdPopup();
    EXPECT_EQ(Last(), "refused (moment): focus");
    EXPECT_EQ(Before(), "");
}

TEST_F(AdDiagnosisStatesTest, ATryWithoutAListTellsWhatTookTheListAway) {
    Exchange(Card({Popup("early", 250)}));
    slot.TryShowAdPopup();
    slot.TryShowAdPopup();

    EXPECT_EQ(Last(), "refused (list): a list");
    EXPECT_EQ(Before(), "refused (list): an ad that is due");
    EXPECT_EQ(Moment().atMs, 250'000);
}

TEST_F(AdDiagnosisStatesTest, AListThatGrewOldWhileItWaitedIsThrownAway) {
    mainFrame.SetFocusIn(false);
    Exchange(Card());
    EXPECT_EQ(State().standing, State().lastAnswered);
    time.SetServerTime(301'000);
    slot.TryShowAdPopup();

    EXPECT_EQ(slot.m_adModelList, nullptr);
    EXPECT_EQ(State().standing, QString());
    EXPECT_EQ(Last(), "refused (list): an ad that is due");
    EXPECT_EQ(Told()["Passed"], "list");
    EXPECT_EQ(Told()["Time alone"], "changes nothing");
}

TEST_F(AdDiagnosisStatesTest, AnAnswerThatLacksSomethingLeavesTheListBefore) {
    mainFrame.SetFocusIn(false);
    Exchange(Card());
    const QString first = State().standing;
    Json::Value nowhere = Card();
    nowhere["data"]["ad"][0]["popup_ad"]["show_areas"].clear();
    Exchange(nowhere);

    EXPECT_EQ(State().standing, first);
    EXPECT_THAT(Results(), ElementsAre("18088: dropped: the list lacks something"));
    EXPECT_EQ(Before(), "refused (moment): focus");
}

TEST_F(AdDiagnosisStatesTest, AnotherCardsPictureIsToldWithItsOwnRefusal) {
    Exchange(Card());
    const int first = pictures.LastLoad();
    slots.Allow(kSlotAdPopup, false);
    Exchange(Card());
    EXPECT_EQ(Now(), "waits for its picture");
    EXPECT_EQ(Last(), "refused (moment): shared slot");

    pictures.Succeed(first);
    EXPECT_EQ(Now(), "not shown");
    EXPECT_EQ(Last(), "refused (moment, with its picture in): shared slot");
}

TEST_F(AdDiagnosisStatesTest, ACardThatGivesWayToAnotherIsNotShownAnyMore) {
    Exchange(Card());
    LetPictureIn();
    Exchange(Card());

    EXPECT_EQ(Now(), "waits for its picture");
}

TEST_F(AdDiagnosisStatesTest, AListIsClearedByALogoutOrAnotherLanguage) {
    mainFrame.SetFocusIn(false);
    Connect(Card());
    bus.HostSend(20100);
    EXPECT_EQ(State().why.before ? Before() : Last(), "its list was cleared by the change of language");

    Connect(Card());
    WaitForLimit();
    bus.HostSend(10650);
    AnswerJson(Card());
    manager.OnLogout();
    EXPECT_EQ(Last(), "its list was cleared by the logout");
}

TEST_F(AdDiagnosisStatesTest, AnAdOnScreenIsClosedByItsReasonAndNotByTheClearing) {
    Connect(Card());
    LetPictureIn();
    ChangeTab(20001);
    ChangeTab(20002);
    EXPECT_EQ(Last(), "refused (list): a list");
    EXPECT_EQ(Before(), "closed by tab switched");

    WaitForLimit();
    mainFrame.SetTabKey(20001);
    bus.HostSend(10650);
    AnswerJson(Card());
    LetPictureIn();
    manager.OnLogout();
    EXPECT_EQ(Last(), "closed by logout");
}

TEST_F(AdDiagnosisStatesTest, AWithdrawnListIsToldAsSuch) {
    mainFrame.SetFocusIn(false);
    Connect(Card());
    PushOffline("another");
    EXPECT_EQ(Last(), "refused (moment): focus");
    PushOffline("18088");

    EXPECT_EQ(Last(), "withdrawn by the server: 18088");
    EXPECT_EQ(State().standing, QString());
}

TEST_F(AdDiagnosisStatesTest, AListThatWaitsBehindAWithdrawnAdStays) {
    Connect(Card());
    LetPictureIn();
    slots.Allow(kSlotAdPopup, false);
    WaitForLimit();
    bus.HostSend(10650);
    AnswerJson(Card({Popup("next")}));
    const QString next = State().standing;
    PushOffline("18088");

    EXPECT_EQ(Last(), "closed by push offline");
    EXPECT_EQ(State().standing, next);
    manager.OnLogout();
    EXPECT_EQ(State().standing, QString());
}

TEST_F(AdDiagnosisStatesTest, APushHasTheSlotAskAtTheMomentThatIsTold) {
    environment.SetRelease(false);
    mainFrame.SetFocusIn(false);
    Connect(Card());
    PushNew(40);
    PushNew(30);
    PushNew(1, 7);
    EXPECT_EQ(Moment().what, DisplayConditions::EnWhat::Push);
    EXPECT_EQ(Told()["Time alone"], "a push has it ask again at 1970-01-01 00:03:50 UTC, in 30 s");

    time.Advance(std::chrono::milliseconds(29'999));
    EXPECT_THAT(http.Started(), SizeIs(1));
    time.Advance(std::chrono::milliseconds(1));
    EXPECT_THAT(http.Started(), SizeIs(2));
    EXPECT_EQ(Moment().atMs, 240'000);
}

TEST_F(AdDiagnosisStatesTest, AMomentThatHasPassedHidesNoPushThatIsToCome) {
    store.SetInt64(kLastShow, 150);
    Connect(Card(60));
    EXPECT_EQ(Moment().atMs, 211'000);
    PushNew(30);
    time.Advance(std::chrono::milliseconds(10'999));
    EXPECT_EQ(Moment().what, DisplayConditions::EnWhat::Free);

    time.Advance(std::chrono::milliseconds(1));
    EXPECT_EQ(Moment().what, DisplayConditions::EnWhat::Push);
    EXPECT_EQ(Moment().atMs, 230'000);
    time.SetServerTime(231'000);
    EXPECT_EQ(Moment().what, DisplayConditions::EnWhat::Free);
}

TEST_F(AdDiagnosisStatesTest, APushThatIsNotTakenLeavesWhatRefusedBefore) {
    mainFrame.SetFocusIn(false);
    Connect(Card());
    channel.Push(20171, std::string("\xFF"));

    EXPECT_EQ(Last(), "a push was not taken: receive 20171, adPush parse failed");
    EXPECT_EQ(Before(), "refused (moment): focus");
}

TEST_F(AdDiagnosisStatesTest, ADelayIsCountedAsTheModuleCountsIt) {
    Connect(Card());
    PushNew(4'294'968);  // 704 milliseconds more than 32 bits can hold
    EXPECT_EQ(State().why.pushesMs, std::vector<qint64>{200'704});
    PushNew(2'147'484);
    EXPECT_EQ(State().why.pushesMs, (std::vector<qint64>{200'704, 200'000}));
}

TEST_F(AdDiagnosisStatesTest, ABannerIsShownUntilTheLastOfItsWidgetsIsGone) {
    CZRAdBannerController banner(nullptr, 7);
    std::vector<std::unique_ptr<QWidget>> views;
    const auto ask = [&] {
        WaitForLimit();
        banner.GetAdBannerAsync(QSize(600, 100), [&views](QWidget* made) { views.emplace_back(made); }, 0, false, {});
        AnswerJson(Strip());
    };
    const AdSlot where{3, 7};
    ask();
    EXPECT_EQ(Told(where)["Now"], "shown since 00:03:30 · 18089");
    ask();
    views.erase(views.begin());
    EXPECT_THAT(Told(where)["Now"], StartsWith("shown since 00:03:40"));

    views.clear();
    EXPECT_EQ(Told(where)["Now"], "not shown");
    EXPECT_EQ(Short(Told(where)["Last"]), "closed by login");
    EXPECT_EQ(Told(where)["Tried again"], "when its page asks again");
}

TEST_F(AdDiagnosisStatesTest, ABannerWhosePicturesAllFailIsToldToHaveNone) {
    CZRAdBannerController banner(nullptr, 7);
    CZRAdBannerController other(nullptr, 8);
    std::vector<std::unique_ptr<QWidget>> views;
    const auto ask = [&](CZRAdBannerController& which, const Json::Value& answer) {
        which.GetAdBannerAsync(QSize(600, 100), [&views](QWidget* made) { views.emplace_back(made); }, 0, false, {});
        AnswerJson(answer);
    };
    const auto fail = [this](const char* url) {
        for (int tries = 0; tries < 3; ++tries) {
            pictures.FailUrl(url);
        }
    };
    Json::Value two = Strip();
    two["data"]["ad"].append(two["data"]["ad"][0]);
    two["data"]["ad"][1]["ad_id"] = "18090";
    two["data"]["ad"][1]["banner_ad"]["img"] = "https://pictures.test/second.png";
    Json::Value elsewhere = Strip();
    elsewhere["data"]["ad_position"] = 8;
    elsewhere["data"]["ad"][0]["ad_id"] = "18091";
    elsewhere["data"]["ad"][0]["banner_ad"]["img"] = "https://pictures.test/third.png";
    ask(other, elsewhere);
    ask(banner, two);
    const AdSlot where{3, 7};
    EXPECT_EQ(Told(where)["Now"], "shown since 00:03:20 · 18089");

    fail("https://pictures.test/strip.png");
    fail("https://pictures.test/second.png");

    const auto group = ad_diagnosis_text::Why(board, *board.Find(where), time.ServerTime());
    EXPECT_EQ(group.lines[0].value.toStdString(), "stands since 00:03:20, but no picture came · 18089");
    EXPECT_EQ(group.good[0], std::make_optional(false));
    ASSERT_THAT(group.lines[0].children, SizeIs(2));
    EXPECT_EQ(group.lines[0].children[0].name, QStringLiteral("18089"));
    EXPECT_EQ(group.lines[0].children[0].value.toStdString(), "failed at try 3: https://pictures.test/strip.png");
    EXPECT_EQ(group.lines[0].children[1].value.toStdString(), "failed at try 3: https://pictures.test/second.png");
    EXPECT_EQ(Told(where)["Tried again"], "when its page asks again");
    EXPECT_EQ(Told({3, 8})["Now"], "shown since 00:03:20 · 18091");
    EXPECT_EQ(board.Request(board.Find(where)->standing)->Results()[0].pictureFailed,
              QStringLiteral("https://pictures.test/strip.png"));
}

TEST_F(AdDiagnosisStatesTest, ABannerWithOneOfItsPicturesIsShown) {
    CZRAdBannerController banner(nullptr, 7);
    std::unique_ptr<QWidget> view;
    Json::Value two = Strip();
    two["data"]["ad"].append(two["data"]["ad"][0]);
    two["data"]["ad"][1]["ad_id"] = "18090";
    two["data"]["ad"][1]["banner_ad"]["img"] = "https://pictures.test/second.png";
    banner.GetAdBannerAsync(QSize(600, 100), [&view](QWidget* made) { view.reset(made); }, 0, false, {});
    AnswerJson(two);
    for (int tries = 0; tries < 3; ++tries) {
        pictures.FailUrl("https://pictures.test/strip.png");
    }
    pictures.SucceedUrl("https://pictures.test/second.png");

    EXPECT_EQ(Told({3, 7})["Now"], "shown since 00:03:20 · 18089");
}

TEST_F(AdDiagnosisStatesTest, ABannerWithoutAPictureIsToldAlsoWhenAnotherOnesEndClearedTheList) {
    CZRAdBannerController banner(nullptr, 7);
    std::vector<std::unique_ptr<QWidget>> views;
    for (int times = 0; times < 2; ++times) {
        WaitForLimit();
        banner.GetAdBannerAsync(QSize(600, 100), [&views](QWidget* made) { views.emplace_back(made); }, 0, false, {});
        AnswerJson(Strip());
    }
    views.erase(views.begin());
    const AdSlot where{3, 7};
    EXPECT_EQ(board.Find(where)->standing, QString());

    for (int tries = 0; tries < 3; ++tries) {
        pictures.Fail(pictures.LastLoad());
    }

    EXPECT_THAT(Told(where)["Now"], StartsWith("stands since 00:03:40, but no picture came"));
}
