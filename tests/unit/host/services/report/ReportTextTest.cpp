#include "report/ReportText.h"

#include <gmock/gmock.h>

#include <cmath>

#include "framework/JsonText.h"

using namespace ::testing;

namespace {

class ReportTextTest : public Test {
protected:
    std::optional<std::string> Of(const Json::Value& params, const std::string& name = "ClickAd") {
        return ReportText(
            {"0123", name, -4, params, 7, 18446744073709551615u, "dev\"ice", 1'700'000'000'123, duration});
    }

    std::optional<int64_t> duration;
};

TEST_F(ReportTextTest, IsOneLineWithAllThatIsKnown) {
    Json::Value params;
    params["b"] = Json::Int64(9'007'199'254'740'993);
    params["a"] = Json::arrayValue;

    EXPECT_EQ(*Of(params),
              R"({"atMs":1700000000123,"broker":7,"code":-4,"device":"dev\"ice","id":"0123","name":"ClickAd",)"
              R"("params":{"a":[],"b":9007199254740993},"user":18446744073709551615})");
}

TEST_F(ReportTextTest, AMeasurementHasItsDuration) {
    duration = 0;
    EXPECT_THAT(*Of(Json::Value()), HasSubstr(R"("durationMs":0,)"));
}

struct Row {
    const char* name;
    Json::Value params;
    bool taken;
};

void PrintTo(const Row& row, std::ostream* stream) {
    *stream << row.name;
}

class ReportTextValueTest : public ReportTextTest, public WithParamInterface<Row> {};

TEST_P(ReportTextValueTest, IsTakenIfItCanBeReadAgain) {
    const auto made = Of(GetParam().params);

    ASSERT_EQ(made.has_value(), GetParam().taken);
    if (made) {
        std::string error;
        EXPECT_TRUE(host::ParseJson(*made, error)) << error;
    }
}

INSTANTIATE_TEST_SUITE_P(Values, ReportTextValueTest,
                         Values(Row{"Null", Json::Value(), true}, Row{"Text", "plain", true}, Row{"Real", 1.5, true},
                                Row{"Large", 1e308, true}, Row{"Infinite", HUGE_VAL, false},
                                Row{"MinusInfinite", -HUGE_VAL, false}, Row{"NoNumber", std::nan(""), false},
                                Row{"BadUtf8", "\xFF\xFE", true}, Row{"HalfCharacter", "\xED\xA0\x80", true},
                                Row{"Hangul", "\xED\x95\x9C", true}, Row{"Emoji", "\xF0\x9F\x98\x80", true},
                                Row{"ZeroByte", std::string("a\0b", 3), true}, Row{"Control", "\x01\x1F\x7F\n", true},
                                Row{"KeyWithCharacters",
                                    [] {
                                        Json::Value value;
                                        value["\xEF\xBB\xBF\xED\x95\x9C\xF0\x9F\x98\x80"] = 1;
                                        value["\xEF\xBF\xBD"] = 2;
                                        return value;
                                    }(),
                                    true},
                                Row{"KeysOfBadUtf8",
                                    [] {
                                        Json::Value value;
                                        value["\xFF"] = 1;
                                        value["\xFE"] = 2;
                                        return value;
                                    }(),
                                    false},
                                Row{"KeyOfHalfACharacterWithin",
                                    [] {
                                        Json::Value value;
                                        value["list"][0]["a\xED\x95"] = 1;
                                        return value;
                                    }(),
                                    false},
                                Row{"KeyOfHalfAPair",
                                    [] {
                                        Json::Value value;
                                        value["\xED\xA0\x80"] = 1;
                                        return value;
                                    }(),
                                    false},
                                Row{"InfiniteWithin",
                                    [] {
                                        Json::Value value;
                                        value["list"].append(HUGE_VAL);
                                        return value;
                                    }(),
                                    false},
                                Row{"Deep",
                                    [] {
                                        Json::Value value = 1;
                                        for (int i = 0; i < 60; ++i) {
                                            Json::Value outer;
                                            outer["k"] = value;
                                            value = outer;
                                        }
                                        return value;
                                    }(),
                                    true},
                                Row{"TooDeep",
                                    [] {
                                        Json::Value value = 1;
                                        for (int i = 0; i < 61; ++i) {
                                            Json::Value outer;
                                            outer["k"] = value;
                                            value = outer;
                                        }
                                        return value;
                                    }(),
                                    false}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(ReportTextTest, TextsAndKeysAreWrittenAsUtf8) {
    Json::Value params;
    params["广告"] = "\xEF\xBB\xBF请求成功 \xF0\x9F\x98\x80";

    EXPECT_THAT(*Of(params), HasSubstr("\"params\":{\"广告\":\"\xEF\xBB\xBF请求成功 \xF0\x9F\x98\x80\"}"));
}

TEST_F(ReportTextTest, BytesThatAreNotUtf8BecomeTheReplacementCharacterWhereverTheyAre) {
    Json::Value params;
    params["list"].append("广\xFF");
    params["list"].append("cut \xE5\xB9");
    params["surrogate"] = "\xED\xA0\x80";

    EXPECT_THAT(*Of(params, "\xFF quoted \""),
                AllOf(HasSubstr("\"name\":\"\uFFFD quoted \\\"\""),
                      HasSubstr("\"list\":[\"广\uFFFD\",\"cut \uFFFD\"],\"surrogate\":\"\uFFFD")));
}

}  // namespace
