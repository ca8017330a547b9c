#include "ReportSink.h"

#include <gmock/gmock.h>

#include "RowName.h"

namespace {

using devserver::CReportSink;
using devserver::Errors;
using devserver::ReportLimits;
using devserver::WriteJson;
using testing::ElementsAre;
using testing::HasSubstr;

std::string Event(const std::string& id, const std::string& params = "{}", const std::string& more = {}) {
    return R"({"id":")" + id + R"(","name":"ClickAd","code":4,"params":)" + params +
           R"(,"broker":-1,"user":18446744073709551615,"device":"","atMs":5)" + more + "}";
}

class ReportSinkTest : public testing::Test {
protected:
    std::string Take(const std::string& events) {
        Errors errors;
        const auto answer = sink.Take(R"({"events":[)" + events + "]}", errors);
        EXPECT_EQ(answer.has_value(), errors.empty());
        return answer ? WriteJson(*answer) : std::string();
    }

    std::vector<std::string> Ids() const {
        std::vector<std::string> ids;
        for (const devserver::Report& report : sink.Reports()) {
            ids.push_back(report.id);
        }
        return ids;
    }

    static constexpr ReportLimits kLimits{500, 64 * 1024, 1000};
    CReportSink sink{kLimits};
};

TEST_F(ReportSinkTest, CountsAnIdOnceAndAcceptsItEachTime) {
    EXPECT_EQ(Take(Event("a") + "," + Event("b")), R"({"accepted":["a","b"]})");
    EXPECT_EQ(Take(Event("b") + "," + Event("c") + "," + Event("b")), R"({"accepted":["b","c","b"]})");

    EXPECT_THAT(Ids(), ElementsAre("a", "b", "c"));
    EXPECT_EQ(sink.Counted(), 3u);
    EXPECT_EQ(sink.Resends("a"), 0u);
    EXPECT_EQ(sink.Resends("b"), 2u);
    EXPECT_EQ(sink.Resends(), 2u);
}

TEST_F(ReportSinkTest, KeepsAnEventAsItCameAndAsItCameFirst) {
    Take(Event("a", R"({"x":[1,"ä"]})", R"(,"durationMs":-3)"));
    Take(Event("a", "7"));

    EXPECT_EQ(WriteJson(sink.Reports().at(0).event),
              R"({"atMs":5,"broker":-1,"code":4,"device":"","durationMs":-3,"id":"a","name":"ClickAd",)"
              R"("params":{"x":[1,"ä"]},"user":18446744073709551615})");
    EXPECT_EQ(sink.Reports().at(0).number, 1u);
}

TEST_F(ReportSinkTest, RefusesABadEventAloneAndSaysWhy) {
    EXPECT_EQ(Take(Event("a") + R"(,{"id":"b"},5,)" + Event("c")),
              R"({"accepted":["a","c"],"refused":[{"error":"name: missing; code: missing; params: missing; )"
              R"(broker: missing; user: missing; device: missing; atMs: missing","id":"b"},)"
              R"({"error":"must be an object"}]})");

    EXPECT_THAT(Ids(), ElementsAre("a", "c"));
}

TEST_F(ReportSinkTest, TakesEventsAsDeepAsAClientWritesThem) {
    const auto nested = [](int depth) { return std::string(size_t(depth), '[') + std::string(size_t(depth), ']'); };

    EXPECT_EQ(Take(Event("a", nested(61))), R"({"accepted":["a"]})");
    Errors errors;
    EXPECT_FALSE(sink.Take(R"({"events":[)" + Event("b", nested(62)) + "]}", errors));
}

TEST_F(ReportSinkTest, ForgetsTheOldestEventsAndStillKnowsTheirIds) {
    // the limit has room for two events of this size
    const std::string large = '"' + std::string(kLimits.bytes / 2 - 1000, 'x') + '"';
    Take(Event("a", large));
    Take(Event("b", large));
    Take(Event("c", large));

    EXPECT_THAT(Ids(), ElementsAre("b", "c"));
    EXPECT_EQ(sink.Counted(), 3u);
    Take(Event("a"));
    EXPECT_THAT(Ids(), ElementsAre("b", "c"));
    EXPECT_EQ(sink.Resends("a"), 1u);
}

TEST_F(ReportSinkTest, RemembersSoManyEventsAndSoManyIds) {
    constexpr size_t kBatch = 100;
    for (size_t first = 0; first <= kLimits.ids; first += kBatch) {
        std::string batch;
        for (size_t id = first; id < first + kBatch; ++id) {
            batch += (batch.empty() ? "" : ",") + Event(std::to_string(id));
        }
        Take(batch);
    }

    EXPECT_EQ(sink.Reports().size(), kLimits.events);
    EXPECT_EQ(sink.Counted(), kLimits.ids + kBatch);
    Take(Event(std::to_string(kBatch)));
    EXPECT_EQ(sink.Resends(), 1u);
    Take(Event(std::to_string(kBatch - 1)));  // forgotten: it counts again
    EXPECT_EQ(sink.Resends(), 1u);
    EXPECT_EQ(sink.Counted(), kLimits.ids + kBatch + 1);
}

TEST(ReportLimitsTest, HaveRoomForAnAfternoonUnlessGiven) {
    EXPECT_EQ(ReportLimits().events, 50'000u);
    EXPECT_EQ(ReportLimits().bytes, 64u << 20);
    EXPECT_EQ(ReportLimits().ids, 100'000u);
}

TEST_F(ReportSinkTest, ForgetsAllOfItWhenAsked) {
    Take(Event("a") + "," + Event("a"));

    sink.Forget();

    EXPECT_EQ(sink.Counted() + sink.Resends() + sink.Resends("a"), 0u);
    Take(Event("a"));
    EXPECT_THAT(Ids(), ElementsAre("a"));
    EXPECT_EQ(sink.Reports().front().number, 1u);
}

struct BadRow {
    const char* name;
    std::string event;
    const char* error;
};

class BadReportTest : public ReportSinkTest, public testing::WithParamInterface<BadRow> {};

TEST_P(BadReportTest, IsNotCounted) {
    EXPECT_THAT(Take(GetParam().event), AllOf(HasSubstr(R"("accepted":[])"), HasSubstr(GetParam().error)));

    EXPECT_EQ(sink.Counted(), 0u);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, BadReportTest,
    testing::Values(BadRow{"IdEmpty", Event(""), "id: must not be empty"},
                    BadRow{"IdTooLong", Event(std::string(129, 'i')), "id: must be no longer than 128 bytes"},
                    BadRow{"DurationText", Event("a", "1", R"(,"durationMs":"x")"), "durationMs: must be a whole"},
                    BadRow{"UnknownKey", Event("a", "1", R"(,"n":1)"), "n: unknown key"}),
    RowName());

class BadBatchTest : public ReportSinkTest, public testing::WithParamInterface<BadRow> {};

TEST_P(BadBatchTest, IsRefusedAsAWhole) {
    Errors errors;

    EXPECT_FALSE(sink.Take(GetParam().event, errors));

    EXPECT_THAT(errors, ElementsAre(HasSubstr(GetParam().error)));
    EXPECT_EQ(sink.Counted(), 0u);
}

INSTANTIATE_TEST_SUITE_P(Rows, BadBatchTest,
                         testing::Values(BadRow{"NoJson", "{", "not JSON"}, BadRow{"Empty", "", "not JSON"},
                                         BadRow{"HalfAPair", R"({"events":["\udc00"]})", "escapes half a character"},
                                         BadRow{"NoObject", "[]", "must be an object"},
                                         BadRow{"NoEvents", "{}", "list events"},
                                         BadRow{"EventsNoList", R"({"events":{}})", "list events"},
                                         BadRow{"UnknownKey", R"({"events":[],"more":1})", "nothing else"}),
                         RowName());

}  // namespace
