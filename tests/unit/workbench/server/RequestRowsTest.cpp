#include <algorithm>
#include <set>

#include "FakeControlClient.h"
#include "Fields.h"
#include "support/ScriptedHostTest.h"
#include "workbench/server/RequestForm.h"

using namespace ::testing;

namespace {

/// A form whose fields are changed, and the request that it sends.
struct Sent {
    const char* name;  // of the row
    std::vector<std::pair<const char*, const char*>> texts;
    const char* request;
};

std::vector<const RequestRow*> AllRows() {
    std::vector<const RequestRow*> all{&requests::Clock(), &requests::Scenario()};
    for (const auto* rows : {&requests::Pushes(), &requests::Faults(), &requests::SetFaults(), &requests::OfUser(),
                             &requests::OfServer()}) {
        for (const RequestRow& row : *rows) {
            all.push_back(&row);
        }
    }
    return all;
}

const std::vector<Sent>& AllSent() {
    static const std::vector<Sent> all{
        {"Clock", {{"offsetMs", "-1500"}}, R"(PUT /v1/clock {"offsetMs":-1500})"},
        {"Scenario", {{"", R"({"b":1, "a":2})"}}, R"(PUT /v1/scenario {"a":2,"b":1})"},
        {"PushRights", {}, R"(POST /v1/push {"premiumChange":{"delaySeconds":5,"needAll":true}})"},
        {"PushRights",
         {{"premiumChange.delaySeconds", "4294967295"},
          {"premiumChange.needAll", "false"},
          {"premiumChange.access", " 5, 1000;-1"},
          {"user", "7"}},
         R"(POST /v1/push {"premiumChange":{"access":[5,1000,-1],"delaySeconds":4294967295,"needAll":false},"user":7})"},
        {"PushRights",
         {{"premiumChange.delaySeconds", ""}, {"premiumChange.needAll", ""}},
         R"(POST /v1/push {"premiumChange":{}})"},
        {"PushVip", {}, R"(POST /v1/push {"vipChange":{"windowSeconds":5}})"},
        {"PushVip", {{"vipChange.windowSeconds", ""}}, R"(POST /v1/push {"vipChange":{}})"},
        {"PushAdChange", {}, R"(POST /v1/push {"adChange":{"adPosition":42,"adType":2,"delay":0}})"},
        {"PushAdChange",
         {{"adChange.adType", "3"}, {"adChange.offlineAdIds", "18088 x-1,y"}},
         R"(POST /v1/push {"adChange":{"adPosition":42,"adType":3,"delay":0,"offlineAdIds":["18088","x-1","y"]}})"},
        {"PushAdCheck",
         {{"adCheck.adIds", "18091 18091"}},
         R"(POST /v1/push {"adCheck":{"adIds":["18091","18091"],"adPosition":42,"adType":2,"delay":0}})"},
        {"PushAdNew",
         {{"adNew.adType", ""}, {"adNew.adPosition", ""}, {"adNew.delay", "3"}},
         R"(POST /v1/push {"adNew":{"delay":3}})"},
        {"PushBytes", {{"command", "20837"}, {"bodyHex", "0A"}}, R"(POST /v1/push {"bodyHex":"0A","command":20837})"},
        {"PushBytes", {{"command", "1"}}, R"(POST /v1/push {"bodyHex":"","command":1})"},
        {"ReplyFault", {}, R"(PUT /v1/faults/20982 {"error":7,"times":1})"},
        {"ReplyFault",
         {{"{command}", "5"},
          {"error", ""},
          {"bodyHex", "0805"},
          {"replyCommand", "1"},
          {"frameHex", "ffff"},
          {"copies", "3"},
          {"delayMs", "3000"},
          {"silent", "true"},
          {"drop", "false"},
          {"times", ""}},
         R"(PUT /v1/faults/5 {"bodyHex":"0805","copies":3,"delayMs":3000,"drop":false,"frameHex":"ffff",)"
         R"("replyCommand":1,"silent":true})"},
        {"ResponseFault", {}, R"(PUT /v1/httpFaults/ad/search {"status":500,"times":1})"},
        {"ResponseFault",
         {{"{path}", "/pictures/a.png"},
          {"status", "404"},
          {"code", "3"},
          {"noData", "true"},
          {"body", "{\"a\": 1}"},
          {"bodyHex", "00"},
          {"redirect", "http://a/"},
          {"hugeMiB", "20"},
          {"cutBytes", "4294967295"},
          {"extraBytes", "9"},
          {"delayMs", "1"},
          {"silent", "false"}},
         R"(PUT /v1/httpFaults/pictures/a.png {"body":"{\"a\": 1}","bodyHex":"00","code":3,"cutBytes":4294967295,)"
         R"("delayMs":1,"extraBytes":9,"hugeMiB":20,"noData":true,"redirect":"http://a/","silent":false,)"
         R"("status":404,"times":1})"},
        {"RemoveReplyFault", {{"{command}", "5"}}, "DELETE /v1/faults/5 "},
        {"RemoveResponseFault", {}, "DELETE /v1/httpFaults/ad/search "},
        {"ReplyFaults", {{"", "{}"}}, "PUT /v1/faults {}"},
        {"ResponseFaults", {{"", R"({"/ad/check":{"code":1}})"}}, R"(PUT /v1/httpFaults {"/ad/check":{"code":1}})"},
        {"GrantRight",
         {{"{access}", "13"}, {"daysLeft", "5"}},
         R"(PUT /v1/users/7/rights/13 {"activationType":3,"daysLeft":5,"hasPermission":true})"},
        {"TakeRight", {{"{access}", "13"}}, "DELETE /v1/users/7/rights/13 "},
        {"UserPremium",
         {{"code", "null"}, {"message", "\"\""}, {"rights", R"([{"access":1}])"}},
         R"(PUT /v1/users/7/premium {"code":null,"message":"","rights":[{"access":1}]})"},
        {"UserVip",
         {{"basic.version", "1"}, {"basic.newState", "2"}, {"qualification", "true"}},
         R"(PUT /v1/users/7/vip {"basic":{"newState":2,"version":1},"qualification":true})"},
        {"UserActivation", {{"code", "1001"}}, R"(PUT /v1/users/7/activation {"code":1001})"},
        {"UserTrade", {{"", "false"}}, "PUT /v1/users/7/trade false"},
        {"UserTrade", {}, "PUT /v1/users/7/trade null"},
        {"UserAIChat",
         {{"entries", R"([{"scene":2,"allOpen":true}])"}, {"resultCode", "-1"}},
         R"(PUT /v1/users/7/aiChat {"entries":[{"allOpen":true,"scene":2}],"resultCode":-1})"},
        {"AdSlot",
         {{"{adPosition}", "43"}, {"campaigns", "[]"}, {"enableClose", "true"}},
         R"(PUT /v1/ads/2/43 {"campaigns":[],"enableClose":true})"},
        {"RemoveAdSlot", {}, "DELETE /v1/ads/2/42 "},
        {"Configuration", {{"", R"({"a":[1]})"}}, R"(PUT /v1/config/ai_chat {"a":[1]})"},
        {"DropConnections", {}, "POST /v1/drop {}"},
        {"DropConnections", {{"user", "18446744073709551615"}}, R"(POST /v1/drop {"user":18446744073709551615})"},
    };
    return all;
}

class RequestRowsTest : public ScriptedHostTest {
protected:
    CFakeControlClient server;
};

}  // namespace

TEST_F(RequestRowsTest, FormSendsTheRequestOfItsRow) {
    std::set<std::string> tested;
    for (const Sent& sent : AllSent()) {
        const auto rows = AllRows();
        const auto row = std::find_if(rows.begin(), rows.end(),
                                      [&](const RequestRow* each) { return std::string(each->name) == sent.name; });
        ASSERT_NE(row, rows.end()) << sent.name;
        tested.insert(sent.name);
        CRequestForm form(**row, server, QStringLiteral("7"));
        for (const auto& [key, text] : sent.texts) {
            Write(form, key, text);
        }

        form.Send();

        EXPECT_EQ(server.Last(), sent.request);
    }
    for (const RequestRow* row : AllRows()) {
        EXPECT_EQ(tested.count(row->name), 1u) << row->name;
    }
}

TEST_F(RequestRowsTest, EveryFieldIsAWidgetOfItsOwnWithALabelAndAName) {
    for (const RequestRow* row : AllRows()) {
        CRequestForm form(*row, server);
        std::set<QString> names;
        for (const QWidget* widget : form.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
            if ((widget->focusPolicy() & Qt::TabFocus) && !widget->inherits("QPushButton")) {
                EXPECT_FALSE(widget->accessibleName().isEmpty()) << row->name;
                EXPECT_TRUE(names.insert(widget->objectName()).second) << widget->objectName().toStdString();
            }
        }
        EXPECT_GE(names.size(), row->fields.size()) << row->name;
    }
}

TEST_F(RequestRowsTest, FormForAValueShowsItAndSendsItBackUnchanged) {
    struct Current {
        const char* name;
        const char* value;
    };
    const QByteArray scenario = R"({"commonConfig":{"ai_chat":{"b":[1,"é"]}},
        "ads":[{"adType":3,"adPosition":42},{"adType":2,"adPosition":42,"showInterval":9,"future":{"x":1}}],
        "users":[{"id":8},{"id":7,"premium":{"code":null,"rights":[{"access":5,"daysLeft":0,"new":1}]},
            "vip":{"basic":{"level":3,"other":4},"entry":{"mainTitle":{"en":"A"}}},"activation":{"silent":true},
            "trade":false,"aiChat":{"resultMessage":"","entries":[{"scene":2,"stockDetails":[{"type":1}]}]}}]})";
    for (const Current& current :
         {Current{"UserPremium", R"({"code":null,"rights":[{"access":5,"daysLeft":0,"new":1}]})"},
          Current{"UserVip", R"({"basic":{"level":3,"other":4},"entry":{"mainTitle":{"en":"A"}}})"},
          Current{"UserActivation", R"({"silent":true})"}, Current{"UserTrade", "false"},
          Current{"UserAIChat", R"({"entries":[{"scene":2,"stockDetails":[{"type":1}]}],"resultMessage":""})"},
          Current{"GrantRight", R"({"access":5,"daysLeft":0,"new":1})"},
          Current{"AdSlot", R"({"adPosition":42,"adType":2,"future":{"x":1},"showInterval":9})"},
          Current{"Configuration", R"({"b":[1,"é"]})"}}) {
        const auto rows = AllRows();
        const auto row = std::find_if(rows.begin(), rows.end(),
                                      [&](const RequestRow* each) { return std::string(each->name) == current.name; });
        CRequestForm form(**row, server, QStringLiteral("7"));
        if ((*row)->fields.front().key == "{access}") {
            Write(form, "{access}", "5");
        }
        form.Load();
        EXPECT_EQ(server.Last(), "GET /v1/scenario ") << current.name;
        server.Answer(scenario);

        form.Send();

        EXPECT_EQ(server.wishes.back().json, current.value) << current.name;
    }
}
