// Formats for HTTP calls and reports.
#include <QUrl>
#include <algorithm>
#include <array>

#include "core/network/http.h"
#include "framework/JsonText.h"
#include "workbench/JsonFields.h"
#include "workbench/TraceFormat.h"

namespace {

constexpr int kFirstBadStatus = 400;
// Pictures have their own sequence of ids.
constexpr uint64_t kPictures = uint64_t(1) << 63;

FieldNode Node(const QString& name, const QString& value) {
    return {name, value, {}, {}};
}

QString Number(int64_t number) {
    return number < 0 ? QString() : QString::number(number);
}

QString ResultText(int result) {
    switch (result) {
        case kHttpBadRequest:
            return QStringLiteral("bad request");
        case kHttpNoConnection:
            return QStringLiteral("no connection");
        case kHttpTimedOut:
            return QStringLiteral("timed out");
        case kHttpTooLarge:
            return QStringLiteral("too large");
        case kHttpCut:
            return QStringLiteral("cut off");
        case kHttpRedirected:
            return QStringLiteral("redirected");
        default:
            return QStringLiteral("failed");
    }
}

/// Headers that identify a user or a device.
bool IsSecret(const QString& header) {
    static const std::array<QString, 3> secrets{QStringLiteral("x-orvi-client-sessionid"),
                                                QStringLiteral("authorization"), QStringLiteral("cookie")};
    return std::find(secrets.begin(), secrets.end(), header.toLower()) != secrets.end();
}

class CHttpFormat : public ITraceFormat {
public:
    int MostRows() const override { return 1'000; }  // each with bodies of up to 128 KiB
    QString Name() const override { return QStringLiteral("Http"); }
    std::vector<QString> Titles() const override {
        return {QStringLiteral("Time"), QStringLiteral("Method"), QStringLiteral("Path"),    QStringLiteral("Task"),
                QStringLiteral("What"), QStringLiteral("ms"),     QStringLiteral("Sent, B"), QStringLiteral("Got, B")};
    }
    std::vector<int> Widths() const override { return {84, 62, 92, 48, 112, 38, 58, 50}; }
    std::vector<QString> Kinds() const override {
        return {QStringLiteral("Waiting"), QStringLiteral("Answered"), QStringLiteral("Failed")};
    }

    bool Takes(const TraceEvent& seen) const override { return std::holds_alternative<HttpTrace>(seen.what); }
    int Kind(const TraceEvent& seen) const override { return int(std::get<HttpTrace>(seen.what).kind); }
    bool IsBad(const TraceEvent& seen) const override {
        const auto& call = std::get<HttpTrace>(seen.what);
        return IsRefused(call) || call.kind == HttpTrace::EnKind::Failed || call.status >= kFirstBadStatus ||
               !call.refusal.empty();
    }

    // A call that was never started has no task and no end.
    std::optional<uint64_t> Exchange(const TraceEvent& seen) const override {
        const auto& call = std::get<HttpTrace>(seen.what);
        return call.task == 0 ? std::nullopt
                              : std::make_optional(uint64_t(call.task) | (call.isPicture ? kPictures : 0));
    }
    bool IsEnd(const TraceEvent& seen) const override {
        return std::get<HttpTrace>(seen.what).kind != HttpTrace::EnKind::Sent;
    }

    QStringList Cells(const TraceEvent& seen) const override {
        const auto& call = std::get<HttpTrace>(seen.what);
        const bool isEnd = IsEnd(seen);
        return {call.isPost ? QStringLiteral("POST") : QStringLiteral("GET"),
                QUrl(QString::fromStdString(call.url)).path(),
                QString::number(call.task),
                Outcome(call),
                Number(call.durationMs),
                QString::number(isEnd ? call.requestBytes : call.bodyBytes),
                isEnd ? QString::number(call.bodyBytes) : QString()};
    }

    std::vector<FieldNode> Detail(const TraceEvent& seen) const override {
        const auto& call = std::get<HttpTrace>(seen.what);
        std::vector<FieldNode> fields{Node(QStringLiteral("URL"), QString::fromStdString(call.url)),
                                      Node(QStringLiteral("What"), Outcome(call))};
        if (call.isPicture) {
            if (!call.refusal.empty()) {
                fields.push_back(Node(QStringLiteral("Reason"), QString::fromStdString(call.refusal)));
            }
            if (IsEnd(seen)) {
                fields.push_back(Node(QStringLiteral("Answer"), QStringLiteral("%1 bytes").arg(call.bodyBytes)));
            }
            return fields;
        }
        FieldNode headers{QStringLiteral("Headers"), QString(), {}, {}};
        for (const auto& [name, value] : call.headers) {
            const QString header = QString::fromStdString(name);
            headers.children.push_back({header, QString::fromStdString(value), {}, {}, IsSecret(header)});
        }
        if (!headers.children.empty()) {
            fields.push_back(headers);
        }
        if (IsEnd(seen)) {
            fields.push_back(BodyField(QStringLiteral("Request"), call.requestBody, call.requestBytes));
            fields.push_back(BodyField(QStringLiteral("Answer"), call.body, call.bodyBytes));
        } else {
            fields.push_back(BodyField(QStringLiteral("Request"), call.body, call.bodyBytes));
        }
        return fields;
    }

private:
    static bool IsRefused(const HttpTrace& call) { return call.kind == HttpTrace::EnKind::Sent && call.task == 0; }

    static QString Outcome(const HttpTrace& call) {
        switch (call.kind) {
            case HttpTrace::EnKind::Sent:
                return IsRefused(call) ? QStringLiteral("Not started") : QStringLiteral("Waiting");
            case HttpTrace::EnKind::Answered:
                return Answer(call);
            case HttpTrace::EnKind::Failed:
                break;
        }
        return QStringLiteral("%1 (%2)").arg(ResultText(call.result)).arg(call.result);
    }

    // The status; empty if no request was sent.
    static QString Answer(const HttpTrace& call) {
        const QString status = call.status == 0 ? QString() : QString::number(call.status);
        if (!call.fromCache) {
            return status;
        }
        return (status.isEmpty() ? QString() : status + QStringLiteral(", ")) + QStringLiteral("from the cache");
    }
};

class CReportFormat : public ITraceFormat {
public:
    QString Name() const override { return QStringLiteral("Report"); }
    std::vector<QString> Titles() const override {
        return {QStringLiteral("Time"),   QStringLiteral("What"),  QStringLiteral("Event"), QStringLiteral("Code"),
                QStringLiteral("Result"), QStringLiteral("Timer"), QStringLiteral("ms"),    QStringLiteral("Value")};
    }
    std::vector<int> Widths() const override { return {84, 88, 100, 50, 62, 78, 36, 46}; }
    std::vector<QString> Kinds() const override {
        return {QStringLiteral("Event"), QStringLiteral("Timer starts"), QStringLiteral("Timer ends")};
    }

    bool Takes(const TraceEvent& seen) const override { return std::holds_alternative<ReportTrace>(seen.what); }
    int Kind(const TraceEvent& seen) const override { return int(std::get<ReportTrace>(seen.what).kind); }
    bool IsBad(const TraceEvent& seen) const override { return !std::get<ReportTrace>(seen.what).taken; }

    QStringList Cells(const TraceEvent& seen) const override {
        const auto& report = std::get<ReportTrace>(seen.what);
        const bool isStart = report.kind == ReportTrace::EnKind::TimerStarted;
        return {Kinds()[size_t(Kind(seen))],
                QString::fromStdString(report.event),
                isStart ? QString() : QString::number(report.code),
                report.taken ? QStringLiteral("Accepted") : QStringLiteral("Refused"),
                QString::fromStdString(report.timer),
                Number(report.durationMs),
                isStart ? QString() : QString::fromStdString(report.params)};
    }

    std::vector<FieldNode> Detail(const TraceEvent& seen) const override {
        const auto& report = std::get<ReportTrace>(seen.what);
        std::vector<FieldNode> fields{Node(QStringLiteral("Event"), QString::fromStdString(report.event))};
        if (!report.timer.empty()) {
            fields.push_back(Node(QStringLiteral("Timer"), QString::fromStdString(report.timer)));
        }
        if (report.kind == ReportTrace::EnKind::TimerStarted) {
            return fields;
        }
        fields.push_back(Node(QStringLiteral("Code"), QString::number(report.code)));
        fields.push_back(Node(QStringLiteral("Broker"), QString::number(report.broker)));
        std::string error;
        const auto params = host::ParseJson(report.params, error);
        if (params) {
            fields.push_back({QStringLiteral("Parameters"), QString(), {}, JsonFields(*params)});
        } else {
            fields.push_back(BytesField(QStringLiteral("Parameters"), report.params));
        }
        return fields;
    }
};

}  // namespace

std::unique_ptr<ITraceFormat> NewHttpFormat() {
    return std::make_unique<CHttpFormat>();
}

std::unique_ptr<ITraceFormat> NewReportFormat() {
    return std::make_unique<CReportFormat>();
}
