// The texts that testers hand to the development server: scenarios, and the bodies of its control interface.
#include <gtest/gtest.h>

#include "Faults.h"
#include "FuzzTarget.h"
#include "PushRequest.h"
#include "Scenario.h"

using namespace devserver;

namespace {

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
    return 0;
}
