#include "Language.h"

#include <gmock/gmock.h>

#include <limits>

#include "DevServerTest.h"
#include "premium_svr.pb.h"

namespace {

using channel::Frame;
using devserver::Language;
using devserver::LanguageOfNumber;

TEST(LanguageNumberTest, EachOfTheFiveHasItsNumberAndAllOthersAreEnglish) {
    EXPECT_EQ(LanguageOfNumber(0), Language::SimplifiedChinese);
    EXPECT_EQ(LanguageOfNumber(1), Language::TraditionalChinese);
    EXPECT_EQ(LanguageOfNumber(2), Language::English);
    EXPECT_EQ(LanguageOfNumber(5), Language::Japanese);
    EXPECT_EQ(LanguageOfNumber(7), Language::French);
    for (const int32_t number : {-1, 3, 4, 6, 8, 256, std::numeric_limits<int32_t>::min()}) {
        EXPECT_EQ(LanguageOfNumber(number), Language::English) << number;
    }
}

/// A server with user Ann, who has one right with a title in three languages.
class LanguageTest : public DevServerTest {
protected:
    LanguageTest() {
        EXPECT_EQ(Http("PUT", "/v1/scenario", R"({"schema":1,"rights":[{"access":1,"texts":{
            "en":{"mainTitle":"english"},"fr":{"mainTitle":"french"},"ja":{"mainTitle":"japanese"}}}],
            "users":[{"id":1,"name":"Ann","premium":{"rights":[{"access":1}]}},
                     {"id":3,"name":"Cid","refuseLogin":"no"}],"commonConfig":{}})")
                      .status,
                  200);
    }

    static Frame LanguageFrame(std::optional<int32_t> language) {
        Frame frame;
        frame.set_kind(Frame::LANGUAGE);
        if (language) {
            frame.mutable_login()->set_language(*language);
        }
        return frame;
    }

    static bool LogIn(ChannelClient& client, uint64_t user, std::optional<int32_t> language) {
        Frame frame = LanguageFrame(language);
        frame.set_kind(Frame::LOGIN);
        frame.mutable_login()->set_user_id(user);
        client.Send(frame);
        const auto answer = client.Take(Frame::LOGIN_ANSWER);
        return answer && answer->login_answer().accepted();
    }

    static std::string TitleFor(ChannelClient& client) {
        const auto reply = client.Request(1, 20637, "\x08\x01");
        web_premium_access::GetUiMsgAndPremiumAccessRsp answer;
        EXPECT_TRUE(reply && answer.ParseFromString(reply->body()));
        EXPECT_EQ(answer.data().ui_data_and_access_data_size(), 1);
        return answer.data().ui_data_and_access_data(0).ui_data().ui_text().main_title();
    }
};

TEST_F(LanguageTest, IsThatOfTheLogin) {
    const auto client = Connected();

    ASSERT_TRUE(LogIn(*client, 1, 7));
    EXPECT_EQ(TitleFor(*client), "french");
    ASSERT_TRUE(LogIn(*client, 1, 5));
    EXPECT_EQ(TitleFor(*client), "japanese");
    ASSERT_TRUE(LogIn(*client, 1, 2));
    EXPECT_EQ(TitleFor(*client), "english");
}

TEST_F(LanguageTest, IsEnglishWhereNobodyNamedOne) {
    const auto client = Connected();

    ASSERT_TRUE(LogIn(*client, 1, std::nullopt));

    EXPECT_EQ(TitleFor(*client), "english");
}

TEST_F(LanguageTest, ChangesByAFrameOfItsOwnForItsConnectionAlone) {
    const auto client = Connected();
    const auto other = Connected();
    ASSERT_TRUE(LogIn(*client, 1, 7));
    ASSERT_TRUE(LogIn(*other, 1, 7));

    client->Send(LanguageFrame(5));

    EXPECT_EQ(TitleFor(*client), "japanese");
    EXPECT_EQ(TitleFor(*other), "french");
}

TEST_F(LanguageTest, IsKeptForALoginThatComesLaterAndNamesNone) {
    const auto client = Connected();

    client->Send(LanguageFrame(7));
    ASSERT_TRUE(LogIn(*client, 1, std::nullopt));

    EXPECT_EQ(TitleFor(*client), "french");
}

TEST_F(LanguageTest, LanguageOfALoginReplacesTheEarlierOneEvenWhenTheLoginIsRefused) {
    const auto client = Connected();
    client->Send(LanguageFrame(7));

    ASSERT_FALSE(LogIn(*client, 3, 5));
    ASSERT_TRUE(LogIn(*client, 1, std::nullopt));

    EXPECT_EQ(TitleFor(*client), "japanese");
}

TEST_F(LanguageTest, StaysWhereAFrameNamesNone) {
    const auto client = Connected();
    ASSERT_TRUE(LogIn(*client, 1, 7));

    client->Send(LanguageFrame(std::nullopt));

    EXPECT_EQ(TitleFor(*client), "french");
}

TEST_F(LanguageTest, IsShownAmongTheReceivedFramesThatNameIt) {
    const auto client = Connected();
    client->Send(LanguageFrame(0));
    ASSERT_TRUE(LogIn(*client, 1, -5));
    client->Send(LanguageFrame(std::nullopt));
    TitleFor(*client);

    EXPECT_EQ(Http("GET", "/v1/received").body["received"], FromJson(R"([
        {"n":1,"connection":1,"user":0,"kind":"LANGUAGE","command":0,"session":0,"bodyHex":"","language":0},
        {"n":2,"connection":1,"user":1,"kind":"LOGIN","command":0,"session":0,"bodyHex":"","language":-5},
        {"n":3,"connection":1,"user":1,"kind":"LANGUAGE","command":0,"session":0,"bodyHex":""},
        {"n":4,"connection":1,"user":1,"kind":"REQUEST","command":20637,"session":1,"bodyHex":"0801"}])"));
}

}  // namespace
