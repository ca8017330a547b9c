// The users that are built in: each shows one state of the rights and of the membership.
#include <gmock/gmock.h>

#include <QFile>
#include <set>

#include "CommandAnswers.h"
#include "RowName.h"
#include "premium_svr.pb.h"

namespace {

using namespace devserver;
using testing::ElementsAre;
using testing::Gt;
using testing::IsEmpty;
using testing::Lt;

constexpr size_t kAllRights = 46;

class DefaultScenarioTest : public testing::Test {
protected:
    DefaultScenarioTest() {
        QFile file(QStringLiteral(":/devserver/scenarios/default.json"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        Errors errors;
        scenario = CScenario::FromText(file.readAll().toStdString(), errors);
        EXPECT_THAT(errors, IsEmpty());
    }

    const UserRight* Right(uint64_t user, int32_t access) const {
        for (const UserRight& right : scenario->FindUser(user)->premium->rights) {
            if (right.access == access) {
                return &right;
            }
        }
        return nullptr;
    }

    std::set<int32_t> ActivationTypes(uint64_t user) const {
        std::set<int32_t> types;
        for (const UserRight& right : scenario->FindUser(user)->premium->rights) {
            types.insert(right.activationType.value_or(0));
        }
        return types;
    }

    std::optional<CScenario> scenario;
};

struct UserRow {
    const char* name;
    uint64_t id;
    const char* fullName;
    std::optional<uint32_t> version;
    std::optional<uint32_t> newState;
    std::optional<uint32_t> newSubState;
    std::optional<int32_t> autoRenewal;
    std::optional<int32_t> state;
    std::optional<uint32_t> level;
    std::optional<bool> trade;
    size_t rights;
};

class DefaultUserTest : public DefaultScenarioTest, public testing::WithParamInterface<UserRow> {};

TEST_P(DefaultUserTest, IsWhatTheNameSays) {
    const UserRow& row = GetParam();

    const User* user = scenario->FindUser(row.id);

    ASSERT_TRUE(user);
    EXPECT_EQ(user->name, row.fullName);
    EXPECT_EQ(user->trade, row.trade);
    ASSERT_TRUE(user->vip && user->premium);
    const VipBasic basic = user->vip->basic.value_or(VipBasic());
    EXPECT_EQ(basic.version, row.version);
    EXPECT_EQ(basic.newState, row.newState);
    EXPECT_EQ(basic.newSubState, row.newSubState);
    EXPECT_EQ(basic.autoRenewal, row.autoRenewal);
    EXPECT_EQ(basic.state, row.state);
    EXPECT_EQ(basic.level, row.level);
    EXPECT_EQ(user->premium->head.code, 0);
    EXPECT_TRUE(user->premium->data);
    EXPECT_EQ(user->premium->rights.size(), row.rights);
}

constexpr auto kNone = std::nullopt;

INSTANTIATE_TEST_SUITE_P(
    Rows, DefaultUserTest,
    testing::Values(UserRow{"Free", 20001, "Hana Free", 1, 0, 0, 0, 0, 0, false, 46},
                    UserRow{"Trial", 20002, "Ivo Trial", 1, 1, 101, 0, 1, 1, false, 46},
                    UserRow{"Monthly", 20003, "Jade Monthly", 1, 1, 103, 1, 1, 1, true, 46},
                    UserRow{"MonthlyOff", 20004, "Kurt MonthlyOff", 1, 1, 103, 2, 1, 1, true, 46},
                    UserRow{"Gift", 20005, "Lena Gift", 1, 1, 102, 0, 1, 1, kNone, 46},
                    UserRow{"AssetProtection", 20006, "Milo AssetProtection", 1, 1, 106, 0, 1, 1, true, 46},
                    UserRow{"Expired", 20007, "Nora Expired", 1, 2, 103, 2, 0, 0, true, 46},
                    UserRow{"LegacyGrade1", 20008, "Otto LegacyGrade1", 0, kNone, kNone, kNone, 1, 1, true, 46},
                    UserRow{"LegacyGrade2", 20009, "Pia LegacyGrade2", 0, kNone, kNone, kNone, 1, 2, true, 46},
                    UserRow{"LegacyGrade3", 20010, "Quinn LegacyGrade3", 0, kNone, kNone, kNone, 1, 3, false, 46},
                    UserRow{"LegacyGrade4", 20011, "Rosa LegacyGrade4", 0, kNone, kNone, kNone, 1, 4, kNone, 46},
                    UserRow{"Ready", 20012, "Sven Ready", 0, kNone, kNone, kNone, 0, 0, false, 7},
                    UserRow{"Frozen", 20013, "Tara Frozen", 0, kNone, kNone, kNone, 0, 0, true, 7},
                    UserRow{"Limited0", 20014, "Umar Limited0", 0, kNone, kNone, kNone, 0, 0, false, 6},
                    UserRow{"Limited1", 20015, "Vera Limited1", 0, kNone, kNone, kNone, 0, 0, kNone, 6},
                    UserRow{"Limited5", 20016, "Walt Limited5", 0, kNone, kNone, kNone, 0, 0, false, 6},
                    UserRow{"EmptyRights", 20017, "Xena EmptyRights", kNone, kNone, kNone, kNone, kNone, kNone, kNone,
                            0}),
    RowName());

TEST_F(DefaultScenarioTest, LimitedUsersHaveTheDaysOfTheirNames) {
    for (const auto& [user, days] : {std::pair(20014, 0), std::pair(20015, 1), std::pair(20016, 5)}) {
        for (const UserRight& right : scenario->FindUser(uint64_t(user))->premium->rights) {
            EXPECT_EQ(right.activationType, 1) << user;
            EXPECT_EQ(right.daysLeft, days) << user;
        }
    }
    EXPECT_EQ(Right(20002, 1000)->activationType, 1);
    EXPECT_THAT(*Right(20002, 1000)->daysLeft, Gt(0));
}

TEST_F(DefaultScenarioTest, RightsAreInTheStateOfTheirUser) {
    EXPECT_THAT(ActivationTypes(20001), ElementsAre(3, 5));
    EXPECT_THAT(ActivationTypes(20002), ElementsAre(1));
    EXPECT_THAT(ActivationTypes(20003), ElementsAre(3));
    EXPECT_THAT(ActivationTypes(20007), ElementsAre(3, 5));
    EXPECT_THAT(ActivationTypes(20010), ElementsAre(3));
    EXPECT_EQ(Right(20012, 1000)->activationType, 6);
    EXPECT_EQ(Right(20012, 1000)->hasPermission, false);
    EXPECT_EQ(Right(20013, 1000)->activationType, 2);
    EXPECT_EQ(Right(20003, 1000)->activationSource, web_premium_access::VipRule);
}

TEST_F(DefaultScenarioTest, RightsThatCanBeReadySayWhereTheirPopupLeads) {
    std::set<int32_t> ready{1000};
    for (const UserRight& right : scenario->FindUser(20012)->premium->rights) {
        if (right.activationType == 6) {
            ready.insert(right.access);
        }
    }

    EXPECT_THAT(ready.size(), Gt(1u));
    for (const int32_t access : ready) {
        const Json::Value& info = *scenario->Rights().at(access).otherInfo;
        EXPECT_THAT(info["active_premium_popup_info"]["target_url"].asString(),
                    testing::MatchesRegex("https://[a-z]+\\.zrgrowth\\.example/.+"))
            << access;
    }
}

TEST_F(DefaultScenarioTest, TheCatalogueShowsEveryRightInEveryLanguage) {
    ASSERT_EQ(scenario->Rights().size(), kAllRights);
    for (const auto& [access, display] : scenario->Rights()) {
        EXPECT_TRUE(web_premium_access::PremiumAccess_IsValid(access)) << access;
        EXPECT_THAT(display.uiType.value_or(""), testing::MatchesRegex("[A-Z]")) << access;
        EXPECT_TRUE(display.otherInfo && display.otherInfo->isObject()) << access;
        ASSERT_TRUE(display.links && display.texts) << access;
        EXPECT_THAT(display.links->mainBtn.value_or(0), Gt(0)) << access;
        EXPECT_EQ(display.texts->size(), kLanguageKeys.size()) << access;
        for (const auto& [language, texts] : *display.texts) {
            for (const auto& text : {texts.mainTitle, texts.mainBtn, texts.detailTitle, texts.detailSubTitle,
                                     texts.detailBtn, texts.detailSubBtn}) {
                EXPECT_NE(text.value_or(""), "") << access << " in language " << int(language);
            }
        }
    }
}

TEST_F(DefaultScenarioTest, AllRightsInOneLanguageMakeAnAnswerOfAboutTwentyThousandBytes) {
    for (const LanguageKey& language : kLanguageKeys) {
        const CommandAnswer answer =
            AnswerCommand(20637, {*scenario, *scenario->FindUser(20003), language.language}, "\x08\x01");

        web_premium_access::GetUiMsgAndPremiumAccessRsp parsed;
        ASSERT_TRUE(parsed.ParseFromString(answer.body));
        EXPECT_EQ(size_t(parsed.data().ui_data_and_access_data_size()), kAllRights);
        EXPECT_THAT(answer.body.size(), Gt(17'000u)) << language.key;
        EXPECT_THAT(answer.body.size(), Lt(23'000u)) << language.key;
    }
}

}  // namespace
