#include "workbench/ControlClient.h"

#include <gmock/gmock.h>

#include "framework/JsonText.h"

using namespace ::testing;

namespace {

Json::Value Parsed(const char* text) {
    std::string error;
    return host::ParseJson(text, error).value_or(Json::Value());
}

struct AnswerRow {
    const char* name;
    int status;
    const char* json;
    const char* error;
};

class ServerAnswerTest : public TestWithParam<AnswerRow> {};

}  // namespace

TEST_P(ServerAnswerTest, SuccessIsOnlyAnObjectWithStatus200) {
    const AnswerRow& row = GetParam();

    const ServerAnswer answer = ServerAnswer::Read(row.status, row.json, QStringLiteral("no route"));

    EXPECT_EQ(answer.error.toStdString(), row.error);
    EXPECT_EQ(answer.reached, row.status != 0);
}

INSTANTIATE_TEST_SUITE_P(
    Answers, ServerAnswerTest,
    Values(AnswerRow{"Object", 200, "{}", ""}, AnswerRow{"List", 200, "[1]", "an unreadable answer"},
           AnswerRow{"Text", 200, "\"a\"", "an unreadable answer"},
           AnswerRow{"NoJson", 200, "{", "an unreadable answer"}, AnswerRow{"Empty", 200, "", "an unreadable answer"},
           AnswerRow{"Refusal", 400, R"({"error":"key: reason"})", "key: reason"},
           AnswerRow{"RefusalByNumber", 400, R"({"error":5})", "no route"},
           AnswerRow{"RefusalByList", 400, R"(["error"])", "no route"},
           AnswerRow{"RefusalByText", 400, R"("error")", "no route"}, AnswerRow{"NoAnswer", 0, "", "no route"}),
    [](const auto& row) { return row.param.name; });

TEST(ServerAnswerTest, FailureNamesWhetherTheServerAnswered) {
    EXPECT_EQ(ServerAnswer::Read(400, R"({"error":"a"})", {}).Failure(), QStringLiteral("The server refuses: a"));
    EXPECT_EQ(ServerAnswer::Read(0, "", QStringLiteral("b")).Failure(),
              QStringLiteral("The server does not answer: b"));
}

TEST(CurlLineTest, QuotesEveryTextForAShell) {
    EXPECT_EQ(CurlLine({"PUT", QStringLiteral("/p"), R"({"a":"it's"})"}, QStringLiteral("http://s/p"),
                       QStringLiteral("to'ken"))
                  .toStdString(),
              R"(curl -X PUT -H 'Authorization: Bearer to'\''ken' --data-raw '{"a":"it'\''s"}' 'http://s/p')");
    EXPECT_EQ(CurlLine({"DELETE", QStringLiteral("/p"), ""}, QStringLiteral("http://s/p"), QStringLiteral("t")),
              QStringLiteral("curl -X DELETE -H 'Authorization: Bearer t' 'http://s/p'"));
}

TEST(JsonReadersTest, ValueOfAnotherTypeReadsAsAbsent) {
    for (const char* text : {"null", "1", "-1.5", "true", "\"x\"", "[]", "[[1]]", "{}", R"({"a":{"b":[1]}})"}) {
        const Json::Value json = Parsed(text);
        EXPECT_TRUE(json::Member(json, "b").isNull()) << text;
        EXPECT_TRUE(json::Member(json::Member(json, "a"), "c").isNull()) << text;
        EXPECT_EQ(json::Items(json).size(), json.isArray() ? json.size() : 0) << text;
        EXPECT_EQ(json::Number(json).has_value(), json.isInt64()) << text;
    }
    EXPECT_EQ(json::Text(Parsed(R"({"a":[1,"é"]})")), QStringLiteral(R"({"a":[1,"é"]})"));
    EXPECT_EQ(json::Text(Parsed("\"x\"")), QStringLiteral("x"));
    EXPECT_EQ(json::Text(Json::Value()), QString());
    EXPECT_EQ(json::Number(Parsed("18446744073709551615")), std::nullopt);
}
