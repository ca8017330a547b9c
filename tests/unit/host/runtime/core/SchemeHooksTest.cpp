#include "core/SchemeHooks.h"

#include <array>

#include "support/ScriptedHostTest.h"

using namespace ::testing;
using core::scheme::SchemeInfo;

namespace {

class SchemeHooksTest : public ScriptedHostTest {
protected:
    /// A hook that notes its name.
    core::scheme::PreCallback Note(const char* name, bool handled) {
        return [this, name, handled](QObject*, const SchemeInfo&, const QVariant&) {
            notes.emplace_back(name);
            return handled;
        };
    }

    void Add(const char* word, const char* name, bool handled, void* owner) {
        hooks.Add(QString::fromUtf8(word), Note(name, handled), owner, core::scheme::kFirstWordEquals);
    }

    bool Handle(const char* url) {
        UrlRequest request;
        request.url = QString::fromUtf8(url);
        return hooks.Handle(request);
    }

    host::CSchemeHooks hooks;
    std::vector<std::string> notes;
    int first = 0;
    int second = 0;
    std::array<int, 20> owners{};
};

TEST_F(SchemeHooksTest, HooksAreAskedInTheirOrderUntilOneHandles) {
    Add("url", "declines", false, &first);
    Add("other", "other", true, &first);
    Add("url", "handles", true, &second);
    Add("url", "never", true, &notes);

    EXPECT_TRUE(Handle("zrclient://url/x"));

    EXPECT_THAT(notes, ElementsAre("declines", "handles"));
}

TEST_F(SchemeHooksTest, UrlIsNotHandledWhenEveryHookDeclinesOrNoneMatches) {
    EXPECT_FALSE(Handle("zrclient://url/x"));
    Add("url", "declines", false, &first);
    EXPECT_FALSE(Handle("zrclient://url/x"));
    EXPECT_FALSE(Handle("zrclient://page/url"));
    EXPECT_FALSE(Handle("zrclient://urls/x"));
    EXPECT_FALSE(Handle("zrclient:"));
    EXPECT_FALSE(Handle(""));
    EXPECT_THAT(notes, ElementsAre("declines"));
}

TEST_F(SchemeHooksTest, FirstWordIsThatOfThePathWhenThereIsNoHost) {
    Add("url", "hook", true, &first);
    EXPECT_TRUE(Handle("zrclient:///url/x"));
}

TEST_F(SchemeHooksTest, HookIsNeverCalledWhenItsRuleIsUnknown) {
    hooks.Add(QStringLiteral("url"), Note("hook", true), &first, core::scheme::RouteMatchRule(2));

    EXPECT_FALSE(Handle("zrclient://url/x"));
    EXPECT_THAT(notes, IsEmpty());
}

TEST_F(SchemeHooksTest, SecondRegistrationReplacesTheFirstInItsPlaceWhenOwnerAndTextAreTheSame) {
    Add("url", "old", false, &first);
    Add("url", "of another", false, &second);
    Add("other", "of another text", true, &first);
    Add("url", "new", false, &first);

    EXPECT_FALSE(Handle("zrclient://url/x"));

    EXPECT_THAT(notes, ElementsAre("new", "of another"));
}

TEST_F(SchemeHooksTest, HookGetsTheArgumentsOfTheRequest) {
    QObject from;
    UrlRequest request;
    request.url = QStringLiteral("zrclient://url/x");
    request.context = &from;
    request.extra = 7;
    hooks.Add(
        QStringLiteral("url"),
        [&](QObject* object, const SchemeInfo& info, const QVariant& extra) {
            EXPECT_EQ(object, &from);
            EXPECT_EQ(info.text, request.url);
            EXPECT_EQ(extra, QVariant(7));
            return true;
        },
        &first, core::scheme::kFirstWordEquals);

    EXPECT_TRUE(hooks.Handle(request));
}

TEST_F(SchemeHooksTest, NextHookIsAskedWhenOneThrows) {
    hooks.Add(
        QStringLiteral("url"),
        [](QObject*, const SchemeInfo&, const QVariant&) -> bool { throw std::runtime_error("broken"); }, &first,
        core::scheme::kFirstWordEquals);
    Add("url", "next", true, &second);

    EXPECT_TRUE(Handle("zrclient://url/x"));

    EXPECT_THAT(notes, ElementsAre("next"));
    EXPECT_THAT(log.Lines(), ElementsAre(Error(AllOf(StartsWith("A hook of a scheme "), HasSubstr("broken")))));
}

TEST_F(SchemeHooksTest, HookCanAddAnotherWhenItIsCalled) {
    hooks.Add(
        QStringLiteral("url"),
        [this](QObject*, const SchemeInfo&, const QVariant&) {
            for (int& owner : owners) {
                Add("url", "added", true, &owner);
            }
            return false;
        },
        &first, core::scheme::kFirstWordEquals);

    EXPECT_FALSE(Handle("zrclient://url/x"));
    EXPECT_TRUE(Handle("zrclient://url/x"));
    EXPECT_THAT(notes, ElementsAre("added"));
}

struct Row {
    const char* name;
    const char* url;
    QStringList words;
    QMap<QString, QString> keys;
};

class SchemePartsTest : public TestWithParam<Row> {};

TEST_P(SchemePartsTest, PartsAreThoseOfTheTable) {
    const SchemeInfo info = host::CSchemeHooks::Parts(QString::fromUtf8(GetParam().url));

    EXPECT_EQ(info.text, QString::fromUtf8(GetParam().url));
    EXPECT_EQ(info.pathWords, GetParam().words);
    EXPECT_EQ(info.keys, GetParam().keys);
}

QString Q(const char* text) {
    return QString::fromUtf8(text);
}

INSTANTIATE_TEST_SUITE_P(Urls, SchemePartsTest,
                         Values(Row{"HostAlone", "zrclient://url", {Q("url")}, {}},
                                Row{"Slashes", "zrclient://url//a/", {Q("url"), Q("a")}, {}},
                                Row{"NoHost", "zrclient:///a/b", {Q("a"), Q("b")}, {}},
                                Row{"Encoded",
                                    "zrclient://url/https%3A%2F%2Fx%2Fy%3Fz%2520",
                                    {Q("url"), Q("https%3A%2F%2Fx%2Fy%3Fz%2520")},
                                    {}},
                                Row{"Query",
                                    "zrclient://a/b?c=d%26e&f=&g",
                                    {Q("a"), Q("b")},
                                    {{Q("c"), Q("d%26e")}, {Q("f"), Q("")}, {Q("g"), Q("")}}},
                                Row{"Fragment", "zrclient://a/b#c/d", {Q("a"), Q("b")}, {}}, Row{"Empty", "", {}, {}},
                                Row{"Invalid", "zrclient://a b/c", {}, {}}),
                         [](const auto& row) { return row.param.name; });

}  // namespace
