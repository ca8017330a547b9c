// The ads that are built in: each shows one thing that a client must do with them.
#include <gmock/gmock.h>

#include <QFile>

#include "AdAnswer.h"
#include "Pictures.h"
#include "RowName.h"

namespace {

using devserver::AdSlot;
using devserver::AnswerAdSearch;
using devserver::Audience;
using devserver::Campaign;
using devserver::CScenario;
using devserver::Errors;
using devserver::Language;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int64_t kNow = 1'800'000'000;

class DefaultAdsTest : public testing::Test {
protected:
    DefaultAdsTest() {
        QFile file(QStringLiteral(":/devserver/scenarios/default.json"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        Errors errors;
        scenario = CScenario::FromText(file.readAll().toStdString(), errors);
        EXPECT_THAT(errors, IsEmpty());
    }

    std::vector<std::string> Due(int32_t type, int32_t position, const Audience& audience = {}) const {
        std::vector<std::string> ids;
        const Json::Value answer = AnswerAdSearch({type, position, {}}, audience, {*scenario, kNow, ""});
        for (const Json::Value& ad : answer["data"]["ad"]) {
            ids.push_back(ad["ad_id"].asString());
        }
        return ids;
    }

    const AdSlot& Slot(int32_t position) const {
        for (const AdSlot& slot : scenario->Ads()) {
            if (slot.adPosition == position) {
                return slot;
            }
        }
        throw std::out_of_range("no such position");
    }

    std::optional<CScenario> scenario;
};

TEST_F(DefaultAdsTest, PopupsAreDueInAllTabsAndTheOnesOutOfTheirWindowsAreNot) {
    EXPECT_THAT(Due(2, 42), ElementsAre("18088", "18089"));
    EXPECT_THAT(Due(2, 42, {20007, Language::English}), ElementsAre("18087", "18088", "18089"));

    EXPECT_EQ(Slot(42).campaigns.size(), 6u);
    EXPECT_TRUE(Slot(42).enableClose);
    for (const Campaign& campaign : Slot(42).campaigns) {
        EXPECT_EQ(campaign.popupType, 2) << campaign.id;
    }
    EXPECT_THAT(Slot(42).campaigns.at(1).showAreas, ElementsAre(500, 501, 502, 503, 504, 505, 506, 507));
    EXPECT_THAT(Slot(42).campaigns.at(2).showAreas, ElementsAre(500, 503));
}

struct LanguageRow {
    const char* name;
    Language language;
    const char* first;
};

class DefaultBannerTest : public DefaultAdsTest, public testing::WithParamInterface<LanguageRow> {};

TEST_P(DefaultBannerTest, HasOneOfItsOwnInEachLanguage) {
    EXPECT_THAT(Due(3, 7, {20001, GetParam().language}), ElementsAre(GetParam().first, "18105", "18106"));
}

INSTANTIATE_TEST_SUITE_P(Rows, DefaultBannerTest,
                         testing::Values(LanguageRow{"English", Language::English, "18100"},
                                         LanguageRow{"SimplifiedChinese", Language::SimplifiedChinese, "18101"},
                                         LanguageRow{"TraditionalChinese", Language::TraditionalChinese, "18102"},
                                         LanguageRow{"Japanese", Language::Japanese, "18103"},
                                         LanguageRow{"French", Language::French, "18104"}),
                         RowName());

TEST_F(DefaultAdsTest, BannersOfTheSecondPlaceAreForUsersAndLanguages) {
    EXPECT_THAT(Due(3, 9), ElementsAre("18142"));
    EXPECT_THAT(Due(3, 9, {20001, Language::English}), ElementsAre("18140", "18142"));
    EXPECT_THAT(Due(3, 9, {10001, Language::French}), ElementsAre("18141", "18142"));
    EXPECT_EQ(Slot(9).campaigns.size(), 5u);
}

TEST_F(DefaultAdsTest, OtherPlacesShowWhatAClientMustBear) {
    EXPECT_EQ(Slot(7).bannerPosition->bannerType, 2);
    EXPECT_EQ(Slot(8).bannerPosition->bannerType, 1);  // shows the first alone
    EXPECT_THAT(Due(3, 8), ElementsAre("18120", "18121"));
    EXPECT_EQ(Slot(10).bannerPosition->bannerType, 0);  // of no known type
    EXPECT_THAT(Due(3, 10), ElementsAre("18160"));
    EXPECT_THAT(Due(3, 11), ElementsAre("18180", "18181"));
    EXPECT_THAT(Due(3, 12), IsEmpty());
}

TEST_F(DefaultAdsTest, EveryPictureIsThereButTheOneThatIsMeantToBeMissing) {
    devserver::CPictures pictures;
    for (const AdSlot& slot : scenario->Ads()) {
        for (const Campaign& campaign : slot.campaigns) {
            EXPECT_EQ(pictures.Find(campaign.image).has_value(), campaign.id != "18180") << campaign.id;
        }
    }
}

}  // namespace
