#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPlainTextEdit>
#include <QTableView>
#include <QTemporaryDir>

#include "core/network/http.h"
#include "support/ScriptedHostTest.h"
#include "workbench/EventView.h"
#include "workbench/Export.h"

using namespace ::testing;

namespace {

using EnKind = HttpTrace::EnKind;

class CallFormatTest : public ScriptedHostTest {
protected:
    CallFormatTest() {
        http_.resize(560, 600);
        http_.show();
        time.Settle();
    }

    void See(decltype(TraceEvent::what) what) {
        const TraceEvent seen{++number, 1'000 * int64_t(number), std::move(what)};
        for (CEventView* view : {&http_, &reports_}) {
            view->Model().Add(seen);
        }
    }

    static HttpTrace Sent(unsigned long task, const std::string& body) {
        HttpTrace call;
        call.task = task;
        call.isPost = true;
        call.url = "https://ads.test/ad/search?a=1";
        call.headers = {{"X-Orvi-Client-SessionId", "777123"}, {"Accept", "text"}};
        call.body = body;
        call.bodyBytes = body.size();
        return call;
    }

    static HttpTrace Picture(unsigned long load) {
        HttpTrace call;
        call.task = load;
        call.isPicture = true;
        call.url = "https://pictures.test/pictures/a.png";
        return call;
    }

    static HttpTrace End(HttpTrace call, EnKind kind, int number, const std::string& body) {
        call.kind = kind;
        call.requestBody = call.body;
        call.requestBytes = call.bodyBytes;
        (kind == EnKind::Failed ? call.result : call.status) = number;
        call.durationMs = 12;
        call.body = body;
        call.bodyBytes = body.size();
        return call;
    }

    void Show() { time.Advance(std::chrono::milliseconds(200)); }

    /// The cells of a row, after the time.
    static std::string Row(const CEventView& view, int row) {
        return view.Model().At(row).cells.join(QLatin1Char('|')).toStdString();
    }

    /// "name=value" for each field below the selected row, depth first.
    static std::vector<std::string> Fields(const std::vector<FieldNode>& nodes) {
        std::vector<std::string> fields;
        for (const FieldNode& node : nodes) {
            fields.push_back((node.name + QLatin1Char('=') + node.value).toStdString());
            const auto below = Fields(node.children);
            fields.insert(fields.end(), below.begin(), below.end());
        }
        return fields;
    }

    static std::vector<std::string> Detail(const CEventView& view, int row) {
        return Fields(view.Model().At(row).detail());
    }

    CEventView http_{NewHttpFormat()};
    CEventView reports_{NewReportFormat()};
    CRedactor aliases;
    uint64_t number = 0;
};

}  // namespace

TEST_F(CallFormatTest, ACallAndItsAnswerAreOneRow) {
    See(Sent(7, "{}"));
    See(Sent(8, "{}"));
    Show();
    ASSERT_EQ(http_.Model().rowCount(), 2);
    EXPECT_EQ(Row(http_, 0), "POST|/ad/search|7|Waiting||2|");

    See(End(Sent(7, "{}"), EnKind::Answered, 200, "[1]"));
    See(End(Sent(8, "{}"), EnKind::Failed, kHttpTimedOut, ""));
    Show();

    ASSERT_EQ(http_.Model().rowCount(), 2);
    EXPECT_EQ(Row(http_, 0), "POST|/ad/search|7|200|12|2|3");
    EXPECT_EQ(Row(http_, 1), "POST|/ad/search|8|timed out (3)|12|2|0");
    EXPECT_EQ(http_.Model().At(0).timeMs, 1'000);
}

TEST_F(CallFormatTest, AnAnswerWaitsForThePauseToEnd) {
    See(Sent(7, "{}"));
    Show();
    http_.Model().SetPaused(true);
    See(End(Sent(7, "{}"), EnKind::Answered, 200, ""));
    Show();
    EXPECT_EQ(Row(http_, 0), "POST|/ad/search|7|Waiting||2|");
    EXPECT_FALSE(http_.Model().IsSettled());

    http_.Model().SetPaused(false);
    EXPECT_EQ(Row(http_, 0), "POST|/ad/search|7|200|12|2|0");
    EXPECT_TRUE(http_.Model().IsSettled());
}

TEST_F(CallFormatTest, AnAnswerWhoseCallIsForgottenIsARowOfItsOwn) {
    See(Sent(7, "{}"));
    Show();
    http_.Model().Clear();
    See(End(Sent(7, "{}"), EnKind::Answered, 200, ""));
    Show();

    ASSERT_EQ(http_.Model().rowCount(), 1);
    EXPECT_TRUE(http_.Model().IsSettled());
}

TEST_F(CallFormatTest, AnAnswerThatComesTwiceChangesNothing) {
    See(Sent(7, "{}"));
    See(End(Sent(7, "{}"), EnKind::Answered, 200, ""));
    Show();
    number = 0;
    See(Sent(7, "{}"));
    See(End(Sent(7, "{}"), EnKind::Answered, 500, ""));
    Show();

    EXPECT_EQ(http_.Model().rowCount(), 1);
    EXPECT_EQ(Row(http_, 0), "POST|/ad/search|7|200|12|2|0");
}

TEST_F(CallFormatTest, TheDetailOfTheChosenCallFollowsItsAnswer) {
    See(Sent(7, R"({"ad_type": 2})"));
    Show();
    http_.findChild<QTableView*>(QStringLiteral("HttpTable"))->selectRow(0);
    const auto* detail = http_.findChild<QPlainTextEdit*>(QStringLiteral("HttpDetail"));
    EXPECT_FALSE(detail->toPlainText().contains(QStringLiteral("code")));

    See(End(Sent(7, R"({"ad_type": 2})"), EnKind::Answered, 200, R"({"code": 18446744073709551615})"));
    Show();

    EXPECT_TRUE(detail->toPlainText().contains(QStringLiteral("  code: 18446744073709551615")));
    EXPECT_TRUE(detail->toPlainText().contains(QStringLiteral("  ad_type: 2")));
}

TEST_F(CallFormatTest, APictureIsACallWithoutItsBytes) {
    const HttpTrace asked = Picture(7);
    HttpTrace end = End(asked, EnKind::Answered, 200, "");
    end.bodyBytes = 5'000;
    See(asked);
    Show();
    EXPECT_EQ(Row(http_, 0), "GET|/pictures/a.png|7|Waiting||0|");
    See(end);
    Show();

    ASSERT_EQ(http_.Model().rowCount(), 1);
    EXPECT_EQ(Row(http_, 0), "GET|/pictures/a.png|7|200|12|0|5000");
    EXPECT_THAT(Detail(http_, 0),
                ElementsAre("URL=https://pictures.test/pictures/a.png", "What=200", "Answer=5000 bytes"));
    EXPECT_EQ(http_.Model().At(0).tone, EnTone::kNormal);
}

TEST_F(CallFormatTest, APictureSaysWhetherItIsFromTheCache) {
    HttpTrace fresh = End(Picture(1), EnKind::Answered, 0, "");
    fresh.fromCache = true;
    HttpTrace asked = End(Picture(2), EnKind::Answered, 304, "");
    asked.fromCache = true;
    See(fresh);
    See(asked);
    Show();

    EXPECT_EQ(Row(http_, 0), "GET|/pictures/a.png|1|from the cache|12|0|0");
    EXPECT_EQ(Row(http_, 1), "GET|/pictures/a.png|2|304, from the cache|12|0|0");
}

TEST_F(CallFormatTest, BytesThatAreNoPictureAreBadAndSayWhy) {
    HttpTrace end = End(Picture(7), EnKind::Answered, 200, "");
    end.refusal = "it has too many pixels";
    See(end);
    See(End(Picture(8), EnKind::Answered, 200, ""));
    Show();

    EXPECT_THAT(Detail(http_, 0), Contains("Reason=it has too many pixels"));
    EXPECT_EQ(http_.Model().At(0).tone, EnTone::kBad);
    EXPECT_EQ(http_.Model().At(1).tone, EnTone::kNormal);
}

TEST_F(CallFormatTest, APictureAndARequestOfTheSameNumberAreTwoRows) {
    See(Sent(7, "{}"));
    See(Picture(7));
    See(End(Sent(7, "{}"), EnKind::Answered, 201, ""));
    See(End(Picture(7), EnKind::Answered, 202, ""));
    Show();

    ASSERT_EQ(http_.Model().rowCount(), 2);
    EXPECT_EQ(Row(http_, 0), "POST|/ad/search|7|201|12|2|0");
    EXPECT_EQ(Row(http_, 1), "GET|/pictures/a.png|7|202|12|0|0");
}

TEST_F(CallFormatTest, ABodyThatIsNoJsonIsTextAndHex) {
    See(End(Sent(7, ""), EnKind::Answered, 502, "<b>\xff"));
    Show();

    EXPECT_THAT(Detail(http_, 0), IsSupersetOf({"Request=empty", "Answer=4 bytes", "Text=<b>.", "Hex=3c 62 3e ff"}));
    EXPECT_EQ(http_.Model().At(0).tone, EnTone::kBad);
}

TEST_F(CallFormatTest, OfALongBodyTheRestIsSaid) {
    HttpTrace call = Sent(7, "[1, 2");
    call.bodyBytes = 100;
    See(call);
    Show();

    EXPECT_THAT(Detail(http_, 0), Contains("Request=the first 5 of 100 bytes"));
}

TEST_F(CallFormatTest, ACallThatWasNotStartedIsBadAndStandsAlone) {
    See(Sent(0, ""));
    See(Sent(0, ""));
    Show();

    EXPECT_EQ(Row(http_, 1), "POST|/ad/search|0|Not started||0|");
    EXPECT_EQ(http_.Model().At(1).tone, EnTone::kBad);
}

TEST_F(CallFormatTest, ReportsAndMeasurementsAreToldApart) {
    ReportTrace report;
    report.event = "ClickAd";
    report.code = 4;
    report.params = R"({"advertisement_id":"a","list":["x"]})";
    See(report);
    report.kind = ReportTrace::EnKind::TimerStarted;
    report.timer = "ExposeAd#3";
    report.event = "ExposeAd";
    report.taken = true;
    See(report);
    report.kind = ReportTrace::EnKind::TimerEnded;
    report.durationMs = 250;
    report.params = "null";
    See(report);
    Show();

    EXPECT_EQ(Row(reports_, 0), R"(Event|ClickAd|4|Refused|||{"advertisement_id":"a","list":["x"]})");
    EXPECT_EQ(Row(reports_, 1), "Timer starts|ExposeAd||Accepted|ExposeAd#3||");
    EXPECT_EQ(Row(reports_, 2), "Timer ends|ExposeAd|4|Accepted|ExposeAd#3|250|null");
    EXPECT_THAT(Detail(reports_, 0), ElementsAre("Event=ClickAd", "Code=4", "Broker=0", "Parameters=37 bytes",
                                                 "advertisement_id=a", "list=", "[0]=x"));
    EXPECT_EQ(reports_.Model().At(0).tone, EnTone::kBad);
    EXPECT_EQ(reports_.Model().At(2).tone, EnTone::kNormal);
}

TEST_F(CallFormatTest, AnExportHoldsNoSessionAndNoId) {
    // the session belongs to an earlier start, so no alias exists for it
    aliases.AddSecretNumber(QStringLiteral("user"), 10'001);
    aliases.AddSecretText(QStringLiteral("device"), QStringLiteral("0123456789abcdef"));
    See(End(Sent(7, R"({"request_id": "0123456789abcdef1700000000"})"), EnKind::Answered, 200,
            "\xff"
            "10001 t\0o\0p\0"));
    ReportTrace report;
    report.event = "ClickAd";
    report.params = R"({"uid":10001,"exposure_id":"0123456789abcdef1"})";
    See(report);
    Show();

    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("x.json"));
    workbench_export::Recording recording;
    for (const CEventView* view : {&http_, &reports_}) {
        recording.lists.push_back({view->Model().Format(), view->Model().Rows()});
    }
    ASSERT_EQ(workbench_export::Write(path, recording, aliases), QString());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray json = file.readAll();

    for (const char* secret : {"777123", "10001", "0123456789abcdef"}) {
        EXPECT_FALSE(json.contains(secret)) << secret << "\n" << json.constData();
    }
    EXPECT_TRUE(json.contains("X-Orvi-Client-SessionId"));
    EXPECT_TRUE(json.contains("device-11700000000")) << json.constData();
    EXPECT_TRUE(json.contains("\"hex\":\"ff user-1 20"));
    const QJsonObject all = QJsonDocument::fromJson(json).object();
    EXPECT_EQ(all[QStringLiteral("http")].toArray().size(), 1);
    EXPECT_EQ(all[QStringLiteral("report")].toArray().size(), 1);
}
