#include "core/url.h"

#include <gmock/gmock.h>

using namespace ::testing;

namespace {

struct Row {
    const char* name;
    std::string text;
    std::string result;
};

class DecodeTest : public TestWithParam<Row> {};

TEST_P(DecodeTest, TextIsDecodedByTheTable) {
    EXPECT_EQ(core::url::Decode(GetParam().text), GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(Texts, DecodeTest,
                         Values(Row{"Empty", "", ""}, Row{"Plain", "a+b c", "a+b c"},
                                Row{"PlainDigits", "20cafe", "20cafe"}, Row{"Url", "https%3A%2f%2Fx", "https://x"},
                                Row{"Once", "%2525", "%25"}, Row{"Utf8", "%C3%BC", "\xC3\xBC"},
                                Row{"InvalidUtf8", "%FF", "\xFF"}, Row{"RawUtf8", "\xC3\xBC", "\xC3\xBC"},
                                Row{"ZeroByte", "a%00b", std::string("a\0b", 3)}, Row{"LoneAtTheEnd", "a%", "a%"},
                                Row{"OneDigitAtTheEnd", "a%2", "a%2"}, Row{"NoDigits", "%zz1", "%zz1"},
                                Row{"SecondIsNoDigit", "%2x", "%2x"}, Row{"FirstIsNoDigit", "%x2", "%x2"},
                                Row{"Twice", "%%20", "% "}, Row{"SignIsNoDigit", "%-1%+1% 1", "%-1%+1% 1"}),
                         [](const auto& row) { return row.param.name; });

class GetHostTest : public TestWithParam<Row> {};

TEST_P(GetHostTest, HostIsFoundByTheTable) {
    EXPECT_EQ(core::url::GetHost(GetParam().text), GetParam().result);
}

INSTANTIATE_TEST_SUITE_P(Urls, GetHostTest,
                         Values(Row{"Host", "https://chat.test/a?b#c", "chat.test"},
                                Row{"Port", "https://chat.test:8080/", "chat.test"},
                                Row{"User", "https://u:p@chat.test/", "chat.test"},
                                Row{"LowerCase", "https://Chat.TEST/", "chat.test"},
                                Row{"Address", "http://127.0.0.1:1/", "127.0.0.1"}, Row{"Ipv6", "http://[::1]/", "::1"},
                                Row{"Empty", "", ""}, Row{"Word", "chat.test", ""}, Row{"NoHost", "file:///etc", ""},
                                Row{"Opaque", "javascript:chat.test", ""}, Row{"Blank", "https://chat.test/a b", ""},
                                Row{"BadHost", "https://chat test/", ""}),
                         [](const auto& row) { return row.param.name; });

}  // namespace
