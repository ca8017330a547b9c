#include "framework/JsonText.h"

#include <gmock/gmock.h>

#include "support/JsonTexts.h"

using namespace ::testing;

namespace {

class JsonTextsTest : public TestWithParam<JsonText> {};

TEST_P(JsonTextsTest, ReaderAcceptsJsonAlone) {
    std::string error;

    EXPECT_EQ(host::ParseJson(GetParam().text, error).has_value(), GetParam().accepted) << error;
    EXPECT_EQ(error.empty(), GetParam().accepted);
}

INSTANTIATE_TEST_SUITE_P(Texts, JsonTextsTest, ValuesIn(JsonTexts()), [](const auto& row) { return row.param.name; });

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
