// Formats for HTTP calls and reports.
#include <QMap>
#include <QUrl>

#include "core/network/http.h"
#include "framework/JsonText.h"
#include "workbench/EventFormat.h"

namespace {

constexpr int kFirstBadStatus = 400;
// Pictures have their own sequence of ids.
constexpr uint64_t kPictures = uint64_t(1) << 63;
// By the kinds of the traces.
constexpr const char* kCalls[] = {"Waiting", "Answered", "Failed"};
constexpr const char* kReports[] = {"Event", "Timer starts", "Timer ends"};

/// Headers that identify a user or a device.
bool IsSecret(const std::string& header) {
    static const QStringList secrets{"x-orvi-client-sessionid"_q, "authorization"_q, "cookie"_q};
    return secrets.contains(QString::fromStdString(header), Qt::CaseInsensitive);
}

// A call that was never started has no task and no end.
bool IsRefused(const HttpTrace& call) {
    return call.kind == HttpTrace::EnKind::Sent && call.task == 0;
}

bool IsEnd(const HttpTrace& call) {
    return call.kind != HttpTrace::EnKind::Sent;
}

QString Outcome(const HttpTrace& call) {
    static const QMap<int, QString> failures{{kHttpBadRequest, "bad request"_q},
                                             {kHttpNoConnection, "no connection"_q},
                                             {kHttpTimedOut, "timed out"_q},
                                             {kHttpTooLarge, "too large"_q},
                                             {kHttpCut, "cut off"_q},
                                             {kHttpRedirected, "redirected"_q}};
    if (!IsEnd(call)) {
        return IsRefused(call) ? "Not started"_q : "Waiting"_q;
    }
    if (call.kind == HttpTrace::EnKind::Failed) {
        return "%1 (%2)"_q.arg(failures.value(call.result, "failed"_q)).arg(call.result);
    }
    QStringList words;
    if (call.status != 0) {  // 0: no request was sent
        words << QString::number(call.status);
    }
    if (call.fromCache) {
        words << "from the cache"_q;
    }
    return words.join(", "_q);
}

std::vector<FieldNode> CallFields(const HttpTrace& call) {
    std::vector<FieldNode> fields{{"URL"_q, QString::fromStdString(call.url)}, {"What"_q, Outcome(call)}};
    if (!call.refusal.empty()) {
        fields.push_back({"Reason"_q, QString::fromStdString(call.refusal)});
    }
    if (call.isPicture) {
        if (IsEnd(call)) {
            fields.push_back({"Answer"_q, "%1 bytes"_q.arg(call.bodyBytes)});
        }
        return fields;
    }
    FieldNode headers{"Headers"_q};
    for (const auto& [name, value] : call.headers) {
        headers.children.push_back(
            {QString::fromStdString(name), QString::fromStdString(value), {}, {}, IsSecret(name)});
    }
    if (!headers.children.empty()) {
        fields.push_back(headers);
    }
    fields.push_back(IsEnd(call) ? BodyField("Request"_q, call.requestBody, call.requestBytes)
                                 : BodyField("Request"_q, call.body, call.bodyBytes));
    if (IsEnd(call)) {
        fields.push_back(BodyField("Answer"_q, call.body, call.bodyBytes));
    }
    return fields;
}

void FillCall(EventRow& row, const HttpTrace& call) {
    row.cells = QStringList{call.isPost ? "POST"_q : "GET"_q,
                            QUrl(QString::fromStdString(call.url)).path(),
                            QString::number(call.task),
                            Outcome(call),
                            Number(call.durationMs),
                            QString::number(IsEnd(call) ? call.requestBytes : call.bodyBytes),
                            IsEnd(call) ? QString::number(call.bodyBytes) : QString()};
    row.choices = QStringList{QString::fromLatin1(kCalls[size_t(call.kind)])};
    const bool isBad = IsRefused(call) || call.kind == HttpTrace::EnKind::Failed || call.status >= kFirstBadStatus ||
                       !call.refusal.empty();
    row.tone = isBad ? EnTone::kBad : EnTone::kNormal;
    row.detail = [kept = std::make_shared<const HttpTrace>(call)] { return CallFields(*kept); };
}

std::vector<FieldNode> ReportFields(const ReportTrace& report) {
    std::vector<FieldNode> fields{{"Event"_q, QString::fromStdString(report.event)}};
    if (!report.timer.empty()) {
        fields.push_back({"Timer"_q, QString::fromStdString(report.timer)});
    }
    if (report.kind != ReportTrace::EnKind::TimerStarted) {
        std::string error;
        const auto params = host::ParseJson(report.params, error);
        fields.push_back({"Code"_q, QString::number(report.code)});
        fields.push_back({"Broker"_q, QString::number(report.broker)});
        fields.push_back(params ? JsonField("Parameters"_q, *params) : BytesField("Parameters"_q, report.params));
    }
    return fields;
}

void FillReport(EventRow& row, const ReportTrace& report) {
    const bool isStart = report.kind == ReportTrace::EnKind::TimerStarted;
    SetRow(row, QString::fromLatin1(kReports[size_t(report.kind)]), !report.taken,
           {QString::fromStdString(report.event), isStart ? QString() : QString::number(report.code),
            report.taken ? "Accepted"_q : "Refused"_q, QString::fromStdString(report.timer), Number(report.durationMs),
            isStart ? QString() : QString::fromStdString(report.params)});
    row.detail = [report] { return ReportFields(report); };
}

}  // namespace

EventFormatPtr NewHttpFormat() {
    EventFormat format{
        "Http"_q,
        "No HTTP request and no picture was seen yet"_q,
        EventFormat::Columns("Method=method|Path=path|Task=task|What=what|ms=ms|Sent, B=sentBytes|Got, B=gotBytes"_q),
        {{"Kind", "All kinds", {std::begin(kCalls), std::end(kCalls)}}},
        1'000};  // each with bodies of up to 128 KiB
    format.step = [](const Event& event) {
        const HttpTrace& call = *As<HttpTrace>(event);
        const EventFormat::Step step{uint64_t(call.task) | (call.isPicture ? kPictures : 0),
                                     IsEnd(call) ? EventFormat::EnPart::kEnd : EventFormat::EnPart::kBegin};
        return call.task == 0 ? std::nullopt : std::make_optional(step);
    };
    return FormatOf<HttpTrace>(std::move(format), FillCall);
}

EventFormatPtr NewReportFormat() {
    return FormatOf<ReportTrace>(
        {"Report"_q,
         "No event was reported yet"_q,
         EventFormat::Columns("What=what|Event=event|Code=code|Result=result|Timer=timer|ms=ms|Value"_q),
         {{"Kind", "All kinds", {std::begin(kReports), std::end(kReports)}}}},
        FillReport);
}
