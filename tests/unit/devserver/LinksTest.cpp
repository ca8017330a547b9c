#include "Links.h"

#include <gmock/gmock.h>

#include <QFile>

#include "AdServerTest.h"

namespace {

using devserver::CScenario;
using devserver::Errors;
using devserver::LinkPage;
using devserver::LinkTable;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

constexpr const char* kOrigin = "http://127.0.0.1:7";

// Link 11 belongs to two rights, 12 to one; 13 has an entry alone.
constexpr const char* kScenario = R"({"schema":1,"users":[],"commonConfig":{"a":"{server}/x"},
    "rights":[
        {"access":4,"links":{"mainBtn":11,"detailBtn":12,"detailSubBtn":0},
         "texts":{"en":{"mainTitle":"Four <b>","mainBtn":"Get","detailBtn":"More & \"more\""}}},
        {"access":5,"otherInfo":{"target":"{server}/link/12"},"links":{"mainBtn":11,"detailBtn":-1,"detailSubBtn":14},
         "texts":{"en":{"mainTitle":"Five","mainBtn":"Buy","detailSubBtn":"Éclair"}}}],
    "links":[{"id":11,"title":"The <centre>","text":"One & two\n\nThree"},{"id":13,"url":"https://a.example/{server}/{server}"},
             {"id":14,"url":""}]})";

CScenario Read(const std::string& text) {
    Errors errors;
    auto scenario = CScenario::FromText(text, errors);
    EXPECT_TRUE(scenario) << testing::PrintToString(errors);
    return scenario.value();
}

TEST(LinksTest, TableHasTheLinksOfTheListAndOfTheRights) {
    EXPECT_EQ(LinkTable(Read(kScenario), kOrigin), FromJson(R"({
        "11":"http://127.0.0.1:7/link/11","12":"http://127.0.0.1:7/link/12",
        "13":"https://a.example/http://127.0.0.1:7/http://127.0.0.1:7"})"));
}

TEST(LinksTest, TableWithoutLinksIsAnEmptyObject) {
    EXPECT_EQ(LinkTable(Read(R"({"schema":1,"commonConfig":{}})"), kOrigin), Json::Value(Json::objectValue));
}

TEST(LinksTest, PageHasAParagraphForEachLineOfTheText) {
    EXPECT_THAT(*LinkPage(Read(kScenario), 11), HasSubstr("</h1>\n<p>One &amp; two</p>\n<p>Three</p>\n<p>Link 11</p>"));
}

TEST(LinksTest, PageNamesTheLinkAndTheRightsThatUseIt) {
    const CScenario scenario = Read(kScenario);

    EXPECT_THAT(*LinkPage(scenario, 11),
                AllOf(HasSubstr("<title>11 The &lt;centre&gt;</title>"), HasSubstr("<h1>The &lt;centre&gt;</h1>"),
                      HasSubstr("<p>Link 11</p>"), HasSubstr("<li>Four &lt;b&gt;: Get (right 4)</li>"),
                      HasSubstr("<li>Five: Buy (right 5)</li>")));
    EXPECT_THAT(*LinkPage(scenario, 12), AllOf(HasSubstr("<h1>More &amp; &quot;more&quot;</h1>"),
                                               HasSubstr("(right 4)"), Not(HasSubstr("(right 5)"))));
    EXPECT_THAT(*LinkPage(scenario, 14), HasSubstr("<h1>Éclair</h1>"));
    for (const int64_t id : {0, -1, 15, 4}) {
        EXPECT_FALSE(LinkPage(scenario, id)) << id;
    }
}

TEST(LinksTest, InvalidLinksAreRefused) {
    const auto errorsOf = [](const std::string& links) {
        Errors errors;
        EXPECT_FALSE(CScenario::FromText(R"({"schema":1,"commonConfig":{},"links":)" + links + "}", errors));
        return errors;
    };
    EXPECT_THAT(errorsOf("{}"), ElementsAre("links: must be a list of objects"));
    EXPECT_THAT(errorsOf(R"([{"id":0}])"), ElementsAre("links[0].id: must be a whole number from 1 to 2147483647"));
    EXPECT_THAT(errorsOf(R"([{"title":"a"}])"), ElementsAre("links[0].id: missing"));
    EXPECT_THAT(errorsOf(R"([{"id":1},{"id":2},{"id":1}])"), ElementsAre("links[2].id: another link has this id"));
}

TEST(LinksTest, EveryLinkOfTheBuiltInScenarioHasAPageOfItsOwn) {
    QFile file(QStringLiteral(":/devserver/scenarios/default.json"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const CScenario scenario = Read(file.readAll().toStdString());
    const Json::Value table = LinkTable(scenario, kOrigin);
    std::set<std::string> pages;

    for (const auto& right : scenario.Rights()) {
        for (const int32_t id : {right.links().mainbtn(), right.links().detailbtn(), right.links().detailsubbtn()}) {
            const std::string number = std::to_string(id);
            EXPECT_EQ(table[number], kOrigin + ("/link/" + number));
            const auto page = LinkPage(scenario, id);
            ASSERT_TRUE(page) << id;
            EXPECT_THAT(*page, AllOf(HasSubstr(number), HasSubstr("(right " + std::to_string(right.access()) + ")")));
            pages.insert(*page);
        }
    }

    const auto help = LinkPage(scenario, 202019001);
    ASSERT_TRUE(help);
    EXPECT_THAT(*help, AllOf(HasSubstr("<h1>Help</h1>"), HasSubstr("<p>The navigation")));
    pages.insert(*help);
    EXPECT_EQ(pages.size(), table.size());
    EXPECT_EQ(pages.size(), size_t(2 * scenario.Rights().size() + 2));
    EXPECT_THAT(*LinkPage(scenario, 202011732), HasSubstr("<h1>Membership centre</h1>"));
}

class LinkServerTest : public AdServerTest {
protected:
    std::string Origin() { return "http://127.0.0.1:" + std::to_string(server.HttpPort()); }
};

TEST_F(LinkServerTest, PageIsServedAndAnUnknownLinkIsNot) {
    ASSERT_EQ(Http("PUT", "/v1/scenario", kScenario).status, 200);

    const WebReply page = Web("GET", QStringLiteral("/link/11"));

    EXPECT_EQ(page.status, 200);
    EXPECT_EQ(page.type, "text/html; charset=utf-8");
    EXPECT_THAT(page.body, HasSubstr("<p>Link 11</p>"));
    for (const char* path : {"/link/15", "/link/0", "/link/-1", "/link/", "/link/11x", "/link/11/", "/link/4294967307",
                             "/link/99999999999999999999"}) {
        EXPECT_EQ(Web("GET", QString::fromLatin1(path)).status, 404) << path;
    }
    EXPECT_EQ(Web("POST", QStringLiteral("/link/11")).status, 405);
}

TEST_F(LinkServerTest, ClientGetsTheTableAfterConnectingAndWithANewScenario) {
    const auto client = Connected();
    const auto empty = client->Take(channel::Frame::LINKS);
    ASSERT_TRUE(empty);
    EXPECT_EQ(empty->body(), "{}");

    ASSERT_EQ(Http("PUT", "/v1/scenario", kScenario).status, 200);

    const auto changed = client->Take(channel::Frame::LINKS);
    ASSERT_TRUE(changed);
    EXPECT_EQ(FromJson(changed->body())["12"], Origin() + "/link/12");
    const auto next = Connected()->Take(channel::Frame::LINKS);
    ASSERT_TRUE(next);
    EXPECT_EQ(next->body(), changed->body());
}

TEST_F(LinkServerTest, ConfigurationAndOtherInfoNameTheServer) {
    ASSERT_EQ(Http("PUT", "/v1/scenario", kScenario).status, 200);
    ASSERT_EQ(Http("PUT", "/v1/config/b", R"({"c":"{server}{server} {serve"})").status, 200);
    ChannelClient client(server.ChannelPort(), kToken);
    const auto config = client.Take(channel::Frame::CONFIG);
    ASSERT_TRUE(config);

    EXPECT_EQ(FromJson(config->body())["a"], Origin() + "/x");
    EXPECT_EQ(FromJson(config->body())["b"]["c"], Origin() + Origin() + " {serve");
    EXPECT_EQ(Http("GET", "/v1/scenario").body["commonConfig"]["a"], "{server}/x");

    ASSERT_EQ(Http("PUT", "/v1/scenario",
                   R"({"schema":1,"commonConfig":{},"rights":[{"access":5,"otherInfo":{"t":"{server}/link/12"}}],
                       "users":[{"id":1,"name":"Ann","premium":{"rights":[{"access":5}]}}]})")
                  .status,
              200);
    const auto user = LoggedIn(1);
    const auto reply = user->Request(1, 20637, std::string("\x08\x01", 2));
    ASSERT_TRUE(reply);
    EXPECT_THAT(reply->body(), HasSubstr(R"({"t":")" + Origin() + R"(/link/12"})"));
}

}  // namespace
