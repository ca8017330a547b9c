// The client's parser of log lines about showing an ad, compared with lines that the module itself writes.
#include "Ad/Controller/ZRAdManager.h"
#include "AdScreen.h"
#include "ad_push_20145.pb.h"
#include "ad_push_20170.pb.h"
#include "ad_push_20171.pb.h"

using namespace ::testing;
using ad_lines::EnLine;

namespace {

using AdScreenLinesTest = AdScreenTest;

template <class Push>
std::string PushOf(uint32_t delay) {
    Push push;
    push.set_ad_type(2);
    push.set_ad_position(42);
    push.set_delay(delay);
    return push.SerializeAsString();
}

}  // namespace

TEST_F(AdScreenLinesTest, WhatAPopupsListLacksIsRead) {
    EXPECT_FALSE(slot.CheckAdIsValid(nullptr));
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::NoList, {"2", "42"})));
    const std::unique_ptr<CZRAdModelList> list(ListOf(Card()));
    EXPECT_TRUE(slot.CheckAdIsValid(list.get()));
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::ListGood, {"2", "42", "18088"})));
    auto* first = qobject_cast<CZRAdPopupModel*>(list->GetAdList()->first());
    first->GetShowAreas()->clear();
    EXPECT_FALSE(slot.CheckAdIsValid(list.get()));
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::NoAreas, {"2", "42", "18088"})));

    time.SetServerTime(0);  // due, because its times are all 0
    list->GetAdList()->first() = new CZRAdPopupModel(list.get());
    EXPECT_FALSE(slot.CheckAdIsValid(list.get()));
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::NoAdId, {"2", "42"})));
    list->GetAdList()->first() = new CZRAdModel(list.get());
    EXPECT_FALSE(slot.CheckAdIsValid(list.get()));
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::NoPopup, {"2", "42"})));
}

TEST_F(AdScreenLinesTest, WhatForbidsAPopupAtThisMomentIsRead) {
    EXPECT_FALSE(slot.CheckCanShowAd(nullptr));
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::NoListNow, {"2", "42"})));
    const std::unique_ptr<CZRAdModelList> list(ListOf(Card(60)));
    mainFrame.SetTabKey(20005);
    EXPECT_FALSE(slot.CheckCanShowAd(list.get()));
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::OtherTab, {"507", "20005", "2", "42", "18088"})));
    mainFrame.SetTabKey(20001);
    store.SetInt64(kLastShow, 150);
    EXPECT_FALSE(slot.CheckCanShowAd(list.get()));
    EXPECT_THAT(Read(),
                ElementsAre(ReadAs(EnLine::WithinInterval, {"200", "150", "60", "2", "42", "18088", kLastShow})));
    time.Advance(std::chrono::seconds(11));
    slots.Allow(kSlotAdPopup, false);
    EXPECT_FALSE(slot.CheckCanShowAd(list.get()));
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::SlotTaken, {"2", "42", "18088"})));
    slots.Allow(kSlotAdPopup, true);
    mainFrame.SetFocusIn(false);
    EXPECT_FALSE(slot.CheckCanShowAd(list.get()));
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::NoFocus, {"2", "42", "18088"})));
}

TEST_F(AdScreenLinesTest, ATryAndWhatKeepsItFromAViewAreRead) {
    slot.TryShowAdPopup();
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::Try, {"2", "42"}), ReadAs(EnLine::NoList, {"2", "42"})));
    slot.ShowAd(nullptr);
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::ShowNoList, {"2", "42"})));
    Json::Value elsewhere = Card();
    elsewhere["data"]["ad_position"] = 43;
    const std::unique_ptr<CZRAdModelList> other(ListOf(elsewhere));
    slot.ShowAd(other.get());
    EXPECT_THAT(Read(),
                ElementsAre(ReadAs(EnLine::ShowStart, {"2", "42"}), ReadAs(EnLine::ShowElsewhere, {"2", "42", "43"})));
    const std::unique_ptr<CZRAdModelList> empty(ListOf(Card(std::vector<Json::Value>())));
    slot.ShowAd(empty.get());
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::ShowStart, {"2", "42"}), ReadAs(EnLine::ShowNoData, {"2", "42"})));
}

TEST_F(AdScreenLinesTest, WhatACardLacksIsRead) {
    const QString id = QStringLiteral("a b");
    const std::unique_ptr<CZRAdModelList> list(ListOf(Card()));
    auto* good = qobject_cast<CZRAdPopupModel*>(list->GetAdList()->first());
    CZRAdPopupModel bare(nullptr);
    const auto add = [&](CZRAdPopupModel* model) { slot.AddAdPopupView(model, true, 15, id, QStringLiteral("p")); };

    add(nullptr);
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::CardNoPopup, {"2", "42", "a b"})));
    add(&bare);
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::CardNoPicture, {"2", "42", "a b"})));
    mainFrame.TakeAway();
    add(good);
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::CardNoInterface, {"2", "42", "a b"})));
    mainFrame.Offer(nullptr);
    add(good);
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::CardNoFrame, {"2", "42", "a b"})));
    mainFrame.Offer(&window);
    add(good);
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::CardMade, {"2", "42", "a b", "p", "true", "15"})));
    add(good);
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::CardGone, {"2", "42", ""}),
                                    ReadAs(EnLine::CardMade, {"2", "42", "a b", "p", "true", "15"})));
}

TEST_F(AdScreenLinesTest, WhatComesOfThePictureIsRead) {
    Exchange(Card());
    Read();
    for (int tries = 0; tries < 3; ++tries) {
        pictures.Fail(pictures.LastLoad());
    }
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::PictureFailed, {"2", "https://pictures.test/card.png", "3", "0"}),
                                    ReadAs(EnLine::CardGone, {"2", "42", ""})));
    Exchange(Card());
    Read();
    slot.OnImageLoadSucceeded(QString(), 0, 1, QString(), QString());
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::PictureOfNone, {"2", "42"})));
    LetPictureIn();
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::Shown, {"2", "42", "18088", ""})));
    slot.DeleteAdPopupView();
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::CardGone, {"2", "42", "18088"})));
    slot.OnImageLoadSucceeded(QString(), 0, 1, QStringLiteral("18088"), QString());
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::NoView, {"2", "42", "18088"})));
}

TEST_F(AdScreenLinesTest, WhatKeepsABannerBackIsRead) {
    const std::unique_ptr<CZRAdModelList> noLayout(ListOf(BannerAnswer()));
    const std::unique_ptr<CZRAdModelList> unknown(ListOf(Strip(0)));
    Json::Value empty = Strip();
    empty["data"]["ad"].clear();
    const std::unique_ptr<CZRAdModelList> noAds(ListOf(empty));
    CZRAdBannerController banner(nullptr, 7);
    std::unique_ptr<QWidget> view;

    banner.ShowAd(nullptr);
    banner.ShowAd(noLayout.get());
    banner.ShowAd(noAds.get());
    banner.ShowAd(unknown.get());
    EXPECT_THAT(Read(),
                ElementsAre(ReadAs(EnLine::BannerNoList, {"3", "7"}), ReadAs(EnLine::BannerNoLayout, {"3", "7"}),
                            ReadAs(EnLine::BannerNoAds, {"3", "7"}), ReadAs(EnLine::BannerUnknown, {"3", "7", "0"})));
    banner.GetAdBannerAsync(QSize(600, 100), nullptr, 0, false, {});
    AnswerJson(Strip());
    EXPECT_THAT(Read(), Contains(ReadAs(EnLine::BannerNoCaller, {"3", "7"})));
    WaitForLimit();
    banner.GetAdBannerAsync(QSize(600, 100), [&view](QWidget* made) { view.reset(made); }, 0, false, {});
    AnswerJson(Strip());
    EXPECT_THAT(Read(), Contains(ReadAs(EnLine::BannerMade, {"3", "7"})));
    view.reset();
}

TEST_F(AdScreenLinesTest, PushesAndWhatClearsAreRead) {
    environment.SetRelease(false);
    CZRAdManager manager;
    manager.Init();
    manager.OnLogout();
    bus.HostSend(20100);
    EXPECT_THAT(Read(), AllOf(Contains(ReadAs(EnLine::LoggedOut)), Contains(ReadAs(EnLine::OtherLanguage))));
    ad_manage_oss::AdPush changed;
    changed.set_ad_type(2);
    changed.set_ad_position(42);
    changed.set_delay(7);
    changed.add_offline_ad_id("a");
    changed.add_offline_ad_id("b");
    channel.Push(20145, changed.SerializeAsString());
    channel.Push(20171, PushOf<ads_service::AdPush>(8));
    channel.Push(20170, PushOf<ad_manage_oss::AdCheckPush>(9));
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::PushChanged, {"2", "42", "a,b", "7"}),
                                    ReadAs(EnLine::PushNew, {"2", "42", "8"}),
                                    ReadAs(EnLine::PushCheck, {"2", "42", "", "9"})));
}

TEST_F(AdScreenLinesTest, PushesThatAreNotTakenAreRead) {
    environment.SetRelease(false);
    CZRAdManager manager;
    manager.Init();
    const CSProtoData foreign{};
    const auto refused = ReadAs(EnLine::PushBad, {"receive cmd error, error = 0, cmd = 0"});

    manager.OnAdPushCallback(0, kCSProtoOk, foreign, nullptr);
    manager.OnAdCheckPushCallback(0, kCSProtoOk, foreign, nullptr);
    EXPECT_THAT(Read(), ElementsAre(refused, refused));
    channel.Push(20145, std::string("\xFF"));
    channel.Push(20171, std::string("\xFF"));
    channel.Push(20170, std::string("\xFF"));
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::PushBad, {"receive cmd 20145, adPush parse failed"}),
                                    ReadAs(EnLine::PushBad, {"receive 20171, adPush parse failed"}),
                                    ReadAs(EnLine::PushBad, {"receive cmd 20170, adCheckPush parse failed"})));
    environment.SetRelease(true);
    manager.OnAdCheckPushCallback(0, kCSProtoOk, foreign, nullptr);
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::PushBad, {"receive cmd 0, release donot handle"})));
}
