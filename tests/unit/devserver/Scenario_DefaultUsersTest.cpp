// Each built-in user shows one state of rights and membership.
#include <gmock/gmock.h>

#include <QFile>
#include <map>
#include <set>

#include "CommandAnswers.h"
#include "Pictures.h"
#include "RowName.h"
#include "premium_svr.pb.h"

namespace {

using namespace devserver;
using testing::ElementsAre;
using testing::Gt;
using testing::IsEmpty;
using testing::Lt;

constexpr size_t kAllRights = 46;

template <class T>
std::optional<T> Optional(bool has, T value) {
    return has ? std::make_optional(value) : std::nullopt;
}

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
        for (const UserRight& right : scenario->FindUser(user)->premium().rights()) {
            if (right.access() == access) {
                return &right;
            }
        }
        return nullptr;
    }

    std::set<int32_t> ActivationTypes(uint64_t user) const {
        std::set<int32_t> types;
        for (const UserRight& right : scenario->FindUser(user)->premium().rights()) {
            types.insert(right.activationtype());
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
    EXPECT_EQ(user->name(), row.fullName);
    EXPECT_EQ(Optional(user->has_trade(), user->trade()), row.trade);
    ASSERT_TRUE(user->has_vip() && user->has_premium());
    const VipBasic& basic = user->vip().basic();
    EXPECT_EQ(Optional(basic.has_version(), basic.version()), row.version);
    EXPECT_EQ(Optional(basic.has_newstate(), basic.newstate()), row.newState);
    EXPECT_EQ(Optional(basic.has_newsubstate(), basic.newsubstate()), row.newSubState);
    EXPECT_EQ(Optional(basic.has_autorenewal(), basic.autorenewal()), row.autoRenewal);
    EXPECT_EQ(Optional(basic.has_state(), basic.state()), row.state);
    EXPECT_EQ(Optional(basic.has_level(), basic.level()), row.level);
    EXPECT_EQ(AnswerCode(user->premium().code()), 0);
    EXPECT_TRUE(user->premium().data());
    EXPECT_EQ(size_t(user->premium().rights_size()), row.rights);
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
                            0},
                    UserRow{"EveryType", 20018, "Yuri EveryType", 0, kNone, kNone, kNone, 0, 0, true, 6}),
    RowName());

TEST_F(DefaultScenarioTest, LimitedUsersHaveTheDaysOfTheirNames) {
    for (const auto& [user, days] : {std::pair(20014, 0), std::pair(20015, 1), std::pair(20016, 5)}) {
        for (const UserRight& right : scenario->FindUser(uint64_t(user))->premium().rights()) {
            EXPECT_EQ(right.activationtype(), 1) << user;
            EXPECT_EQ(right.daysleft(), days) << user;
        }
    }
    EXPECT_EQ(Right(20002, 1000)->activationtype(), 1);
    EXPECT_THAT(Right(20002, 1000)->daysleft(), Gt(0));
}

TEST_F(DefaultScenarioTest, RightsAreInTheStateOfTheirUser) {
    EXPECT_THAT(ActivationTypes(20001), ElementsAre(3, 5));
    EXPECT_THAT(ActivationTypes(20002), ElementsAre(1));
    EXPECT_THAT(ActivationTypes(20003), ElementsAre(3));
    EXPECT_THAT(ActivationTypes(20007), ElementsAre(2, 3));
    EXPECT_THAT(ActivationTypes(20010), ElementsAre(3));
    EXPECT_EQ(Right(20012, 1000)->activationtype(), 6);
    EXPECT_EQ(Right(20012, 1000)->haspermission(), false);
    EXPECT_EQ(Right(20013, 1000)->activationtype(), 2);
    EXPECT_EQ(Right(20003, 1000)->activationsource(), web_premium_access::VipRule);
}

TEST_F(DefaultScenarioTest, OneUserHasEachActivationTypeOfALockingLayout) {
    EXPECT_THAT(ActivationTypes(20018), ElementsAre(1, 2, 3, 4, 5, 6));
    for (const UserRight& right : scenario->FindUser(20018)->premium().rights()) {
        EXPECT_EQ(right.activationsource(), web_premium_access::VipRule);
        EXPECT_EQ(scenario->FindRight(right.access())->uitype(), "D");
    }
    EXPECT_THAT(scenario->FindUser(20018)->activation().code().number_value(), Gt(1001));
}

// Rights and membership alone, as no page shows the rest.
TEST_F(DefaultScenarioTest, UsersCanBeToldApart) {
    std::map<std::string, std::string> seen;
    for (const User& user : scenario->Users()) {
        if (user.id() < 20000) {
            continue;
        }
        std::string looks = std::to_string(user.vip().basic().state()) + std::to_string(user.vip().basic().level());
        for (const UserRight& right : user.premium().rights()) {
            looks += "|" + std::to_string(right.access()) + ":" + std::to_string(right.activationtype()) + "," +
                     std::to_string(right.daysleft());
        }
        const auto [other, isNew] = seen.emplace(looks, user.name());
        EXPECT_TRUE(isNew) << user.name() << " looks like " << other->second;
    }
    EXPECT_EQ(seen.size(), 18u);
}

TEST_F(DefaultScenarioTest, PopupPicturesAreThereForEachMarketAndLanguage) {
    CPictures pictures;
    const Json::Value& markets = scenario->CommonConfig()["premium_active_popup_image"]["image_info"];
    EXPECT_THAT(markets.getMemberNames(), ElementsAre("AU", "CA", "JP", "MY", "SG", "US"));
    for (const std::string& market : markets.getMemberNames()) {
        EXPECT_THAT(markets[market].getMemberNames(), ElementsAre("en", "fr", "ja", "zh-Hans", "zh-Hant"));
        for (const std::string& language : markets[market].getMemberNames()) {
            const std::string name = "activation_" + market + "_" + language + ".png";
            EXPECT_EQ(markets[market][language], "{server}/pictures/" + name);
            EXPECT_TRUE(pictures.Find(name)) << name;
        }
    }
}

TEST_F(DefaultScenarioTest, RightsThatCanBeReadySayWhereTheirPopupLeads) {
    std::set<int32_t> ready{1000};
    for (const UserRight& right : scenario->FindUser(20012)->premium().rights()) {
        if (right.activationtype() == 6) {
            ready.insert(right.access());
        }
    }

    EXPECT_THAT(ready.size(), Gt(1u));
    Errors errors;
    for (const int32_t access : ready) {
        const Json::Value info = ParseJson(scenario->FindRight(access)->otherinfo(), errors).value();
        EXPECT_EQ(info["active_premium_popup_info"]["target_url"].asString(),
                  "{server}/link/" + std::to_string(scenario->FindRight(access)->links().detailsubbtn()))
            << access;
    }
}

TEST_F(DefaultScenarioTest, TheCatalogueShowsEveryRightInEveryLanguage) {
    int rights = 0;
    for (int access = 0; access <= 1000; ++access) {
        const RightDisplay* display = scenario->FindRight(access);
        if (!display) {
            continue;
        }
        ++rights;
        EXPECT_TRUE(web_premium_access::PremiumAccess_IsValid(access)) << access;
        EXPECT_THAT(display->uitype(), testing::MatchesRegex("[A-Z]")) << access;
        EXPECT_THAT(display->otherinfo(), testing::StartsWith("{")) << access;
        EXPECT_THAT(display->links().mainbtn(), Gt(0)) << access;
        const RightTexts& texts = display->texts();
        EXPECT_TRUE(texts.has_zhhans() && texts.has_zhhant() && texts.has_ja() && texts.has_fr()) << access;
        for (const LanguageKey& language : kLanguageKeys) {
            const RightText& text = TextIn(texts, language.language);
            for (const std::string& part : {text.maintitle(), text.mainbtn(), text.detailtitle(), text.detailsubtitle(),
                                            text.detailbtn(), text.detailsubbtn()}) {
                EXPECT_NE(part, "") << access << " in " << language.key;
            }
        }
    }
    EXPECT_EQ(rights, int(kAllRights));
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
