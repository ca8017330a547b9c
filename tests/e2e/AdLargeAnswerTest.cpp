// Answers of ads at their limit of 1 MiB, and above it.
#include <json/reader.h>

#include <ctime>

#include "AdRefusalFixture.h"
#include "framework/JsonText.h"
#include "support/Cost.h"
#include "support/Sanitizers.h"
#include "support/SliceMeter.h"

using namespace ::testing;

namespace {

constexpr size_t kMaxBytes = 1 << 20;

/// An answer of banners in as many bytes, the last ones blanks.
std::string BannersIn(size_t bytes, int& count) {
    std::string answer = R"({"code":0,"data":{"ad_type":3,"ad_position":7,"enable_close":false,)"
                         R"("banner_position":{"banner_type":2,"material_scale":"6:1","material_corner":"8"},"ad":[)";
    const std::string end = "]}}";
    for (count = 0;; ++count) {
        const std::string ad = (count == 0 ? "" : ",") + (R"({"ad_id":")" + std::to_string(count) + '"') +
                               R"(,"start_time":1,"end_time":4000000000,"expire_time":4000000000,"banner_ad":)" +
                               R"({"img":"http://127.0.0.1/a.png","schema":"https://ads.example/a"}})";
        if (answer.size() + ad.size() + end.size() > bytes) {
            break;
        }
        answer += ad;
    }
    answer += end;
    return answer + std::string(bytes - answer.size(), ' ');
}

/// The CPU time of the module's parse of a body, which no slice can be shorter than.
std::chrono::milliseconds ParseTime(const std::string& body) {
    const std::clock_t begin = std::clock();
    Json::Value value;
    EXPECT_TRUE(Json::Reader().parse(body, value));
    return std::chrono::milliseconds((std::clock() - begin) * 1'000 / CLOCKS_PER_SEC);
}

class AdLargeAnswerTest : public AdRefusalTest {
protected:
    void AnswerSearchesWith(const std::string& body) {
        Json::Value faults;
        faults["/ad/search"]["body"] = body;
        server->Put("/v1/httpFaults", host::OneLine(faults));
    }
};

TEST_F(AdLargeAnswerTest, OneMebibyteIsShownAndLeavesTheWindowUsable) {
    ASSERT_NO_FATAL_FAILURE(StartAndSeeNothing());
    int count = 0;
    const std::string body = BannersIn(kMaxBytes, count);
    AnswerSearchesWith(body);
    EXPECT_GT(count, 5'000);
    const auto parse = ParseTime(body);
    const CSliceMeter slices;
    const CCost cost;

    Override("AdTab", kMarket);

    ASSERT_TRUE(WaitForBanner(7));
    cost.CheckMemory(150 << 20);
    const auto longest = std::chrono::duration_cast<std::chrono::milliseconds>(slices.Longest());
    RecordProperty("LongestSliceMilliseconds", int(longest.count()));
    RecordProperty("ParseMilliseconds", int(parse.count()));
    if (!kSlowedDown) {
        EXPECT_LT((longest - parse).count(), 50);
    }
    EXPECT_NE(Slide(0), nullptr);
    EXPECT_EQ(Slide(2), nullptr);
}

TEST_F(AdLargeAnswerTest, OneByteMoreIsRefusedWithALogLineAndReported) {
    ASSERT_NO_FATAL_FAILURE(StartAndSeeNothing());
    int count = 0;
    AnswerSearchesWith(BannersIn(kMaxBytes + 1, count));

    Override("AdTab", kMarket);

    EXPECT_TRUE(WaitForLine("A request to 127.0.0.1 failed with result"));
    EXPECT_TRUE(WaitForLine("Request ad failed, path = /ad/search, result = "));
    EXPECT_EQ(Banner(7), nullptr);
}

}  // namespace
