// Requests and notifications to the ad server.
#include <limits>

#include "Ad/AdApiClientTest.h"
#include "Ad/MethodsOf.h"
#include "framework/Ports.h"

using namespace ::testing;

namespace {

class AdRequestTest : public AdApiClientTest {
protected:
    HttpReqInfo Sent(size_t index = 0) {
        const auto& started = http.Started();
        return index < started.size() ? started[index].request : HttpReqInfo();
    }
};

TEST_F(AdRequestTest, ASearchIsPostedToItsPathWithTheSessionAloneInTheHead) {
    account.Set(501, std::numeric_limits<uint64_t>::max());

    client->RequestAd(ZRAdApiTypeSearch, ZRAdTypePopup, 42, {});

    ASSERT_THAT(http.Started(), SizeIs(1));
    const StartedRequest& started = http.Started()[0];
    EXPECT_EQ(started.request.m_enMethod, kHttpPost);
    EXPECT_EQ(started.request.m_strUrl, "https://ads.test/ad/search");
    EXPECT_EQ(started.request.m_strBody,
              "{\n\t\"ad_position\" : 42,\n\t\"ad_type\" : 2,\n\t\"request_id\" : \"dev170000000011\"\n}\n");
    EXPECT_THAT(started.request.m_mapHeader,
                ElementsAre(Pair("x-orvi-client-sessionid", ElementsAre("18446744073709551615"))));
    EXPECT_THAT(started.request.m_mapQuery, IsEmpty());
    EXPECT_EQ(started.request.m_nTimeoutSeconds, 10);
    EXPECT_EQ(started.pool, kHttpWorkPoolDefault);
    EXPECT_EQ(started.guard, client.get());
    EXPECT_FALSE(started.hasProgress);
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Request ad start, path = /ad/search, adType = 2, adPosition = 42, "
                                              "adIdList = , requestId = dev170000000011")));
}

TEST_F(AdRequestTest, ACheckIsPostedWithItsAdsInOrder) {
    client->RequestAd(ZRAdApiTypeCheck, ZRAdTypeBanner, 7, {QStringLiteral("2"), QString(QChar(0x56FE))});

    EXPECT_EQ(Sent().m_strUrl, "https://ads.test/ad/check");
    EXPECT_EQ(Sent().m_strBody,
              "{\n\t\"ad_id\" : \n\t[\n\t\t\"2\",\n\t\t\"\\u56fe\"\n\t],\n\t\"ad_position\" : 7,\n\t\"ad_type\" : 3,\n"
              "\t\"request_id\" : \"dev170000000011\"\n}\n");
    EXPECT_THAT(log.Lines(), ElementsAre(Info("[Ad] Request ad start, path = /ad/check, adType = 3, adPosition = 7, "
                                              "adIdList = 2,\xE5\x9B\xBE, requestId = dev170000000011")));
}

TEST_F(AdRequestTest, AnyOtherKindOfRequestIsACheck) {
    for (const int kind : {0, 3, -1}) {
        client->RequestAd(ZRAdApiType(kind), ZRAdTypePopup, 42, {});
        EXPECT_EQ(http.Started().back().request.m_strUrl, "https://ads.test/ad/check") << kind;
    }
}

TEST_F(AdRequestTest, ASearchMayNameAdsAsWell) {
    client->RequestAd(ZRAdApiTypeSearch, ZRAdType(-5), -1, {QStringLiteral("1")});

    EXPECT_EQ(Sent().m_strUrl, "https://ads.test/ad/search");
    EXPECT_EQ(Sent().m_strBody,
              "{\n\t\"ad_id\" : \n\t[\n\t\t\"1\"\n\t],\n\t\"ad_position\" : -1,\n\t\"ad_type\" : -5,\n"
              "\t\"request_id\" : \"dev170000000011\"\n}\n");
    EXPECT_THAT(log.Lines(), ElementsAre(Info(HasSubstr("adIdList = 1, requestId = "))));
}

TEST_F(AdRequestTest, NobodysSessionIsZero) {
    Search();

    EXPECT_THAT(Sent().m_mapHeader, ElementsAre(Pair("x-orvi-client-sessionid", ElementsAre("0"))));
}

TEST_F(AdRequestTest, TheSessionIsThatOfTheMoment) {
    account.Set(501, 7);
    Search();
    account.Set(502, 8);
    Search();

    EXPECT_THAT(Sent(0).m_mapHeader.at("x-orvi-client-sessionid"), ElementsAre("7"));
    EXPECT_THAT(Sent(1).m_mapHeader.at("x-orvi-client-sessionid"), ElementsAre("8"));
}

TEST_F(AdRequestTest, TheServersAddressIsReadAtEachRequest) {
    domains.Set("api", "https://first.test");
    Search();
    domains.Set("api", "https://second.test/base");
    Expose();

    EXPECT_EQ(Sent(0).m_strUrl, "https://first.test/ad/search");
    EXPECT_EQ(Sent(1).m_strUrl, "https://second.test/base/ad/expose");
    log.Forget();
}

TEST_F(AdRequestTest, WithoutAServerThePathAloneIsAsked) {
    domains.Set("api", "");
    Search();
    Expose();

    EXPECT_EQ(Sent(0).m_strUrl, "/ad/search");
    EXPECT_EQ(Sent(1).m_strUrl, "/ad/expose");
    log.Forget();
}

TEST_F(AdRequestTest, TheRequestsIdIsTheLatest) {
    EXPECT_EQ(client->GetAdRequestId(), QString());

    Search();
    EXPECT_EQ(client->GetAdRequestId(), QStringLiteral("dev170000000011"));

    Search();
    EXPECT_EQ(client->GetAdRequestId(), QStringLiteral("dev170000000022"));
    EXPECT_THAT(Sent(1).m_strBody, HasSubstr("\"request_id\" : \"dev170000000022\""));
}

TEST_F(AdRequestTest, ARequestThatCouldNotBeStartedIsLoggedAndNobodyIsTold) {
    Search();
    log.Forget();
    http.RefuseStarts(Failing::Nth(1));

    client->RequestAd(ZRAdApiTypeCheck, ZRAdTypeBanner, 7, {});
    time.Settle();

    EXPECT_EQ(client->GetAdRequestId(), QStringLiteral("dev170000000022"));
    EXPECT_THAT(log.Lines(), ElementsAre(Info(StartsWith("[Ad] Request ad start, ")),
                                         Error("[Ad] Request ad failed, requestTaskId = 0, path = /ad/check, "
                                               "adType = 3, adPosition = 7, requestId = dev170000000022")));
    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(http.Started(), SizeIs(2));
}

// Exposures

TEST_F(AdRequestTest, AnExposureIsPostedWithoutAnyHeader) {
    account.Set(501, 7);

    client->ExposeAd(ZRAdTypePopup, 42, {QStringLiteral("18088"), QStringLiteral("2")}, QStringLiteral("e-1"),
                     5'000'000'000, {QStringLiteral("p-1"), QStringLiteral("p-2")});

    ASSERT_THAT(http.Started(), SizeIs(1));
    const StartedRequest& started = http.Started()[0];
    EXPECT_EQ(started.request.m_enMethod, kHttpPost);
    EXPECT_EQ(started.request.m_strUrl, "https://ads.test/ad/expose");
    EXPECT_EQ(started.request.m_strBody,
              "{\n\t\"ad_id\" : \n\t[\n\t\t\"18088\",\n\t\t\"2\"\n\t],\n\t\"ad_position\" : 42,\n\t\"ad_type\" : 2,\n"
              "\t\"expose_duration\" : 5000000000,\n\t\"expose_id\" : \"e-1\",\n"
              "\t\"push_id\" : \n\t[\n\t\t\"p-1\",\n\t\t\"p-2\"\n\t]\n}\n");
    EXPECT_THAT(started.request.m_mapHeader, IsEmpty());
    EXPECT_THAT(started.request.m_mapQuery, IsEmpty());
    EXPECT_EQ(started.request.m_nTimeoutSeconds, 10);
    EXPECT_EQ(started.pool, kHttpWorkPoolDefault);
    EXPECT_EQ(started.guard, client.get());
    EXPECT_FALSE(started.hasProgress);
    // an error by its severity, though all is well
    EXPECT_THAT(log.Lines(),
                ElementsAre(Error("[Ad] Expose ad start, path = /ad/expose, adType = 2, adPosition = 42, "
                                  "adId = 18088,2, exposeId = e-1, exposeDuration = 5000000000, pushId = p-1,p-2")));
    EXPECT_EQ(client->GetAdRequestId(), QString());
}

TEST_F(AdRequestTest, AnExposureOfNothingLeavesBothKeysOut) {
    client->ExposeAd(ZRAdTypeBanner, 7, {}, QString(), -3, {});

    EXPECT_EQ(
        Sent().m_strBody,
        "{\n\t\"ad_position\" : 7,\n\t\"ad_type\" : 3,\n\t\"expose_duration\" : -3,\n\t\"expose_id\" : \"\"\n}\n");
    EXPECT_THAT(log.Lines(), ElementsAre(Error("[Ad] Expose ad start, path = /ad/expose, adType = 3, adPosition = 7, "
                                               "adId = , exposeId = , exposeDuration = -3, pushId = ")));
}

TEST_F(AdRequestTest, AnExposureThatCouldNotBeStartedIsLoggedAndNobodyIsTold) {
    http.RefuseStarts(Failing::Always());

    client->ExposeAd(ZRAdTypePopup, 42, {QStringLiteral("1"), QStringLiteral("2")}, QStringLiteral("e-1"), 9, {});
    time.Settle();

    EXPECT_THAT(log.Lines(), ElementsAre(Error(StartsWith("[Ad] Expose ad start, ")),
                                         Error("[Ad] Expose ad failed, path = /ad/expose, ExposeTaskID  = 0, "
                                               "adType = 2, adPosition = 42, adId = 1,2, exposeId = e-1")));
    EXPECT_THAT(told, IsEmpty());
    EXPECT_THAT(http.Started(), SizeIs(1));
}

// The interface of the class

TEST_F(AdRequestTest, TheSignalsStandInTheirOrder) {
    EXPECT_THAT(MethodsOf(CZRAdApiClient::staticMetaObject),
                ElementsAre("signal RequestAdSucceeded(CZRAdModelList* adData, qlonglong time)",
                            "signal RequestAdFailed(QString resultCode, QString errorContent, qlonglong time)",
                            "signal ExposeAdSuccess(QList<QString> adIdList)",
                            "signal ExposeAdFailed(QString resultCode, QString errorContent, QList<QString> adIdList)",
                            "slot OnRequestAdCallback(qulonglong taskId, HttpRspInfo stRspInfo, std::string path, "
                            "ZRAdType adType, int adPosition, QString requestId, qulonglong requestStartTimestamp)",
                            "slot OnExposeAdCallback(qulonglong taskId, HttpRspInfo stRspInfo, std::string path, "
                            "ZRAdType adType, int adPosition, QString exposeId, QList<QString> adIdList, "
                            "QString adIdListStr)"));
}

/// Records the queried domain and the start of a request.
class CCalls : public IClientState, public IHttp, public ILog {
public:
    std::string DomainUrl(const std::string& key, core::url_data::DomainBizType biz) const override {
        calls.push_back("domain " + key + " " + std::to_string(biz));
        return "https://ads.test";
    }
    unsigned long Start(const HttpReqInfo& request, core::network::http::Callback, QObject*, HttpWorkPool,
                        core::network::http::Progress, core::network::http::Progress) override {
        calls.push_back("start " + request.m_strUrl);
        return 1;
    }
    void Write(const LogRecord& record) override { calls.push_back(record.text.toStdString()); }
    void AssertionFailed(const AssertionRecord& record) override { calls.push_back(record.expression); }

    mutable std::vector<std::string> calls;
};

TEST(AdRequestOrderTest, TheStartIsLoggedAheadOfTheExchange) {
    CCalls host;
    host::Ports ports;
    ports.state = &host;
    ports.http = &host;
    ports.log = &host;
    host::Install(ports);
    {
        CZRAdApiClient client(nullptr);
        client.RequestAd(ZRAdApiTypeSearch, ZRAdTypePopup, 42, {});
        client.ExposeAd(ZRAdTypePopup, 42, {}, QString(), 0, {});
    }
    host::Uninstall();

    EXPECT_THAT(host.calls,
                ElementsAre("domain api 0", StartsWith("[Ad] Request ad start, "), "start https://ads.test/ad/search",
                            "domain api 0", StartsWith("[Ad] Expose ad start, "), "start https://ads.test/ad/expose"));
}

}  // namespace
