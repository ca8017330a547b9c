// An ad slot in the real client against the real server: its requests and reports. Reports are kept while the server is
// down.
#include <fstream>
#include <map>

#include "AdDriverModule.h"
#include "ClientFixture.h"
#include "core/login_status_data.h"
#include "core/time_date.h"
#include "framework/JsonText.h"

using namespace ::testing;

namespace {

class AdTest : public ClientTest {
protected:
    AdTest() {
        options.manifest = WriteManifest({{"CAdDriver", build::kAdDriver}});
        options.scenario = WriteFile("scenario.json", R"({"schema":1,
            "users":[{"id":501,"name":"One"}],
            "ads":[{"adType":2,"adPosition":42,"showDuration":15,"showInterval":3600,"showIntervalType":1,
                "enableClose":true,"campaigns":[
                {"id":"701","pushId":"p-701","startInS":-100,"endInS":10000,"expireInS":20000,"image":"card-invite.png",
                 "schema":"https://ads.example/1","popupType":2,"showAreas":[500]},
                {"id":"702","startInS":-200,"endInS":-100,"expireInS":10000,"image":"card-invite.png",
                 "schema":"https://ads.example/2","popupType":2,"showAreas":[500]},
                {"id":"703","startInS":-100,"endInS":10000,"expireInS":20000,"image":"card-invite.png",
                 "users":[999],"schema":"https://ads.example/3","popupType":2,"showAreas":[500]}]}],"commonConfig":{}})");
        notes = folder.filePath(QStringLiteral("notes")).toStdString();
        qputenv(ad_driver::kFileVariable, QByteArray::fromStdString(notes));
    }

    void StartAndLogInWithoutEntries() {
        Start();
        ASSERT_TRUE(WaitInRealTime([this] { return client->UserId() == 501; }));
    }

    static void Tell(unsigned int message) { core::__CMessageDispatch("[AdTest]").Send(message, nullptr, true); }

    std::vector<std::string> Notes() const {
        std::ifstream file(notes);
        std::vector<std::string> lines;
        for (std::string line; std::getline(file, line);) {
            lines.push_back(line);
        }
        return lines;
    }

    bool WaitForNotes(size_t count) {
        return WaitInRealTime([&] { return Notes().size() >= count; });
    }

    bool WaitForReports(const std::map<std::string, int>& counts) {
        return WaitInRealTime([&] { return server->ReportCounts() == counts; });
    }

    std::vector<Json::Value> Http(const std::string& path) { return server->HttpTo(path); }

    std::vector<Json::Value> ReportsOf(const std::string& name) { return server->ReportsOf(name); }

    static Json::Value Body(const Json::Value& request) {
        std::string error;
        return host::ParseJson(request["body"].asString(), error).value_or(Json::Value());
    }

    std::string notes;
};

TEST_F(AdTest, ASearchFindsTheAdsThatAreDueAndCarriesTheSession) {
    StartAndLogInWithoutEntries();

    Tell(ad_driver::kSearch);

    ASSERT_TRUE(WaitForNotes(1));
    EXPECT_THAT(Notes(), ElementsAre("answered 701"));
    const auto requests = Http("/ad/search");
    ASSERT_THAT(requests, SizeIs(1));
    EXPECT_EQ(requests[0]["headers"]["x-orvi-client-sessionid"],
              std::to_string(core::login_status_data::GetSessionId()));
    EXPECT_EQ(Body(requests[0])["ad_type"], 2);
    EXPECT_EQ(Body(requests[0])["ad_position"], 42);
    EXPECT_TRUE(WaitForReports({{"SendAdRequest", 1}, {"SingleAdvertisementPullDataResult", 1}}));
}

TEST_F(AdTest, AReleaseBuildReachesItsOwnServerToo) {
    options.release = true;
    StartAndLogInWithoutEntries();

    Tell(ad_driver::kSearch);

    ASSERT_TRUE(WaitForNotes(1));
    EXPECT_THAT(Notes(), ElementsAre("answered 701"));
    EXPECT_TRUE(WaitForReports({{"SendAdRequest", 1}, {"SingleAdvertisementPullDataResult", 1}}));
}

TEST_F(AdTest, ACheckFetchesExactlyTheAdsThatItNames) {
    StartAndLogInWithoutEntries();

    Tell(ad_driver::kCheck);

    ASSERT_TRUE(WaitForNotes(1));
    const auto requests = Http("/ad/check");
    ASSERT_THAT(requests, SizeIs(1));
    EXPECT_EQ(Body(requests[0])["ad_id"][0], ad_driver::kCheckedAd);
    EXPECT_EQ(requests[0]["headers"]["x-orvi-client-sessionid"],
              std::to_string(core::login_status_data::GetSessionId()));
    EXPECT_TRUE(WaitForReports({{"SendAdRequest", 1}, {"SingleAdvertisementPullDataResult", 1}}));
    const auto results = ReportsOf("SingleAdvertisementPullDataResult");
    EXPECT_EQ(results[0]["result_code"], "0");
    EXPECT_EQ(results[0]["advertisement_ids"][0], ad_driver::kCheckedAd);
    // a search does not return this ad, because it is for another user
    EXPECT_THAT(Notes(), ElementsAre("answered 703"));
}

TEST_F(AdTest, AnExposureIsToldAtItsEndWithItsLength) {
    StartAndLogInWithoutEntries();
    Tell(ad_driver::kSearch);
    ASSERT_TRUE(WaitForNotes(1));

    Tell(ad_driver::kShow);
    Tell(ad_driver::kClick);
    const int64_t began = core::time_date::GetSvrTimeMillis();
    ASSERT_TRUE(WaitInRealTime([&] { return core::time_date::GetSvrTimeMillis() > began + 20; }));
    Tell(ad_driver::kEnd);

    ASSERT_TRUE(WaitForNotes(2));
    EXPECT_EQ(Notes()[1], "exposed");
    const auto requests = Http("/ad/expose");
    ASSERT_THAT(requests, SizeIs(1));
    EXPECT_FALSE(requests[0]["headers"].isMember("x-orvi-client-sessionid"));
    EXPECT_EQ(Body(requests[0])["ad_id"][0], "701");
    EXPECT_EQ(Body(requests[0])["push_id"][0], "push");
    EXPECT_GT(Body(requests[0])["expose_duration"].asInt64(), 20);
    EXPECT_TRUE(WaitForReports({{"SendAdRequest", 1},
                                {"SingleAdvertisementPullDataResult", 1},
                                {"StartExposeAd", 1},
                                {"ClickAd", 1},
                                {"ExposeAd", 1},
                                {"ReportAdvertisementExposureResult", 1}}));
    for (const char* event : {"StartExposeAd", "ClickAd", "ExposeAd"}) {
        EXPECT_EQ(ReportsOf(event)[0]["exposure_id"], Body(requests[0])["expose_id"]) << event;
    }
    const Json::Value all = server->Get("/v1/reports");
    for (const Json::Value& report : all["reports"]) {
        EXPECT_EQ(report.isMember("durationMs"), report["name"] == "ExposeAd") << report["name"].asString();
    }
}

TEST_F(AdTest, WhatIsReportedWithoutAServerReachesItLaterAndOnce) {
    constexpr int kExposures = 20;
    StartAndLogInWithoutEntries();
    Tell(ad_driver::kSearch);
    ASSERT_TRUE(WaitForNotes(1));
    ASSERT_TRUE(WaitForReports({{"SendAdRequest", 1}, {"SingleAdvertisementPullDataResult", 1}}));
    ASSERT_TRUE(WaitInRealTime([this] { return AreReportsAcknowledged(); }));

    const int64_t before = core::time_date::GetSvrTimeStamp();
    server->Put("/v1/clock", R"({"offsetMs":11000})");
    ASSERT_TRUE(WaitInRealTime([&] { return core::time_date::GetSvrTimeStamp() >= before + 10; }));
    client->Server().Stop();
    Tell(ad_driver::kSearch);
    ASSERT_TRUE(WaitForNotes(2));
    EXPECT_EQ(Notes().back(), "not answered 1005");
    for (int i = 0; i < kExposures; ++i) {
        Tell(ad_driver::kShow);
        Tell(ad_driver::kEnd);
    }
    ASSERT_TRUE(WaitForNotes(2 + kExposures));
    server.reset();
    client->Server().Start();
    ASSERT_TRUE(WaitInRealTime([this] { return server != nullptr; }));

    // the new server has received nothing of the former one's reports
    EXPECT_TRUE(WaitForReports({{"SingleAdvertisementPullDataResult", 1},
                                {"StartExposeAd", kExposures},
                                {"ExposeAd", kExposures},
                                {"ReportAdvertisementExposureResult", kExposures}}));
    const auto told = Notes();
    EXPECT_THAT(std::vector<std::string>(told.begin() + 2, told.end()), Each("not exposed 1005"));
    EXPECT_EQ(ReportsOf("SingleAdvertisementPullDataResult")[0]["result_code"], "1005");
    // the slot still works
    Tell(ad_driver::kShow);
    Tell(ad_driver::kEnd);
    ASSERT_TRUE(WaitForNotes(3 + kExposures));
    EXPECT_EQ(Notes().back(), "exposed");
}

TEST_F(AdTest, ReportsWhoseAnswerIsLostComeAgainAndCountOnce) {
    StartAndLogInWithoutEntries();
    // the server counts the reports, but its answers are cut
    server->Put("/v1/httpFaults", R"({"/report/events":{"cutBytes":3,"times":3}})");

    Tell(ad_driver::kSearch);

    ASSERT_TRUE(WaitInRealTime([this] { return server->Get("/v1/reports")["resends"].asInt() >= 2; }));
    EXPECT_TRUE(WaitForReports({{"SendAdRequest", 1}, {"SingleAdvertisementPullDataResult", 1}}));
    EXPECT_EQ(server->Get("/v1/reports")["counted"], 2);
}

TEST_F(AdTest, AnExposureThatTheServerRefusesOrGarblesIsOneThatWasNotTold) {
    StartAndLogInWithoutEntries();
    Tell(ad_driver::kSearch);
    ASSERT_TRUE(WaitForNotes(1));
    for (const auto& [fault, note] : std::vector<std::pair<std::string, std::string>>{
             {R"({"code":7})", "not exposed 2001"}, {R"({"body":"{garbage"})", "not exposed 1005"}}) {
        server->Put("/v1/httpFaults", R"({"/ad/expose":)" + fault + "}");
        const size_t before = Notes().size();
        Tell(ad_driver::kShow);
        Tell(ad_driver::kEnd);
        ASSERT_TRUE(WaitForNotes(before + 1));
        EXPECT_EQ(Notes().back(), note);
    }
}

TEST_F(AdTest, AnswerIsTakenWhenBytesFollowItsLength) {
    StartAndLogInWithoutEntries();
    server->Put("/v1/httpFaults", R"({"/ad/search":{"extraBytes":10}})");

    Tell(ad_driver::kSearch);

    ASSERT_TRUE(WaitForNotes(1));
    EXPECT_EQ(Notes()[0], "answered 701");
}

struct BadServer {
    const char* name;
    const char* fault;
    const char* note;
};

class AdFaultTest : public AdTest, public WithParamInterface<BadServer> {};

TEST_P(AdFaultTest, EndsInAFailureAndTheSlotGoesOn) {
    StartAndLogInWithoutEntries();
    server->Put("/v1/httpFaults", std::string(R"({"/ad/search":)") + GetParam().fault + "}");

    Tell(ad_driver::kSearch);

    ASSERT_TRUE(WaitForNotes(1));
    EXPECT_EQ(Notes()[0], GetParam().note);
    server->Put("/v1/httpFaults", "{}");
    server->Put("/v1/clock", R"({"offsetMs":11000})");
    ASSERT_TRUE(WaitInRealTime([this] {
        Tell(ad_driver::kSearch);  // refused until the client receives the new clock
        return Notes().back() == "answered 701";
    }));
}

INSTANTIATE_TEST_SUITE_P(
    Faults, AdFaultTest,
    Values(BadServer{"CutBody", R"({"cutBytes":20})", "not answered 1005"},
           BadServer{"Garbage", R"({"body":"{garbage"})", "not answered 1005"},
           BadServer{"WrongTypes", R"({"body":"{\"code\":\"0\",\"data\":7}"})", "not answered 1005"},
           BadServer{"Code", R"({"code":7})", "not answered 2001"},
           BadServer{"NoData", R"({"noData":true})", "not answered 1005"},
           BadServer{"Huge", R"({"hugeMiB":100})", "not answered 1005"},
           BadServer{"OtherHost", R"({"redirect":"https://elsewhere.example/"})", "not answered 1005"}),
    [](const auto& row) { return std::string(row.param.name); });

}  // namespace
