#include "framework/JsonText.h"

#include <gmock/gmock.h>

using namespace ::testing;

namespace {

struct Refused {
    const char* name;
    std::string text;
};

class JsonTextRefusalTest : public TestWithParam<Refused> {};

TEST_P(JsonTextRefusalTest, IsRefusedWithAReason) {
    std::string error;

    EXPECT_FALSE(host::ParseJson(GetParam().text, error));
    EXPECT_THAT(error, Not(IsEmpty()));
}

INSTANTIATE_TEST_SUITE_P(Texts, JsonTextRefusalTest,
                         Values(Refused{"Empty", ""}, Refused{"Cut", "{\"a\":"}, Refused{"TrailingBytes", "{} x"},
                                Refused{"ZeroByte", std::string("{}\0 x", 5)},
                                Refused{"DuplicateKey", R"({"a":1,"a":2})"}, Refused{"Comment", "{} // no"},
                                Refused{"TrailingComma", "[1,]"}, Refused{"TooDeep", std::string(100, '[')},
                                Refused{"DeepAndWhole", std::string(65, '[') + std::string(65, ']')},
                                Refused{"PastTheLibrarysOwnDepth", std::string(5000, '[')}),
                         [](const auto& row) { return row.param.name; });

TEST(JsonTextTest, AnyJsonValueIsTaken) {
    std::string error;

    EXPECT_EQ(host::ParseJson("[1]", error)->size(), 1u);
    EXPECT_TRUE(host::ParseJson("null", error)->isNull());
    EXPECT_EQ(host::ParseJson("18446744073709551615", error)->asUInt64(), 18446744073709551615u);
    EXPECT_TRUE(host::ParseJson(std::string(60, '[') + std::string(60, ']'), error));
}

TEST(JsonTextTest, OneLineHasNeitherBlanksNorEscapedLetters) {
    Json::Value value;
    value["list"].append(1);
    value["list"].append(2);
    value["text"] = "\u96EA \u00E9";

    EXPECT_EQ(host::OneLine(value), "{\"list\":[1,2],\"text\":\"\u96EA \u00E9\"}");
}

}  // namespace
