#include "JsonMessage.h"

#include <gmock/gmock.h>

#include "RowName.h"
#include "support/JsonTexts.h"

namespace {

using devserver::Errors;
using testing::ElementsAre;
using testing::StartsWith;

class JsonTextsTest : public testing::TestWithParam<JsonText> {};

TEST_P(JsonTextsTest, ReaderAcceptsJsonAlone) {
    Errors errors;

    EXPECT_EQ(devserver::ParseJson(GetParam().text, errors).has_value(), GetParam().accepted);
    EXPECT_EQ(errors.empty(), GetParam().accepted) << testing::PrintToString(errors);
}

INSTANTIATE_TEST_SUITE_P(Texts, JsonTextsTest, testing::ValuesIn(JsonTexts()), RowName());

TEST(JsonMessageTest, ReaderRefusesWhatIsNotUtf8) {
    for (const char* text :
         {"[\"\xFF\"]", "[\"\xC3\"]", "[\"\xC0\xAF\"]", "[\"\xED\xA0\x80\"]", "[\"\xF4\x90\x80\x80\"]",
          "[\"\\\xE2\x82\"]", "\xFE\xFF", R"(["\uDC00"])", R"(["\uDE00\uD83D"])"}) {
        Errors errors;

        EXPECT_FALSE(devserver::ParseJson(text, errors)) << testing::PrintToString(text);
        EXPECT_THAT(errors, ElementsAre(StartsWith("not JSON: ")));
    }
}

}  // namespace
