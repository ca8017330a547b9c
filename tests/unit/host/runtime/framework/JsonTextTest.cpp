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

INSTANTIATE_TEST_SUITE_P(
    Texts, JsonTextRefusalTest,
    Values(Refused{"Empty", ""}, Refused{"Cut", "{\"a\":"}, Refused{"TrailingBytes", "{} x"},
           Refused{"ZeroByte", std::string("{}\0 x", 5)}, Refused{"DuplicateKey", R"({"a":1,"a":2})"},
           Refused{"Comment", "{} // no"}, Refused{"TrailingComma", "[1,]"}, Refused{"TooDeep", std::string(100, '[')},
           Refused{"DeepAndWhole", std::string(65, '[') + std::string(65, ']')},
           Refused{"PastTheLibrarysOwnDepth", std::string(5000, '[')}, Refused{"MinusAlone", "[-]"},
           Refused{"LeadingZeros", "007"}, Refused{"LeadingZeroAfterMinus", "-01"}, Refused{"PointAtTheEnd", "2."},
           Refused{"PointAtTheStart", "[.5]"}, Refused{"PointBeforeExponent", "[2.e3]"},
           Refused{"ExponentWithoutDigits", "[1e]"}, Refused{"ExponentWithASignAlone", "[1e+]"},
           Refused{"Plus", "[+1]"}, Refused{"TwoSigns", "[--1]"}, Refused{"TwoPoints", "[1.2.3]"},
           Refused{"TwoExponents", "[1e2e3]"}, Refused{"SumOfNumbers", "[1+2]"},
           Refused{"MinusAsAMember", R"({"offsetMs":-})"}, Refused{"Hexadecimal", "[0x1]"},
           Refused{"LineBreakInAText", "\"a\nb\""}, Refused{"TabInAText", "[\"\t\"]"},
           Refused{"LastControlCharacterInAKey", "{\"a\x1F\":1}"},
           Refused{"ControlCharacterAfterAnEscape", "[\"\\\\\x01\"]"},
           Refused{"ControlCharacterAfterAQuote", "[\"\\\"\x01\"]"}, Refused{"EscapeOfNothing", R"(["\a"])"},
           Refused{"ShortEscape", R"(["\u00A"])"}, Refused{"NotANumber", "[NaN]"}, Refused{"Infinite", "[-Infinity]"},
           Refused{"SingleQuotes", "['a']"}, Refused{"KeyWithoutQuotes", "{a:1}"}, Refused{"CommaAlone", "[,]"},
           Refused{"TwoCommas", "[1,,2]"}, Refused{"FormFeedBetweenTokens", "[\f]"}),
    [](const auto& row) { return row.param.name; });

TEST(JsonTextTest, AnyJsonValueIsTaken) {
    std::string error;

    EXPECT_EQ(host::ParseJson("[1]", error)->size(), 1u);
    EXPECT_TRUE(host::ParseJson("null", error)->isNull());
    EXPECT_EQ(host::ParseJson("18446744073709551615", error)->asUInt64(), 18446744073709551615u);
    EXPECT_TRUE(host::ParseJson(std::string(60, '[') + std::string(60, ']'), error));
}

TEST(JsonTextTest, NumbersAndTextsOfTheStandardAreTaken) {
    for (const char* text :
         {"[0,-0,10,-1]", "[0.5,-2.25,1e5,1E+5,1.5e-5,0e0]", "[1 , 2\t,\r\n3 ]", "\"-007. 2.\\u0001\"",
          "[\"\\\"\\\\\\/\\b\\f\\n\\r\\t\"]", "{\"a-1\":-1,\"+\":\"2.\"}", "\"\x7F\"", "[true,false,null]"}) {
        std::string error;
        EXPECT_TRUE(host::ParseJson(text, error)) << text << ": " << error;
    }
}

TEST(JsonTextTest, OneLineHasNeitherBlanksNorEscapedLetters) {
    Json::Value value;
    value["list"].append(1);
    value["list"].append(2);
    value["text"] = "\u96EA \u00E9";

    EXPECT_EQ(host::OneLine(value), "{\"list\":[1,2],\"text\":\"\u96EA \u00E9\"}");
}

}  // namespace
