#include "ChatApi.h"

#include <gmock/gmock.h>

#include "AdServerTest.h"

using namespace ::testing;

namespace {

class ChatApiTest : public AdServerTest {
protected:
    WebReply Ask(const std::string& body) { return Web("POST", QStringLiteral("/chat/answers"), body); }

    static std::string Question(const std::string& question, int language) {
        return R"({"language":)" + std::to_string(language) + R"(,"question":")" + question + "\"}";
    }
};

TEST_F(ChatApiTest, PagesAreServedWithTheirTypeAndPolicy) {
    const std::pair<const char*, const char*> rows[] = {{"/chat", "text/html; charset=utf-8"},
                                                        {"/chat/preload", "text/html; charset=utf-8"},
                                                        {"/chat/sources", "text/html; charset=utf-8"},
                                                        {"/chat/chat.css", "text/css; charset=utf-8"},
                                                        {"/chat/chat.js", "text/javascript; charset=utf-8"}};
    for (const auto& [path, type] : rows) {
        SCOPED_TRACE(path);
        const auto reply = Start("GET", QString::fromUtf8(path));
        const WebReply web = Finish(*reply);
        EXPECT_EQ(web.status, 200);
        EXPECT_EQ(web.type, type);
        EXPECT_THAT(web.body, Not(IsEmpty()));
        EXPECT_EQ(reply->rawHeader("Content-Security-Policy"),
                  "default-src 'self'; base-uri 'none'; frame-ancestors 'none'");
        EXPECT_EQ(reply->rawHeader("X-Content-Type-Options"), "nosniff");
    }
}

TEST_F(ChatApiTest, PagesHaveNothingInlineThatThePolicyWouldBlock) {
    for (const char* path : {"/chat", "/chat/preload", "/chat/sources"}) {
        const std::string body = Web("GET", QString::fromUtf8(path)).body;
        for (const char* inlined : {"<style", "style=", "onclick=", "<script>", "javascript:", "http://", "https://"}) {
            EXPECT_THAT(body, Not(HasSubstr(inlined))) << path;
        }
    }
}

TEST_F(ChatApiTest, UnknownPathIsRefused) {
    EXPECT_NE(Web("GET", QStringLiteral("/chat/../chat.js")).status, 200);
    EXPECT_NE(Web("GET", QStringLiteral("/chat/chatxjs")).status, 200);
    EXPECT_NE(Web("GET", QStringLiteral("/chat/answers")).status, 200);
}

TEST_F(ChatApiTest, AnswerIsStreamedAsPlainTextWithTheQuestionAsItIs) {
    const auto reply = Start("POST", QStringLiteral("/chat/answers"), Question("<b>{}\xF0\x9F\x98\x80</b>", 2));
    const WebReply web = Finish(*reply);

    EXPECT_EQ(web.status, 200);
    EXPECT_EQ(web.type, "text/plain; charset=utf-8");
    EXPECT_EQ(web.announced, -1);
    EXPECT_EQ(web.body,
              "You asked: \"<b>{}\xF0\x9F\x98\x80</b>\". This is a sample answer of the development server. "
              "It arrives in pieces, so that it can be stopped and tried again. It contains no market data.");
}

TEST_F(ChatApiTest, AnswerComesInSeveralPieces) {
    const auto reply = Start("POST", QStringLiteral("/chat/answers"), Question("Why?", 2));
    int pieces = 0;
    QObject::connect(reply.get(), &QNetworkReply::readyRead, [&pieces] { ++pieces; });
    Finish(*reply);
    EXPECT_GT(pieces, 3);
}

TEST_F(ChatApiTest, AnswerIsInTheLanguageOfTheRequest) {
    const std::pair<int, const char*> rows[] = {{0, "您的问题是"}, {1, "您的問題是"},     {2, "You asked"},
                                                {5, "ご質問"},     {7, "Votre question"}, {-1, "You asked"},
                                                {99, "You asked"}};
    for (const auto& [language, start] : rows) {
        EXPECT_THAT(Ask(Question("a", language)).body, StartsWith(start)) << language;
    }
    EXPECT_THAT(Ask(R"({"question":"a"})").body, StartsWith("You asked"));
    EXPECT_THAT(Ask(R"({"question":"a","language":"2"})").body, StartsWith("You asked"));
}

TEST_F(ChatApiTest, BadQuestionIsRefused) {
    for (const std::string& body : {std::string(), std::string("{"), std::string("[]"), std::string("\"question\""),
                                    std::string("{}"), std::string(R"({"question":7})")}) {
        const WebReply web = Ask(body);
        EXPECT_EQ(web.status, 400) << body;
        EXPECT_EQ(FromJson(web.body)["error"].asString(), "question: must be a text") << body;
    }
    const std::string most(2000, 'a');
    EXPECT_EQ(Ask(Question(most, 2)).status, 200);
    for (const std::string& question : {std::string(), most + 'a'}) {
        const WebReply web = Ask(Question(question, 2));
        EXPECT_EQ(web.status, 400);
        EXPECT_EQ(FromJson(web.body)["error"].asString(), "question: must have 1 to 2000 characters");
    }
}

}  // namespace
