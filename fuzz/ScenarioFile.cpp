// JSON that testers and clients send to the development server: scenarios, control requests, ad requests and reports.
#include <gtest/gtest.h>

#include <set>

#include "AdAnswer.h"
#include "CommandAnswers.h"
#include "Faults.h"
#include "FuzzTarget.h"
#include "HttpFaults.h"
#include "PushRequest.h"
#include "ReportSink.h"
#include "Scenario.h"

using namespace devserver;

namespace {

// A search finds campaigns of the slot only, and a check finds each campaign.
void CheckSlot(const AdSlot& slot, const CScenario& scenario) {
    const AdContext context{scenario, 1'700'000'000, "http://a/"};
    AdQuery query;
    query.set_ad_type(slot.adtype());
    query.set_ad_position(slot.adposition());
    for (const Campaign& campaign : slot.campaigns()) {
        query.add_ad_id(campaign.id());
    }
    const Json::Value due = AnswerAdSearch(query, {1, Language::French}, context);
    EXPECT_LE(int(due["data"]["ad"].size()), slot.campaigns_size());
    EXPECT_EQ(int(AnswerAdCheck(query, context)["data"]["ad"].size()), slot.campaigns_size());
}

// Each command is answered, and each member can be set again.
void CheckUser(const User& user, CScenario scenario) {
    EXPECT_EQ(scenario.FindUser(user.id())->name(), user.name());
    for (const uint32_t command : {20637u, 20831u, 20982u}) {
        EXPECT_EQ(AnswerCommand(command, {scenario, user, Language::French}, "\x08\x01").error, kErrorNone) << command;
    }
    Errors errors;
    const Json::Value aiChat = Json::objectValue;
    EXPECT_TRUE(scenario.SetOfUser(user.id(), "aiChat", aiChat, errors)) << testing::PrintToString(errors);
    EXPECT_TRUE(CScenario::FromText(WriteJson(scenario.ToJson()), errors)) << testing::PrintToString(errors);
}

void CheckScenario(const std::string& text) {
    Errors errors;
    const auto scenario = CScenario::FromText(text, errors);
    EXPECT_EQ(scenario.has_value(), errors.empty());
    if (!scenario) {
        return;
    }
    for (const User& user : scenario->Users()) {
        CheckUser(user, *scenario);
    }
    for (const AdSlot& slot : scenario->Ads()) {
        CheckSlot(slot, *scenario);
    }
    const std::string written = WriteJson(scenario->ToJson());
    const auto again = CScenario::FromText(written, errors);
    EXPECT_TRUE(again && WriteJson(again->ToJson()) == written) << written;
}

void CheckFaults(const std::string& text) {
    Errors errors;
    const auto table = ReadReplyFaults(text, errors);
    EXPECT_EQ(table.has_value(), errors.empty());
    if (!table) {
        return;
    }
    CReplyFaults faults;
    faults.Set(*table);
    for (const auto& [command, fault] : *table) {
        EXPECT_TRUE(faults.Take(command));
        EXPECT_EQ(faults.Take(command).has_value(), !fault.has_times() || fault.times() > 1);
    }
}

void CheckHttpFaults(const std::string& text) {
    Errors errors;
    const auto table = ReadResponseFaults(text, errors);
    EXPECT_EQ(table.has_value(), errors.empty());
    if (!table) {
        return;
    }
    for (const auto& [path, fault] : *table) {
        EXPECT_TRUE(IsServedPath(path));
        WebAnswer answer;
        answer.body = R"({"code":0,"data":{}})";
        const int status = ApplyFault(answer, fault).status;
        EXPECT_TRUE(status >= 200 && status < 600) << status;
        EXPECT_TRUE(status < 300 || RefusesRequest(fault)) << status;
    }
}

void CheckReports(const std::string& text) {
    CReportSink sink;
    Errors errors;
    const auto first = sink.Take(text, errors);
    EXPECT_EQ(first.has_value(), errors.empty());
    if (!first) {
        return;
    }
    std::set<std::string> ids;
    for (const Json::Value& id : (*first)["accepted"]) {
        ids.insert(id.asString());
    }
    // A resent batch is accepted again and not counted.
    EXPECT_EQ(sink.Take(text, errors), first);
    EXPECT_EQ(sink.Counted(), ids.size());
    EXPECT_EQ(sink.Counted() + sink.Resends(), 2 * (*first)["accepted"].size());
}

template <class Message>
void CheckMessage(const std::string& text) {
    Errors errors;
    const auto message = ReadText<Message>(text, errors);
    EXPECT_EQ(message.has_value(), errors.empty());
}

void CheckPush(const std::string& text) {
    Errors errors;
    const auto push = ReadPush(text, errors);
    EXPECT_EQ(push.has_value(), errors.empty());
    EXPECT_TRUE(!push || push->command > 0);
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    CheckScenario(text);
    CheckFaults(text);
    CheckPush(text);
    CheckHttpFaults(text);
    CheckReports(text);
    CheckMessage<ClockRequest>(text);
    CheckMessage<AdQuery>(text);
    CheckMessage<Exposure>(text);
    return 0;
}
