#include "GrowthJson.h"

#include <gmock/gmock.h>

using namespace ::testing;

namespace {

struct ParseRow {
    const char* name;
    std::string text;
    const char* error;  // a part of it; null: the text is good
};

void PrintTo(const ParseRow& row, std::ostream* stream) {
    *stream << row.name;
}

class GrowthJsonParseTest : public TestWithParam<ParseRow> {};

TEST_P(GrowthJsonParseTest, TextIsReadByTheLibrarysDefaultRules) {
    Json::Value value("before");
    std::string error;
    bool good = false;

    EXPECT_NO_THROW(good = growth_json::Parse(GetParam().text, value, error));

    EXPECT_EQ(good, GetParam().error == nullptr);
    if (good) {
        EXPECT_EQ(error, "");
        EXPECT_NE(value, Json::Value("before"));
    } else {
        EXPECT_THAT(error, HasSubstr(GetParam().error));
        EXPECT_EQ(value, Json::Value());
    }
}

std::string Nested(size_t depth) {
    return std::string(depth, '[') + std::string(depth, ']');
}

INSTANTIATE_TEST_SUITE_P(
    Texts, GrowthJsonParseTest,
    Values(ParseRow{"Object", R"({"a":1})", nullptr}, ParseRow{"Array", "[1]", nullptr},
           ParseRow{"Number", "5", nullptr}, ParseRow{"Text", "\"a\"", nullptr}, ParseRow{"Null", "null", nullptr},
           ParseRow{"Comment", "// c\n{}", nullptr}, ParseRow{"TrailingComma", R"({"a":[1,],})", nullptr},
           ParseRow{"JunkBehind", "{} }", nullptr}, ParseRow{"ByteOrderMark", "\xEF\xBB\xBF{}", nullptr},
           ParseRow{"Nested999", Nested(999), nullptr}, ParseRow{"Nested1001", Nested(1001), "Exceeded stackLimit"},
           ParseRow{"Nested2000", Nested(2000), "Exceeded stackLimit"},
           ParseRow{"Nested2000Cut", std::string(2000, '{'), "Missing '}' or object member name"},
           ParseRow{"Empty", "", "Syntax error"}, ParseRow{"Blank", " \n", "Syntax error"},
           ParseRow{"Word", "word", "Syntax error"}, ParseRow{"Cut", R"({"a":{"b":1})", "Missing ',' or '}'"},
           ParseRow{"CutArray", "[1", "Missing ',' or ']'"},
           ParseRow{"NullByte", std::string("\0", 1), "Syntax error"}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(GrowthJsonTest, ValueIsWhatTheTextHolds) {
    Json::Value value;
    std::string error;

    ASSERT_TRUE(growth_json::Parse(R"({"a":{"b":[1,"x"]}})", value, error));

    EXPECT_EQ(value["a"]["b"][0].asInt(), 1);
    EXPECT_EQ(value["a"]["b"][1].asString(), "x");
}

TEST(GrowthJsonTest, FailedParseLeavesNothingOfWhatItRead) {
    Json::Value value;
    std::string error;

    EXPECT_FALSE(growth_json::Parse(R"({"a":"read",)", value, error));

    EXPECT_TRUE(value.isNull());
}

std::vector<Json::Value> ValuesWithoutMembers() {
    Json::Value array(Json::arrayValue);
    array.append("a");
    return {Json::Value(),    Json::Value(true), Json::Value(5),  Json::Value(5u),
            Json::Value(1.5), Json::Value("a"),  Json::Value(""), Json::Value(array)};
}

TEST(GrowthJsonTest, OnlyAnObjectHasMembers) {
    for (const Json::Value& value : ValuesWithoutMembers()) {
        EXPECT_FALSE(growth_json::IsObject(value)) << value;
        EXPECT_TRUE(growth_json::Member(value, "a").isNull()) << value;
    }
    EXPECT_TRUE(growth_json::IsObject(Json::Value(Json::objectValue)));
}

TEST(GrowthJsonTest, MemberIsFoundByItsWholeKey) {
    Json::Value object;
    object["key"] = 1;
    object["ke"] = 2;
    object[""] = 3;

    EXPECT_EQ(growth_json::Member(object, "key"), Json::Value(1));
    EXPECT_EQ(growth_json::Member(object, "ke"), Json::Value(2));
    EXPECT_EQ(growth_json::Member(object, ""), Json::Value(3));
    EXPECT_TRUE(growth_json::Member(object, "k").isNull());
    EXPECT_TRUE(growth_json::Member(object, "keys").isNull());
    EXPECT_EQ(object.size(), 3u);
}

TEST(GrowthJsonTest, TextIsReadAsUtf8AndWhole) {
    EXPECT_EQ(growth_json::Text("\xE6\x9D\x83"), QString::fromUtf8("\xE6\x9D\x83"));
    EXPECT_EQ(growth_json::Text(std::string("a\0b", 3)), QString::fromLatin1("a\0b", 3));
    EXPECT_EQ(growth_json::Text("\xFF"), QString(QChar(0xFFFD)));
    EXPECT_EQ(growth_json::Text(""), QString());
}

TEST(GrowthJsonTest, ValueOfAnotherTypeIsNoText) {
    Json::Value array(Json::arrayValue);
    array.append("a");
    Json::Value object;
    object["a"] = "a";
    for (const Json::Value& value :
         {Json::Value(), Json::Value(true), Json::Value(5), Json::Value(1.5), array, object}) {
        EXPECT_EQ(growth_json::Text(value), QString()) << value;
    }
}

}  // namespace
