// The board of ad slots on the traffic and log lines of the real module.
#include "AdModule.h"

using namespace ::testing;

namespace {

class AdTrackerOfModuleTest : public AdModuleTest {
protected:
    CSlotController slot{ZRAdTypePopup, 42};
};

}  // namespace

TEST_F(AdTrackerOfModuleTest, ARequestIsToldWithItsIdUntilItIsAnswered) {
    slot.RequestAd(ZRAdApiTypeCheck, 42, {QStringLiteral("7"), QStringLiteral("8")});

    const AdRequest* request = board.Request(State().lastRequest);
    ASSERT_NE(request, nullptr);
    EXPECT_EQ(request->id.toStdString(), Parsed(http.Started()[0].request.m_strBody)["request_id"].asString());
    EXPECT_EQ(request->path, QStringLiteral("/ad/check"));
    EXPECT_EQ(request->task, http.LastTask());
    EXPECT_EQ(request->askedFor, QStringList({QStringLiteral("7"), QStringLiteral("8")}));
    EXPECT_EQ(request->outcome, EnAdOutcome::InFlight);
    EXPECT_EQ(State().lastAnswered, QString());

    AnswerJson(PopupAnswer());
    EXPECT_EQ(State().lastAnswered, State().lastRequest);
    EXPECT_EQ(State().standing, State().lastRequest);
    EXPECT_EQ(Outcome(), "code 0, ads: 1");
    EXPECT_EQ(request->status, 200);
    EXPECT_THAT(Results(), ElementsAre("18088: kept"));
}

TEST_F(AdTrackerOfModuleTest, TheLimitEndsWhenTheBoardSaysSo) {
    Search(slot);
    EXPECT_EQ(Next(), "in 10 s");

    time.Advance(std::chrono::milliseconds(9'999));
    EXPECT_EQ(Next(), "in 1 s");
    Search(slot);
    EXPECT_EQ(State().refusedCount, 1);
    EXPECT_THAT(http.Started(), SizeIs(1));

    time.Advance(std::chrono::milliseconds(1));
    EXPECT_EQ(Next(), "now");
    Search(slot);
    EXPECT_THAT(http.Started(), SizeIs(2));
    EXPECT_EQ(State().refusedCount, 0);
    EXPECT_EQ(Next(), "in 10 s");
}

TEST_F(AdTrackerOfModuleTest, AClockThatWentBackLengthensTheWait) {
    Search(slot);
    time.SetServerTime(190'000);
    EXPECT_EQ(Next(), "in 20 s");

    time.Advance(std::chrono::seconds(19));
    Search(slot);
    EXPECT_THAT(http.Started(), SizeIs(1));
    time.Advance(std::chrono::seconds(1));
    EXPECT_EQ(Next(), "now");
    Search(slot);
    EXPECT_THAT(http.Started(), SizeIs(2));
}

TEST_F(AdTrackerOfModuleTest, EachAdThatIsNotDueIsToldWithItsWindow) {
    Search(slot);
    AnswerJson(Popups({Popup("early", 201, 300, 300), Popup("due", 200, 200, 200), Popup("over", 100, 199, 300),
                       Popup("expired", 100, 300, 199)}));

    EXPECT_THAT(Results(), ElementsAre("early: dropped: starts 1970-01-01 00:03:21 UTC", "due: kept",
                                       "over: dropped: ended 1970-01-01 00:03:19 UTC",
                                       "expired: dropped: expired 1970-01-01 00:03:19 UTC"));
    EXPECT_EQ(ad_text::Kept(LastAnswer()), QStringLiteral("1 / 4"));
    EXPECT_EQ(LastAnswer()->Results()[0].nowS, 200);
    EXPECT_EQ(State().standing, State().lastAnswered);
}

TEST_F(AdTrackerOfModuleTest, OfTwoAdsWithOneIdTheRightOneIsDropped) {
    Search(slot);
    AnswerJson(Popups({Popup("twin", 100, 300, 300), Popup("twin", 100, 150, 300)}));

    EXPECT_THAT(Results(), ElementsAre("twin: kept", "twin: dropped: ended 1970-01-01 00:02:30 UTC"));
}

TEST_F(AdTrackerOfModuleTest, AListThatIsRefusedLeavesTheOneBefore) {
    Search(slot);
    AnswerJson(PopupAnswer());
    const QString first = State().lastRequest;
    std::vector<std::pair<EnAdVerdict, std::vector<std::string>>> told;
    Json::Value foreignType = BannerAnswer();
    foreignType["data"]["ad_position"] = 42;
    Json::Value foreignPosition = PopupAnswer();
    foreignPosition["data"]["ad_position"] = 43;
    for (const Json::Value& body : {foreignType, foreignPosition, Popups({}), Popups({Popup("over", 100, 199, 300)})}) {
        WaitForLimit();
        Search(slot);
        AnswerJson(body);
        told.emplace_back(LastAnswer()->verdict, Results());
        EXPECT_EQ(State().standing, first);
        EXPECT_NE(State().lastAnswered, first);
    }

    EXPECT_THAT(
        told,
        ElementsAre(Pair(EnAdVerdict::ForeignType, ElementsAre("18089: dropped: the list is of another type")),
                    Pair(EnAdVerdict::ForeignPosition, ElementsAre("18088: dropped: the list is of another position")),
                    Pair(EnAdVerdict::Empty, IsEmpty()),
                    Pair(EnAdVerdict::NoneValid, ElementsAre("over: dropped: ended 1970-01-01 00:03:19 UTC"))));
    EXPECT_THAT(Results(board.Request(first)), ElementsAre("18088: kept"));
}

TEST_F(AdTrackerOfModuleTest, EachBadAnswerIsToldWithItsReason) {
    const auto ask = [this] {
        WaitForLimit();
        Search(slot);
    };
    ask();
    http.Fail(http.LastTask(), kHttpTimedOut);
    EXPECT_EQ(Outcome(), "failed, result 3");
    ask();
    Answer("{");
    EXPECT_EQ(Outcome(), "not JSON");
    ask();
    Json::Value undecodable = PopupAnswer();
    undecodable["data"]["ad"][0]["popup_ad"]["bottom_popup"].removeMember("img");
    AnswerJson(undecodable);
    EXPECT_EQ(Outcome(), "not decoded");
    EXPECT_EQ(LastAnswer()->words, QStringLiteral("CZRAdBottomPopupModel: img"));
    EXPECT_THAT(Results(), ElementsAre("18088: dropped: the answer is not decoded"));
    ask();
    Json::Value refused = PopupAnswer();
    refused["code"] = 17;
    refused["message"] = "无, adType = 9, requestId = x";
    AnswerJson(refused);
    EXPECT_EQ(Outcome(), "code 17");
    EXPECT_EQ(LastAnswer()->words, QString::fromUtf8("无, adType = 9, requestId = x"));
    http.RefuseStarts(Failing::Always());
    ask();
    EXPECT_EQ(Outcome(), "not sent: no task");
}

TEST_F(AdTrackerOfModuleTest, AnAnswerThatComesAfterTheNextRequestIsNotTheLast) {
    Search(slot);
    const unsigned long first = http.LastTask();
    const QString late = State().lastRequest;
    WaitForLimit();
    Search(slot);
    AnswerJson(PopupAnswer());
    http.Answer(first, PopupAnswer().toStyledString());

    EXPECT_EQ(board.Request(late)->outcome, EnAdOutcome::Superseded);
    EXPECT_EQ(State().lastAnswered, State().lastRequest);
    EXPECT_THAT(Results(), ElementsAre("18088: kept"));
}

TEST_F(AdTrackerOfModuleTest, AnExposureItsClickAndItsEndAreTold) {
    const QString ad = QStringLiteral("18088");
    Search(slot);
    AnswerJson(PopupAnswer());
    slot.ReportExposeAdStart(ad);
    ASSERT_TRUE(State().exposure);
    EXPECT_EQ(State().exposure->adId, ad);
    EXPECT_EQ(State().exposure->endMs, 0);

    time.Advance(std::chrono::seconds(3));
    slot.OnAdClicked(true, ad);
    slot.OnCloseButtonClicked(ad);
    slot.CloseAd(ZRAdCloseTypeAdClicked, ad, QString());

    EXPECT_EQ(State().exposure->endMs, 203'000);
    ASSERT_TRUE(State().click && State().closeButton && State().closing && State().call);
    EXPECT_TRUE(State().click->hasJumped);
    EXPECT_EQ(State().closeButton->adId, ad);
    EXPECT_EQ(State().closing->why, QStringLiteral("ad clicked"));
    EXPECT_EQ(State().call->durationMs, 3'000);
    EXPECT_EQ(State().call->outcome, AdExposeCall::EnOutcome::InFlight);
    EXPECT_EQ(State().standing, QString());
    EXPECT_THAT(Results(), ElementsAre("18088: kept, cleared since"));

    AnswerJson(Parsed(R"({"code": 9})"));
    EXPECT_EQ(State().call->outcome, AdExposeCall::EnOutcome::Refused);
    EXPECT_EQ(State().call->number, 9);
}

TEST_F(AdTrackerOfModuleTest, AClickWithoutAnExposureIsToldAsNotReported) {
    Search(slot);
    slot.OnAdClicked(true, QStringLiteral("1"));

    ASSERT_TRUE(State().click);
    EXPECT_EQ(State().click->report, AdClick::EnReport::NoExposure);
}

TEST_F(AdTrackerOfModuleTest, AFilterAndAPictureAreToldOfTheirAd) {
    Search(slot);
    AnswerJson(Popups({Popup("a"), Popup("b")}));
    slot.Filter(QStringLiteral("b"));
    slot.OnImageLoadFailed(QStringLiteral("https://x/"), QStringLiteral("too large"), 5, 1, QStringLiteral("a"));

    EXPECT_THAT(Results(), ElementsAre("a: kept", "b: held back, filter 1"));
    EXPECT_EQ(LastAnswer()->Results()[0].pictureFailed, QStringLiteral("too large"));
    slot.OnImageLoadSucceeded(QStringLiteral("https://x/"), 5, 2, QStringLiteral("a"));
    EXPECT_EQ(LastAnswer()->Results()[0].pictureFailed, QString());
}

TEST_F(AdTrackerOfModuleTest, AnAnswerThatIsTooLongToKeepIsKnownByWhatTheModuleTook) {
    Json::Value answer = PopupAnswer();
    answer["padding"] = std::string(HttpTrace::kBodyKept, 'x');
    Search(slot);
    AnswerJson(answer);

    EXPECT_FALSE(LastAnswer()->offers);
    EXPECT_THAT(Results(), ElementsAre("18088: kept"));
}

TEST_F(AdTrackerOfModuleTest, SlotsAreApart) {
    CSlotController banner(ZRAdTypeBanner, 7);
    Search(slot);
    time.Advance(std::chrono::seconds(4));
    Search(banner);
    AnswerJson(BannerAnswer());

    ASSERT_THAT(board.Slots(), SizeIs(2));
    EXPECT_EQ(Next(), "in 6 s");
    EXPECT_EQ(State().lastAnswered, QString());
    const AdSlotState* other = board.Find({3, 7});
    EXPECT_EQ(ad_text::Next(*other, time.ServerTime()), QStringLiteral("in 10 s"));
    EXPECT_THAT(Results(board.Request(other->lastAnswered)), ElementsAre("18089: kept"));
}
