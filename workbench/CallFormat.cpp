// Formats for HTTP calls and reports.
#include <QUrl>
#include <algorithm>
#include <array>

#include "core/network/http.h"
#include "framework/JsonText.h"
#include "workbench/EventFormatParts.h"
#include "workbench/JsonFields.h"

namespace {

constexpr int kFirstBadStatus = 400;
// Pictures have their own sequence of ids.
constexpr uint64_t kPictures = uint64_t(1) << 63;

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

// A call that was never started has no task and no end.
bool IsRefused(const HttpTrace& call) {
    return call.kind == HttpTrace::EnKind::Sent && call.task == 0;
}

bool IsEnd(const HttpTrace& call) {
    return call.kind != HttpTrace::EnKind::Sent;
}

// The status; empty if no request was sent.
QString Answer(const HttpTrace& call) {
    const QString status = call.status == 0 ? QString() : QString::number(call.status);
    if (!call.fromCache) {
        return status;
    }
    return (status.isEmpty() ? QString() : status + QStringLiteral(", ")) + QStringLiteral("from the cache");
}

QString Outcome(const HttpTrace& call) {
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

std::vector<FieldNode> CallFields(const HttpTrace& call) {
    std::vector<FieldNode> fields{Node("URL", QString::fromStdString(call.url)), Node("What", Outcome(call))};
    if (call.isPicture) {
        if (!call.refusal.empty()) {
            fields.push_back(Node("Reason", QString::fromStdString(call.refusal)));
        }
        if (IsEnd(call)) {
            fields.push_back(Node("Answer", QStringLiteral("%1 bytes").arg(call.bodyBytes)));
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
    if (IsEnd(call)) {
        fields.push_back(BodyField(QStringLiteral("Request"), call.requestBody, call.requestBytes));
        fields.push_back(BodyField(QStringLiteral("Answer"), call.body, call.bodyBytes));
    } else {
        fields.push_back(BodyField(QStringLiteral("Request"), call.body, call.bodyBytes));
    }
    return fields;
}

class CHttpFormat : public IEventFormat {
public:
    int MaxRows() const override { return 1'000; }  // each with bodies of up to 128 KiB
    QString Name() const override { return QStringLiteral("Http"); }
    QString Nothing() const override { return QStringLiteral("No HTTP request and no picture was seen yet"); }
    std::vector<Column> Columns() const override {
        return {{"Method", "method"}, {"Path", "path"},         {"Task", "task"},      {"What", "what"},
                {"ms", "ms"},         {"Sent, B", "sentBytes"}, {"Got, B", "gotBytes"}};
    }
    std::vector<Filter> Filters() const override {
        return {{"Kind", "All kinds", {std::begin(kKinds), std::end(kKinds)}}};
    }

    bool Takes(const Event& event) const override { return As<HttpTrace>(event) != nullptr; }

    std::optional<Step> StepOf(const Event& event) override {
        const HttpTrace& call = *As<HttpTrace>(event);
        const Step step{uint64_t(call.task) | (call.isPicture ? kPictures : 0),
                        IsEnd(call) ? EnPart::kEnd : EnPart::kBegin};
        return call.task == 0 ? std::nullopt : std::make_optional(step);
    }

    EventRow Row(const Event& event) const override {
        const HttpTrace& call = *As<HttpTrace>(event);
        EventRow row = NewRow(event);
        row.cells = QStringList{call.isPost ? QStringLiteral("POST") : QStringLiteral("GET"),
                                QUrl(QString::fromStdString(call.url)).path(),
                                QString::number(call.task),
                                Outcome(call),
                                Number(call.durationMs),
                                QString::number(IsEnd(call) ? call.requestBytes : call.bodyBytes),
                                IsEnd(call) ? QString::number(call.bodyBytes) : QString()};
        row.choices << QString::fromLatin1(kKinds[size_t(call.kind)]);
        const bool isBad = IsRefused(call) || call.kind == HttpTrace::EnKind::Failed ||
                           call.status >= kFirstBadStatus || !call.refusal.empty();
        row.tone = isBad ? EnTone::kBad : EnTone::kNormal;
        row.detail = [kept = std::make_shared<const HttpTrace>(call)] { return CallFields(*kept); };
        return row;
    }

private:
    static constexpr const char* kKinds[] = {"Waiting", "Answered", "Failed"};
};

std::vector<FieldNode> ReportFields(const ReportTrace& report) {
    std::vector<FieldNode> fields{Node("Event", QString::fromStdString(report.event))};
    if (!report.timer.empty()) {
        fields.push_back(Node("Timer", QString::fromStdString(report.timer)));
    }
    if (report.kind == ReportTrace::EnKind::TimerStarted) {
        return fields;
    }
    fields.push_back(Node("Code", QString::number(report.code)));
    fields.push_back(Node("Broker", QString::number(report.broker)));
    std::string error;
    if (const auto params = host::ParseJson(report.params, error)) {
        fields.push_back({QStringLiteral("Parameters"), QString(), {}, JsonFields(*params)});
    } else {
        fields.push_back(BytesField(QStringLiteral("Parameters"), report.params));
    }
    return fields;
}

class CReportFormat : public IEventFormat {
public:
    QString Name() const override { return QStringLiteral("Report"); }
    QString Nothing() const override { return QStringLiteral("No event was reported yet"); }
    std::vector<Column> Columns() const override {
        return {{"What", "what"},   {"Event", "event"}, {"Code", "code"},  {"Result", "result"},
                {"Timer", "timer"}, {"ms", "ms"},       {"Value", nullptr}};
    }
    std::vector<Filter> Filters() const override {
        return {{"Kind", "All kinds", {std::begin(kKinds), std::end(kKinds)}}};
    }

    bool Takes(const Event& event) const override { return As<ReportTrace>(event) != nullptr; }

    EventRow Row(const Event& event) const override {
        const ReportTrace& report = *As<ReportTrace>(event);
        const bool isStart = report.kind == ReportTrace::EnKind::TimerStarted;
        EventRow row = NewRow(event);
        row.choices << QString::fromLatin1(kKinds[size_t(report.kind)]);
        row.cells = QStringList{row.choices[0],
                                QString::fromStdString(report.event),
                                isStart ? QString() : QString::number(report.code),
                                report.taken ? QStringLiteral("Accepted") : QStringLiteral("Refused"),
                                QString::fromStdString(report.timer),
                                Number(report.durationMs),
                                isStart ? QString() : QString::fromStdString(report.params)};
        row.tone = report.taken ? EnTone::kNormal : EnTone::kBad;
        row.detail = [report] { return ReportFields(report); };
        return row;
    }

private:
    static constexpr const char* kKinds[] = {"Event", "Timer starts", "Timer ends"};
};

}  // namespace

std::unique_ptr<IEventFormat> NewHttpFormat() {
    return std::make_unique<CHttpFormat>();
}

std::unique_ptr<IEventFormat> NewReportFormat() {
    return std::make_unique<CReportFormat>();
}
