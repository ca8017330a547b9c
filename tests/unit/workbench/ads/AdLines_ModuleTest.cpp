// The client's parser of the module's ad log lines, compared with lines that the module itself writes.
#include "AdModule.h"
#include "LinesRead.h"

using namespace ::testing;
using ad_lines::EnLine;

namespace {

class AdLinesTest : public AdModuleTest {
protected:
    auto Read() { return ReadLines(log, &ad_lines::Read); }

    std::string RequestId() const { return State().lastRequest.toStdString(); }

    void Ask() {
        WaitForLimit();
        Search(slot);
    }

    CSlotController slot{ZRAdTypePopup, 42};
};

}  // namespace

TEST_F(AdLinesTest, RequestsAndTheirLimitAreRead) {
    slot.RequestAd(ZRAdApiTypeSearch, 42, {QStringLiteral("a"), QStringLiteral("b")});
    Search(slot);
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::Asked, {"/ad/search", "2", "42", "a,b", RequestId()}),
                                    ReadAs(EnLine::Limited, {"200", "200", "10", "2", "42"})));
    Ask();
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::Asked, {"/ad/search", "2", "42", "", RequestId()})));
}

TEST_F(AdLinesTest, EachEndOfARequestIsRead) {
    http.RefuseStarts(Failing::Nth(1));
    Ask();
    EXPECT_THAT(Read(), Contains(ReadAs(EnLine::NoTask, {"/ad/search", "2", "42", RequestId()})));
    Ask();
    const unsigned long first = http.LastTask();
    const std::string late = RequestId();
    Ask();
    http.Answer(first, "");
    EXPECT_THAT(Read(), Contains(ReadAs(EnLine::Superseded, {"/ad/search", "2", "42", late, std::to_string(first + 1),
                                                             std::to_string(first)})));
    http.Fail(http.LastTask(), kHttpCut);
    EXPECT_THAT(Read(), Contains(ReadAs(EnLine::ExchangeFailed, {"/ad/search", "5", "2", "42", RequestId()})));
    Ask();
    Answer("x");
    EXPECT_THAT(Read(), Contains(ReadAs(EnLine::NoJson, {"/ad/search", "2", "42", RequestId()})));
    Ask();
    Answer("[]");
    EXPECT_THAT(Read(), AllOf(Contains(ReadAs(EnLine::Undecodable, {"CZRAdResponseModel", "json"})),
                              Contains(ReadAs(EnLine::NotDecoded, {"/ad/search", "2", "42", RequestId()}))));
    Ask();
    Json::Value refused = PopupAnswer();
    refused["code"] = -4;
    refused["message"] = "été, adType = 1";
    AnswerJson(refused);
    EXPECT_THAT(Read(),
                Contains(ReadAs(EnLine::Refused, {"/ad/search", "-4", "été, adType = 1", "2", "42", RequestId()})));
    Ask();
    AnswerJson(PopupAnswer());
    EXPECT_THAT(Read(), Contains(ReadAs(EnLine::Answered, {"/ad/search", "2", "42", RequestId()})));
}

TEST_F(AdLinesTest, EachReasonToDropAnAdIsRead) {
    Ask();
    AnswerJson(Popups({Popup("e", 999, 999, 999), Popup("o", 1, 2, 999), Popup("x, adType = 7", 1, 999, 3)}));
    EXPECT_THAT(Read(), AllOf(Contains(ReadAs(EnLine::TooEarly, {"210", "999", "2", "42", "e"})),
                              Contains(ReadAs(EnLine::Over, {"210", "2", "2", "42", "o"})),
                              Contains(ReadAs(EnLine::Expired, {"210", "3", "2", "42", "x, adType = 7"})),
                              Contains(ReadAs(EnLine::NoneValid, {"2", "42"}))));
    Ask();
    AnswerJson(BannerAnswer());
    EXPECT_THAT(Read(), Contains(ReadAs(EnLine::ForeignType, {"2", "3", "42", "7"})));
    Ask();
    Json::Value elsewhere = PopupAnswer();
    elsewhere["data"]["ad_position"] = 43;
    AnswerJson(elsewhere);
    EXPECT_THAT(Read(), Contains(ReadAs(EnLine::ForeignPosition, {"2", "43", "42"})));
    Ask();
    AnswerJson(Popups({}));
    EXPECT_THAT(Read(), Contains(ReadAs(EnLine::EmptyList, {"2", "42"})));
}

TEST_F(AdLinesTest, WhatHappensOnTheScreenIsRead) {
    const QString ad = QStringLiteral("18088");
    const auto close = [&](ZRAdCloseType type) { slot.CloseAd(type, ad, QStringLiteral("p")); };
    Ask();
    slot.OnCloseButtonClicked(ad);
    EXPECT_THAT(Read(), Contains(ReadAs(EnLine::ClickLost, {RequestId(), "2", "18088"})));
    AnswerJson(PopupAnswer());
    slot.ReportExposeAdStart(ad);
    Read();

    close(ZRAdCloseTypeTimeout);
    const std::string expose = State().call->exposeId.toStdString();
    EXPECT_FALSE(expose.empty());
    EXPECT_THAT(Read(),
                AllOf(Contains(ReadAs(EnLine::Closed, {"timeout", "2", "42", "18088"})),
                      Contains(ReadAs(EnLine::Cleared, {"2", "42", ""})),
                      Contains(ReadAs(EnLine::ExposeSent, {"/ad/expose", "2", "42", "18088", expose, "0", "p"}))));
    AnswerJson(Parsed("{}"));
    EXPECT_THAT(Read(), ElementsAre(ReadAs(EnLine::ExposeTaken, {"/ad/expose", "2", "42", "18088", expose})));
    close(ZRAdCloseTypeLogout);
    http.Fail(http.LastTask(), kHttpTooLarge);
    EXPECT_THAT(Read(), Contains(ReadAs(EnLine::ExposeFailed, {"/ad/expose", "4", "2", "42", "18088", ""})));
    close(ZRAdCloseTypePushOffline);
    http.Answer(http.LastTask(), "5", 500);
    EXPECT_THAT(Read(), Contains(ReadAs(EnLine::ExposeNoJson, {"/ad/expose", "0", "500", "2", "42", "18088", ""})));
    close(ZRAdCloseTypeLogin);
    AnswerJson(Parsed(R"({"code": 3})"));
    EXPECT_THAT(Read(), Contains(ReadAs(EnLine::ExposeRefused, {"/ad/expose", "3", "2", "42", "18088", ""})));
    http.RefuseStarts(Failing::Always());
    close(ZRAdCloseTypeTabSwitched);
    EXPECT_THAT(Read(), Contains(ReadAs(EnLine::ExposeNoTask, {"/ad/expose", "2", "42", "18088", ""})));
}

TEST_F(AdLinesTest, NoTwoLinesOfTheTableAreTakenForEachOther) {
    for (const ad_lines::Line& line : ad_lines::All()) {
        QString text = QString::fromLatin1(line.text);
        for (const char* mark : {"{n}", "{w}", "{}"}) {
            text.replace(QString::fromLatin1(mark), QStringLiteral("1"));
        }
        const auto said = ad_lines::Read(text);
        ASSERT_TRUE(said) << line.text;
        EXPECT_EQ(said->line, line.line) << line.text;
        EXPECT_FALSE(ad_lines::Read(QStringLiteral("more ") + text)) << line.text;
    }
}
