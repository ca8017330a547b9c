// JSON that no server of ours would send: a decoder answers true without a word, or false with one line.
#include <gmock/gmock.h>
#include <json/json.h>
#include <malloc.h>

#include <functional>
#include <random>

#include "Ad/AdSamples.h"
#include "Ad/Model/ZRAdBannerModel.h"
#include "Ad/Model/ZRAdPopupModel.h"
#include "support/ScriptedHostTest.h"

using namespace ::testing;

namespace {

const std::vector<Json::Value>& StrangeValues() {
    static const std::vector<Json::Value> values = [] {
        std::vector<Json::Value> made;
        for (const char* text : {"null",
                                 "true",
                                 "false",
                                 "0",
                                 "5",
                                 "-1",
                                 "2147483648",
                                 "-2147483649",
                                 "9223372036854775808",
                                 "18446744073709551615",
                                 "1.5",
                                 "1e300",
                                 "-1e300",
                                 "2.0",
                                 "\"\"",
                                 "\"5\"",
                                 "[]",
                                 "[null]",
                                 "[[[]]]",
                                 "[{}]",
                                 "{}",
                                 "{\"x\": []}",
                                 "{\"0\": 1, \"ad_id\": {\"ad_id\": []}}"}) {
            made.push_back(JsonOf(text));
        }
        made.emplace_back("\xFF\xC0\x80");
        made.emplace_back(std::string("\0", 1));
        made.emplace_back(std::string(1 << 20, 'x'));
        return made;
    }();
    return values;
}

/// Calls `visit` with this place and each below it.
void ForEachPlace(Json::Value& place, const std::function<void(Json::Value&)>& visit) {
    visit(place);
    if (place.isObject()) {
        for (const std::string& name : place.getMemberNames()) {
            ForEachPlace(place[name], visit);
        }
    } else if (place.isArray()) {
        for (Json::ArrayIndex i = 0; i < place.size(); ++i) {
            ForEachPlace(place[i], visit);
        }
    }
}

class AdHostileJsonTest : public ScriptedHostTest {
protected:
    /// Whether it decoded; the line of a refusal is checked, and kept.
    bool Decode(const Json::Value& value) {
        CZRAdResponseModel response(nullptr);
        bool decoded = false;
        EXPECT_NO_THROW(decoded = response.Decode(value));
        if (decoded) {
            response.GetData()->setParent(&response);
            EXPECT_THAT(log.Lines(), IsEmpty());
        } else {
            const auto lines = log.Lines();
            EXPECT_THAT(lines, SizeIs(1));
            for (const LogLine& line : lines) {
                EXPECT_THAT(line.text, StartsWith("[Ad] CZRAd"));
                EXPECT_THAT(line.text, HasSubstr(" decode failed, "));
                EXPECT_THAT(line.text, EndsWith(" is unvalid"));
            }
        }
        log.Forget();
        return decoded;
    }

    void PutEachStrangeValueInEachPlace(Json::Value answer) {
        int places = 0;
        ForEachPlace(answer, [&](Json::Value& place) {
            ++places;
            const Json::Value good = place;
            for (const Json::Value& strange : StrangeValues()) {
                place = strange;
                Decode(answer);
            }
            place = good;
            EXPECT_TRUE(Decode(answer));
        });
        EXPECT_GT(places, 15);
    }
};

TEST_F(AdHostileJsonTest, AnythingAtAnyPlaceOfAPopupIsReadOrRefused) {
    PutEachStrangeValueInEachPlace(PopupAnswer());
}

TEST_F(AdHostileJsonTest, AnythingAtAnyPlaceOfABannerIsReadOrRefused) {
    PutEachStrangeValueInEachPlace(BannerAnswer());
}

TEST_F(AdHostileJsonTest, AnythingAsTheRootOfAModelIsReadOrRefused) {
    for (const Json::Value& strange : StrangeValues()) {
        SCOPED_TRACE(strange.isString() ? "a text" : strange.toStyledString());
        EXPECT_NO_THROW(EXPECT_FALSE(CZRAdResponseModel(nullptr).Decode(strange)));
        EXPECT_NO_THROW(EXPECT_FALSE(CZRAdModelList(nullptr).Decode(strange)));
        EXPECT_NO_THROW(EXPECT_FALSE(CZRAdBannerPosition(nullptr).Decode(strange)));
        EXPECT_NO_THROW(EXPECT_FALSE(CZRAdModel(nullptr).Decode(strange)));
        EXPECT_NO_THROW(EXPECT_FALSE(CZRAdBannerModel(nullptr).Decode(strange)));
        EXPECT_NO_THROW(EXPECT_FALSE(CZRAdPopupModel(nullptr).Decode(strange)));
        EXPECT_NO_THROW(EXPECT_FALSE(CZRAdBottomPopupModel(nullptr).Decode(strange)));
        EXPECT_THAT(log.Lines(), SizeIs(7));
        log.Forget();
    }
}

TEST_F(AdHostileJsonTest, KeysThatNobodyAskedForAreIgnored) {
    Json::Value answer = PopupAnswer();
    std::vector<Json::Value*> objects;
    ForEachPlace(answer, [&](Json::Value& place) {
        if (place.isObject()) {
            objects.push_back(&place);
        }
    });
    for (Json::Value* object : objects) {
        (*object)["a_newer_key"] = JsonOf(R"([{"x": null}])");
        (*object)[""] = 5;
    }

    EXPECT_THAT(objects, SizeIs(5));
    EXPECT_TRUE(Decode(answer));
}

TEST_F(AdHostileJsonTest, NestingDeepBelowAKeyHurtsNobody) {
    Json::Value deep;
    for (int level = 0; level < 1'500; ++level) {
        Json::Value outer(Json::arrayValue);
        outer.append(std::move(deep));
        deep = std::move(outer);
    }
    Json::Value answer = PopupAnswer();
    answer["data"]["ad"][0]["name"] = deep;
    EXPECT_TRUE(Decode(answer));

    answer["data"]["ad"][0]["ad_id"] = deep;
    EXPECT_FALSE(Decode(answer));
}

TEST_F(AdHostileJsonTest, ThousandsOfAdsAreAllReadOrAllRefusedAtTheFirstThatIsBad) {
    constexpr int kMany = 5'000;
    Json::Value data = PopupData();
    for (int i = 0; i < kMany; ++i) {
        data["ad"].append(PopupAd(std::to_string(i)));
    }
    CZRAdModelList good(nullptr);
    ASSERT_TRUE(good.Decode(data));
    EXPECT_EQ(good.GetAdList()->size(), kMany);

    data["ad"][kMany - 2]["ad_id"] = 5;
    CZRAdModelList bad(nullptr);
    EXPECT_FALSE(bad.Decode(data));
    EXPECT_EQ(bad.GetAdList()->size(), kMany - 2);
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] CZRAdModel decode failed, ad_id is unvalid")));
}

/// Changes of good answers by a generator with a fixed seed.
class AdMutationTest : public AdHostileJsonTest {
protected:
    struct Outcome {
        int decoded = 0;
        int refused = 0;
    };

    size_t Below(size_t bound) { return size_t(m_random()) % bound; }

    Json::Value Mutated() {
        Json::Value answer = Below(2) == 0 ? PopupAnswer() : BannerAnswer();
        for (size_t changes = 1 + Below(3); changes > 0; --changes) {
            std::vector<Json::Value*> places;
            ForEachPlace(answer, [&](Json::Value& place) { places.push_back(&place); });
            // not the root, which would end it all at the first line
            Json::Value& place = *places[places.size() == 1 ? 0 : 1 + Below(places.size() - 1)];
            switch (Below(4)) {
                case 0:
                    place = StrangeValues()[Below(StrangeValues().size() - 1)];  // the last is large
                    break;
                case 1: {
                    const Json::Value other = *places[Below(places.size())];
                    place = other;
                    break;
                }
                case 2:
                    if (place.isObject() && !place.empty()) {
                        place.removeMember(place.getMemberNames()[Below(place.size())]);
                    }
                    break;
                default:
                    if (place.isArray()) {
                        const Json::Value other = *places[Below(places.size())];
                        place.append(other);
                    }
                    break;
            }
        }
        return answer;
    }

    Outcome Round(int mutations) {
        m_random.seed(20261121);
        Outcome outcome;
        for (int i = 0; i < mutations; ++i) {
            ++(Decode(Mutated()) ? outcome.decoded : outcome.refused);
        }
        return outcome;
    }

private:
    std::mt19937 m_random;
};

TEST_F(AdMutationTest, ThousandsOfChangedAnswersAreEachReadOrRefusedAndNothingIsKept) {
    constexpr int kMutations = 5'000;
    const Outcome outcome = Round(kMutations);
    // both ends are reached, or the changes would be too many or too few
    EXPECT_GT(outcome.decoded, kMutations / 20);
    EXPECT_GT(outcome.refused, kMutations / 4);

    const size_t before = mallinfo2().uordblks;
    Round(kMutations);
    // one object that is left of each of a hundred answers would be far more
    EXPECT_LT(mallinfo2().uordblks, before + 4'096);
}

}  // namespace
