// The explanation of an ad position from its first request to the end of its ad, compared with the real module.
#include "Ad/Controller/ZRAdManager.h"
#include "AdScreen.h"
#include "ad_push_20145.pb.h"
#include "ad_push_20171.pb.h"
#include "core/config_local.h"

using namespace ::testing;

namespace {

const AdSlot kBanner{3, 7};
const char* const kNewList = "A new list comes with a login, a change of the language or a push.";

class AdStatesTest : public AdScreenTest {
protected:
    /// The module's own manager and popup send a request and receive `answer`.
    void Connect(const Json::Value& answer) {
        if (!isConnected) {
            manager.Init();
            isConnected = true;
        } else {
            WaitForLimit();
        }
        bus.HostSend(10650);
        AnswerJson(answer);
    }

    void ChangeTab(int64_t key) {
        mainFrame.SetTabKey(key);
        bus.HostSend(20157, (unsigned long)(key));
    }

    void PushOffline(const std::string& ad) {
        ad_manage_oss::AdPush push;
        push.set_ad_type(2);
        push.set_ad_position(42);
        push.set_delay(1'000);
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

    void AskBanner(const Json::Value& answer) {
        WaitForLimit();
        banner.GetAdBannerAsync(QSize(600, 100), [this](QWidget* made) { views.emplace_back(made); }, 0, false, {});
        AnswerJson(answer);
    }

    void FailPicture(const char* url) {
        for (int tries = 0; tries < 3; ++tries) {
            pictures.FailUrl(url);
        }
    }

    std::string After() const { return DetailOf(Explained().details, "After that"); }

    bool isConnected = false;
    CZRAdManager manager;
    CZRAdBannerController banner{nullptr, 7};
    std::vector<std::unique_ptr<QWidget>> views;
};

Json::Value TwoStrips(Json::Value answer) {
    answer["data"]["ad"].append(answer["data"]["ad"][0]);
    answer["data"]["ad"][1]["ad_id"] = "18090";
    answer["data"]["ad"][1]["banner_ad"]["img"] = "https://pictures.test/second.png";
    return answer;
}

}  // namespace

TEST_F(AdStatesTest, StripFollowsTheAdToTheScreen) {
    EXPECT_EQ(StateOf(), "not asked");
    Ask();
    EXPECT_EQ(Sentence(), "The request of 00:03:20 has no answer yet. Wait for it.");
    AnswerJson(Card());
    EXPECT_EQ(Sentence(), "Its picture is loading. It is shown when the picture is there.");
    EXPECT_THAT(Explained().steps.mid(3),
                ElementsAre(QStringLiteral("\u2713 conditions"), QStringLiteral("\u2026 picture"),
                            QStringLiteral("\u2013 shown")));
    time.Advance(std::chrono::seconds(2));
    LetPictureIn();
    EXPECT_EQ(Sentence(), "Shown since 00:03:22: ad 18088.");
    EXPECT_EQ(Explained().steps.last(), QStringLiteral("\u2713 shown"));

    time.Advance(std::chrono::seconds(15));
    EXPECT_EQ(Sentence(), std::string("Nothing is waiting: the last list ended at 00:03:37 when its display time was "
                                      "over. ") +
                              kNewList);
    EXPECT_EQ(Stopped(), "");
    EXPECT_EQ(Explained().counts, QStringLiteral("kept 1 of 1, shown 1"));
}

TEST_F(AdStatesTest, ListThatEndedWithTheTabIsNamedAfterATryWithoutAList) {
    Connect(Card());
    LetPictureIn();
    ChangeTab(20001);
    ChangeTab(20002);
    ChangeTab(20001);

    EXPECT_EQ(Sentence(),
              std::string("Nothing is waiting: the last list ended at 00:03:20 when the tab changed. ") + kNewList);
    EXPECT_EQ(StateOf(), "was shown, ended");
    EXPECT_THAT(After(), HasSubstr("a list"));
}

TEST_F(AdStatesTest, EarlierRefusalIsForgottenWhenTheAdIsShown) {
    mainFrame.SetFocusIn(false);
    Exchange(Card());
    Ask();
    EXPECT_EQ(StateOf(), "refused: focus");
    EXPECT_THAT(After(), HasSubstr("pause between requests"));
    mainFrame.SetFocusIn(true);
    slot.TryShowAdPopup();
    LetPictureIn();

    EXPECT_EQ(Sentence(), "Shown since 00:03:30: ad 18088.");
    EXPECT_EQ(After(), "missing");
}

TEST_F(AdStatesTest, RequestThatWasTooEarlyWaitsForTheIntervalOfTheModulesLine) {
    Exchange(Card(std::vector<Json::Value>()));
    Ask();

    EXPECT_EQ(State().nextAskS, 220);
    EXPECT_THAT(Explained().details, Contains(QStringLiteral("  Needed: 10 s after the last request, 00:03:30")));
}

TEST_F(AdStatesTest, RefusedAnswerLeavesTheWaitingList) {
    mainFrame.SetFocusIn(false);
    Exchange(Card());
    const AdState::Request first = State().standing;
    Exchange(Card(std::vector<Json::Value>()));
    EXPECT_EQ(StateOf(), "refused: focus");
    EXPECT_THAT(After(), HasSubstr("ads in it"));
    EXPECT_EQ(State().standing, first);

    Json::Value nowhere = Card();
    nowhere["data"]["ad"][0]["popup_ad"]["show_areas"].clear();
    Exchange(nowhere);
    EXPECT_EQ(State().standing, first);
    EXPECT_EQ(DetailOf(Explained().details, "Ad 18088"), "not kept: areas");
}

TEST_F(AdStatesTest, TryWithoutAListNamesWhatTookTheListAway) {
    Exchange(Card({Popup("early", 250)}));
    slot.TryShowAdPopup();
    slot.TryShowAdPopup();

    EXPECT_EQ(StateOf(), "refused: an ad that is due");
    EXPECT_THAT(Sentence(), HasSubstr("Wait until 00:04:10"));
}

TEST_F(AdStatesTest, ListThatGrewOldWhileItWaitedIsGone) {
    mainFrame.SetFocusIn(false);
    Exchange(Card());
    EXPECT_NE(State().standing, nullptr);
    time.SetServerTime(301'000);
    slot.TryShowAdPopup();

    EXPECT_EQ(slot.m_adModelList, nullptr);
    EXPECT_EQ(State().standing, nullptr);
    EXPECT_EQ(Sentence(), std::string("No ad of the list is due: ad 18088 ended 00:05:00. ") + kNewList);
}

TEST_F(AdStatesTest, WindowThatEndsBeforeTheIntervalMakesWaitingUseless) {
    store.SetInt64(kLastShow, 205);
    Exchange(Card(3'600));

    EXPECT_THAT(Sentence(), HasSubstr("Its own window ends before, so waiting does not help."));
}

TEST_F(AdStatesTest, IntervalEndsWhenTheTimeOfTheLastShowingIsForgotten) {
    store.SetInt64(kLastShow, 205);
    Exchange(Card(60));
    EXPECT_THAT(Sentence(), HasSubstr("Wait until 00:04:26"));

    core::config_local::AppCfgSaveInt64(kLastShow, 0);

    EXPECT_THAT(Sentence(), HasSubstr("This no longer refuses it."));
}

TEST_F(AdStatesTest, PictureOfAnEarlierCardHasItsOwnRefusal) {
    Exchange(Card());
    const int first = pictures.LastLoad();
    slots.Allow(kSlotAdPopup, false);
    Exchange(Card());
    EXPECT_EQ(StateOf(), "loading its picture");

    pictures.Succeed(first);
    EXPECT_EQ(StateOf(), "refused: shared slot");
    EXPECT_EQ(Stopped(), "shown");
}

TEST_F(AdStatesTest, CardThatGivesWayToAnotherIsNotShownAnyMore) {
    Exchange(Card());
    LetPictureIn();
    Exchange(Card());

    EXPECT_EQ(StateOf(), "loading its picture");
}

TEST_F(AdStatesTest, LogoutAndLanguageClearTheList) {
    mainFrame.SetFocusIn(false);
    Connect(Card());
    bus.HostSend(20100);
    EXPECT_THAT(Sentence(), HasSubstr("with the change of the language"));

    Connect(Card());
    manager.OnLogout();
    EXPECT_EQ(Sentence(),
              std::string("Nothing is waiting: the last list ended at 00:03:30 with the logout. ") + kNewList);
    EXPECT_EQ(Stopped(), "kept");
}

TEST_F(AdStatesTest, WithdrawnListIsExplained) {
    mainFrame.SetFocusIn(false);
    Connect(Card());
    PushOffline("another");
    EXPECT_EQ(StateOf(), "refused: focus");
    PushOffline("18088");

    EXPECT_EQ(Stopped(), "kept");
    EXPECT_THAT(Sentence(), StartsWith("Nothing is waiting: the last list ended at 00:03:20 when the server took ad "
                                       "18088 offline. A push makes it ask again"));
}

TEST_F(AdStatesTest, ListThatWaitsBehindAWithdrawnAdStays) {
    Connect(Card());
    LetPictureIn();
    slots.Allow(kSlotAdPopup, false);
    Connect(Card({Popup("next")}));
    const AdState::Request next = State().standing;
    PushOffline("18088");

    EXPECT_EQ(State().standing, next);
    EXPECT_THAT(Sentence(), StartsWith("The last ad ended at 00:03:30 when the server took it offline."));
    manager.OnLogout();
    EXPECT_EQ(State().standing, nullptr);
}

TEST_F(AdStatesTest, PushMakesThePopupAskAtTheNamedMoment) {
    environment.SetRelease(false);
    mainFrame.SetFocusIn(false);
    Connect(Card());
    PushNew(40);
    PushNew(30);
    PushNew(1, 7);
    EXPECT_THAT(Sentence(), EndsWith("A push makes it ask again at 00:03:50, in 30 s."));

    time.Advance(std::chrono::milliseconds(29'999));
    EXPECT_THAT(http.Started(), SizeIs(1));
    time.Advance(std::chrono::milliseconds(1));
    EXPECT_THAT(http.Started(), SizeIs(2));
}

TEST_F(AdStatesTest, DelayOfAPushIsCountedAsTheModuleCountsIt) {
    Connect(Card());
    PushNew(4'294'968);  // 704 milliseconds more than 32 bits can hold
    EXPECT_THAT(State().pushesMs, ElementsAre(200'704));
    PushNew(2'147'484);
    EXPECT_THAT(State().pushesMs, ElementsAre(200'000, 200'704));
}

TEST_F(AdStatesTest, RefusedPushLeavesTheRefusalBefore) {
    mainFrame.SetFocusIn(false);
    Connect(Card());
    channel.Push(20171, std::string("\xFF"));

    EXPECT_EQ(StateOf(), "refused: focus");
    EXPECT_THAT(After(), HasSubstr("push"));
}

TEST_F(AdStatesTest, BannerIsShownUntilTheLastOfItsWidgetsIsGone) {
    AskBanner(Strip());
    EXPECT_EQ(Sentence(kBanner), "Shown since 00:03:30: ads 18089.");
    AskBanner(Strip());
    views.erase(views.begin());
    EXPECT_THAT(Sentence(kBanner), StartsWith("Shown since 00:03:40"));

    views.clear();
    EXPECT_EQ(StateOf(kBanner), "was shown, ended");
    EXPECT_EQ(Explained(kBanner).counts, QStringLiteral("kept 1 of 1, shown 2"));
}

TEST_F(AdStatesTest, BannerWhosePicturesAllFailIsStoppedAtThePicture) {
    AskBanner(TwoStrips(Strip()));
    FailPicture("https://pictures.test/strip.png");
    EXPECT_EQ(Stopped(kBanner), "");
    FailPicture("https://pictures.test/second.png");

    EXPECT_EQ(Stopped(kBanner), "picture");
    EXPECT_EQ(Sentence(kBanner),
              "It is there since 00:03:30: ads 18089, 18090, but none of its pictures came. Check their addresses on "
              "the server.");
}

TEST_F(AdStatesTest, LoginOfAnotherUserStartsAfresh) {
    Exchange(Card());
    EXPECT_EQ(tracker.State().User(), 77u);
    LogIn(78);

    EXPECT_EQ(tracker.State().User(), 78u);
    EXPECT_EQ(StateOf(), "not asked");
    EXPECT_TRUE(tracker.State().ads.empty());
    Ask();
    EXPECT_THAT(Sentence(), StartsWith("It asked again less than 10 s after its last request. Wait until 00:03:40"));
}
