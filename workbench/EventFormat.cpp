// Formats for the calls that modules make and receive.
#include <QUrl>

#include "workbench/EventModel.h"
#include "workbench/WireDecoder.h"

namespace {

constexpr int kFirstBadStatus = 400;
// Pictures have their own sequence of ids.
constexpr uint64_t kPictures = uint64_t(1) << 63;
// By the kinds of the traces. A message follows the commands.
constexpr const char* kTraffic[] = {"Sent", "Reply", "Failed", "Push", "Bus"};
constexpr const char* kWeb[] = {"Page", "Call", "Answer", "Refused", "Event"};
constexpr const char* kCalls[] = {"Waiting", "Answered", "Failed"};
constexpr const char* kReports[] = {"Event", "Timer starts", "Timer ends"};

/// Completes a format of one kind of trace.
template <class Trace>
EventFormatPtr FormatOf(EventFormat format, void (*fill)(EventRow& row, const Trace& trace)) {
    format.takes = [](const Event& event) { return As<Trace>(event) != nullptr; };
    format.fill = [fill](EventRow& row, const Event& event) { fill(row, *As<Trace>(event)); };
    return std::make_shared<const EventFormat>(std::move(format));
}

/// The kind is the only choice and the first cell.
void SetRow(EventRow& row, const char* kind, bool isBad, const QStringList& cells) {
    row.choices = QStringList{QString::fromLatin1(kind)};
    row.cells = row.choices + cells;
    row.tone = isBad ? EnTone::kBad : EnTone::kNormal;
}

/// The fields that have a value or children.
std::vector<FieldNode> Present(std::vector<FieldNode> fields) {
    const auto isEmpty = [](const FieldNode& field) { return field.value.isEmpty() && field.children.empty(); };
    fields.erase(std::remove_if(fields.begin(), fields.end(), isEmpty), fields.end());
    return fields;
}

void FillMessage(EventRow& row, const MessageTrace& message) {
    SetRow(row, kTraffic[4], false,
           {QString::number(message.id), QString::fromLatin1(wire::Find(message.id).name), {}, {}, {}, {}});
    row.detail = [message] {
        return Present({{"wParam"_q, QString::number(message.wParam)},
                        {"p1"_q, message.hasBody ? QString::number(message.p1) : QString()},
                        {"p2"_q, message.hasBody ? QString::number(message.p2) : QString()},
                        {"Place"_q, QString::fromStdString(message.location)},
                        {"Receivers"_q, Number(message.receivers)}});
    };
}

// A reply with another number than that of its request is decoded as the expected one.
void FillCommand(EventRow& row, const CommandTrace& command) {
    const bool isSent = command.kind == CommandTrace::EnKind::Sent;
    SetRow(row, kTraffic[size_t(command.kind)], command.error != 0,
           {QString::number(command.command), QString::fromLatin1(wire::Find(command.command).name),
            command.session == 0 ? QString() : QString::number(command.session),
            isSent ? QString() : QString::number(command.error), QString::number(command.body.size()),
            Number(command.durationMs)});
    row.detail = [kept = std::make_shared<const CommandTrace>(command)] {
        const wire::Command& asked = wire::Find(kept->asked);
        const char* type = kept->kind == CommandTrace::EnKind::Sent     ? asked.request
                           : kept->kind == CommandTrace::EnKind::Pushed ? asked.push
                                                                        : asked.reply;
        return type ? std::vector<FieldNode>{{QString::fromLatin1(type), {}, {}, wire::Decode(type, kept->body)}}
                    : wire::Decode("", kept->body);
    };
}

bool IsEnd(const HttpTrace& call) {
    return call.kind != HttpTrace::EnKind::Sent;
}

QString Outcome(const HttpTrace& call) {
    // By HttpResult.
    static const QStringList failures =
        "failed|bad request|no connection|timed out|too large|cut off|redirected"_q.split(QLatin1Char('|'));
    if (call.kind == HttpTrace::EnKind::Failed) {
        return "%1 (%2)"_q.arg(failures.value(call.result, failures.first())).arg(call.result);
    }
    if (!IsEnd(call)) {
        return call.task == 0 ? "Not started"_q : "Waiting"_q;
    }
    // Without a sent request there is no status.
    const QString status = call.status == 0 ? QString() : QString::number(call.status);
    return !call.fromCache ? status : status.isEmpty() ? "from the cache"_q : status + ", from the cache"_q;
}

std::vector<FieldNode> CallFields(const HttpTrace& call) {
    // Headers that identify a user or a device.
    static const QStringList secrets{"x-orvi-client-sessionid"_q, "authorization"_q, "cookie"_q};
    FieldNode headers{"Headers"_q};
    for (const auto& [header, value] : call.headers) {
        const QString name = QString::fromStdString(header);
        headers.children.push_back(
            {name, QString::fromStdString(value), {}, {}, secrets.contains(name, Qt::CaseInsensitive)});
    }
    std::vector<FieldNode> fields{{"URL"_q, QString::fromStdString(call.url)},
                                  {"What"_q, Outcome(call)},
                                  {"Reason"_q, QString::fromStdString(call.refusal)},
                                  headers};
    if (!call.isPicture) {
        fields.push_back(IsEnd(call) ? BodyField("Request"_q, call.requestBody, call.requestBytes)
                                     : BodyField("Request"_q, call.body, call.bodyBytes));
    }
    if (IsEnd(call)) {
        fields.push_back(call.isPicture ? FieldNode{"Answer"_q, "%1 bytes"_q.arg(call.bodyBytes)}
                                        : BodyField("Answer"_q, call.body, call.bodyBytes));
    }
    return Present(fields);
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
    const bool isBad = (!IsEnd(call) && call.task == 0) || call.kind == HttpTrace::EnKind::Failed ||
                       call.status >= kFirstBadStatus || !call.refusal.empty();
    row.tone = isBad ? EnTone::kBad : EnTone::kNormal;
    row.detail = [kept = std::make_shared<const HttpTrace>(call)] { return CallFields(*kept); };
}

}  // namespace

EventFormatPtr NewTrafficFormat() {
    EventFormat format{
        "Traffic"_q,
        "No command, push or bus message was seen yet. Log a user in to see some."_q,
        "What=what|Number=number|Name=name|Session=session|Error=error|Bytes=bytes|ms=ms"_q.split(QLatin1Char('|')),
        {{"Kind", "All kinds", {std::begin(kTraffic), std::end(kTraffic)}}}};
    format.takes = [](const Event& event) { return As<CommandTrace>(event) || As<MessageTrace>(event); };
    format.fill = [](EventRow& row, const Event& event) {
        if (const auto* message = As<MessageTrace>(event)) {
            FillMessage(row, *message);
        } else {
            FillCommand(row, *As<CommandTrace>(event));
        }
    };
    return std::make_shared<const EventFormat>(std::move(format));
}

EventFormatPtr NewStoreFormat() {
    EventFormat format{"Store"_q,
                       "Nothing was read from the store or saved to it yet"_q,
                       "What=what|Owner=owner|Key=key|Bytes=bytes|Result=result|Value"_q.split(QLatin1Char('|')),
                       {{"Kind", "All kinds", {"Read", "Save"}}}};
    // A missing key is normal; a refused save is not.
    return FormatOf<StoreTrace>(std::move(format), [](EventRow& row, const StoreTrace& store) {
        const bool isBad = store.isSave && !store.succeeded;
        const QString key = QString::fromStdString(store.key);
        SetRow(row, store.isSave ? "Save" : "Read", isBad,
               {store.owner ? QString::number(*store.owner) : "Installation"_q, key,
                store.succeeded || store.isSave ? QString::number(store.value.size()) : QString(),
                store.succeeded ? "Done"_q
                : isBad         ? "Refused"_q
                                : "Nothing there"_q,
                readable::Preview(store.value)});
        row.detail = [key, value = store.value] {
            return std::vector<FieldNode>{{"Key"_q, key}, BytesField("Value"_q, value)};
        };
    });
}

EventFormatPtr NewUrlFormat() {
    EventFormat format{"Url"_q,
                       "No page was opened and none was refused yet"_q,
                       "Result=result|URL=url|Reason=reason"_q.split(QLatin1Char('|')),
                       {{"Kind", "All kinds", {"Opened", "Refused"}}}};
    return FormatOf<UrlTrace>(std::move(format), [](EventRow& row, const UrlTrace& url) {
        const bool isRefused = !url.refusal.isEmpty();
        SetRow(row, isRefused ? "Refused" : "Opened", isRefused, {url.url, url.refusal});
        row.detail = [url] {
            const QString size = "%1 x %2"_q.arg(url.windowSize.width()).arg(url.windowSize.height());
            return Present({{"URL"_q, url.url},
                            {"Reason"_q, url.refusal},
                            {"BusinessType"_q, QString::number(url.businessType)},
                            {"FallbackMode"_q, QString::number(url.fallbackMode)},
                            {"WindowSize"_q, url.windowSize.isValid() ? size : QString()}});
        };
    });
}

EventFormatPtr NewWebFormat() {
    EventFormat format{"Web"_q,
                       "No page was loaded yet. Open the AI chat from a page to see one."_q,
                       "What=what|Name=name|Call=call|Value"_q.split(QLatin1Char('|')),
                       {{"Kind", "All kinds", {std::begin(kWeb), std::end(kWeb)}}}};
    return FormatOf<WebTrace>(std::move(format), [](EventRow& row, const WebTrace& web) {
        SetRow(row, kWeb[size_t(web.kind)], web.isBad,
               {web.name, web.call == 0 ? QString() : QString::number(web.call), readable::Preview(web.text)});
        row.detail = [web] {
            return std::vector<FieldNode>{{"Name"_q, web.name}, BodyField("Value"_q, web.text, web.text.size())};
        };
    });
}

EventFormatPtr NewHttpFormat() {
    EventFormat format{
        "Http"_q,
        "No HTTP request and no picture was seen yet"_q,
        "Method=method|Path=path|Task=task|What=what|ms=ms|Sent, B=sentBytes|Got, B=gotBytes"_q.split(QLatin1Char('|')),
        {{"Kind", "All kinds", {std::begin(kCalls), std::end(kCalls)}}},
        1'000};  // each with bodies of up to 128 KiB
    format.sequence = [](const Event& event) {
        const HttpTrace& call = *As<HttpTrace>(event);
        return call.isPicture && call.task != 0 ? call.task | kPictures : call.task;
    };
    return FormatOf<HttpTrace>(std::move(format), FillCall);
}

EventFormatPtr NewReportFormat() {
    EventFormat format{
        "Report"_q,
        "No event was reported yet"_q,
        "What=what|Event=event|Code=code|Result=result|Timer=timer|ms=ms|Value"_q.split(QLatin1Char('|')),
        {{"Kind", "All kinds", {std::begin(kReports), std::end(kReports)}}}};
    return FormatOf<ReportTrace>(std::move(format), [](EventRow& row, const ReportTrace& report) {
        const bool isStart = report.kind == ReportTrace::EnKind::TimerStarted;
        const QString code = isStart ? QString() : QString::number(report.code);
        const QString params = isStart ? QString() : QString::fromStdString(report.params);
        SetRow(row, kReports[size_t(report.kind)], !report.taken,
               {QString::fromStdString(report.event), code, report.taken ? "Accepted"_q : "Refused"_q,
                QString::fromStdString(report.timer), Number(report.durationMs), params});
        row.detail = [report, isStart, code] {
            std::vector<FieldNode> fields{{"Event"_q, QString::fromStdString(report.event)},
                                          {"Timer"_q, QString::fromStdString(report.timer)},
                                          {"Code"_q, code}};
            if (!isStart) {
                fields.push_back({"Broker"_q, QString::number(report.broker)});
                fields.push_back(BodyField("Parameters"_q, report.params, report.params.size()));
            }
            return Present(fields);
        };
    });
}
