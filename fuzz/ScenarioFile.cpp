// Input: texts that testers and clients send to the development server: scenarios, bodies of the control API, HTTP
// requests and reports.
#include <gtest/gtest.h>

#include <set>

#include "AdAnswer.h"
#include "Faults.h"
#include "FuzzTarget.h"
#include "HttpFaults.h"
#include "PushRequest.h"
#include "ReportSink.h"
#include "Scenario.h"

using namespace devserver;

namespace {

// A search returns a subset of the campaigns, and a check finds each campaign by its id.
void CheckSlot(const AdSlot& slot, const CScenario& scenario) {
    const AdSurroundings surroundings{scenario, 1'700'000'000, "http://a/"};
    AdQuery query{slot.adType, slot.adPosition, {}};
    for (const Campaign& campaign : slot.campaigns) {
        query.adIds.push_back(campaign.id);
    }
    const Json::Value due = AnswerAdSearch(query, {1, Language::French}, surroundings);
    EXPECT_LE(due["data"]["ad"].size(), slot.campaigns.size());
    EXPECT_EQ(AnswerAdCheck(query, surroundings)["data"]["ad"].size(), slot.campaigns.size());
}

void CheckScenario(const std::string& text) {
    Errors errors;
    const auto scenario = CScenario::FromText(text, errors);
    EXPECT_EQ(scenario.has_value(), errors.empty());
    if (!scenario) {
        return;
    }
    for (const User& user : scenario->Users()) {
        EXPECT_EQ(scenario->FindUser(user.id), &user);
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
    const auto table = FaultsFromText(text, errors);
    EXPECT_EQ(table.has_value(), errors.empty());
    if (!table) {
        return;
    }
    CFaults faults;
    faults.Set(*table);
    for (const auto& [command, fault] : *table) {
        EXPECT_TRUE(faults.Take(command));
        EXPECT_EQ(faults.Take(command).has_value(), !fault.times || *fault.times > 1);
    }
}

void CheckHttpFaults(const std::string& text) {
    Errors errors;
    const auto table = HttpFaultsFromText(text, errors);
    EXPECT_EQ(table.has_value(), errors.empty());
    if (!table) {
        return;
    }
    for (const auto& [path, fault] : *table) {
        EXPECT_TRUE(IsServedPath(path));
        WebAnswer answer;
        answer.body = R"({"code":0,"data":{}})";
        const int status = Struck(answer, fault).status;
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
    // A resent batch is accepted and counts nothing twice.
    EXPECT_EQ(sink.Take(text, errors), first);
    EXPECT_EQ(sink.Counted(), ids.size());
    EXPECT_EQ(sink.Counted() + sink.Resends(), 2 * (*first)["accepted"].size());
}

template <class T>
void CheckMember(const std::string& text, T (*read)(const CJsonNode&)) {
    Errors errors;
    const auto member = ReadJson(text, kScenarioDepth, read, errors);
    EXPECT_EQ(member.has_value(), errors.empty());
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    CheckScenario(text);
    CheckFaults(text);
    CheckMember(text, ReadAiChat);
    CheckMember(text, ReadPremium);
    CheckMember(text, ReadVip);
    CheckMember(text, ReadPushRequest);
    CheckHttpFaults(text);
    CheckReports(text);
    CheckMember(text, ReadAds);
    CheckMember(text, ReadAdQuery);
    CheckMember(text, ReadExposure);
    return 0;
}
