// Formats for traffic, store, URLs and web pages.
#include "workbench/EventFormat.h"
#include "workbench/WireDecoder.h"

namespace {

// The first are those of CommandTrace::EnKind.
constexpr const char* kTraffic[] = {"Sent", "Reply", "Failed", "Push", "Bus"};
// By WebTrace::EnKind.
constexpr const char* kWeb[] = {"Page", "Call", "Answer", "Refused", "Event"};

// Depends on the requested command: a reply with another number is decoded as the expected one.
QString TypeOf(const CommandTrace& command) {
    const wire::Command* known = wire::Find(command.asked);
    return QString::fromLatin1(!known                                         ? nullptr
                               : command.kind == CommandTrace::EnKind::Sent   ? known->request
                               : command.kind == CommandTrace::EnKind::Pushed ? known->push
                                                                              : known->reply);
}

void FillMessage(EventRow& row, const MessageTrace& message) {
    SetRow(row, QString::fromLatin1(kTraffic[4]), false,
           {QString::number(message.id), wire::MessageName(message.id), {}, {}, {}, {}});
    row.detail = [message] {
        std::vector<FieldNode> fields{{"wParam"_q, QString::number(message.wParam)}};
        if (message.hasBody) {
            fields.push_back({"p1"_q, QString::number(message.p1)});
            fields.push_back({"p2"_q, QString::number(message.p2)});
        }
        fields.push_back({"Place"_q, QString::fromStdString(message.location)});
        if (message.receivers >= 0) {
            fields.push_back({"Receivers"_q, QString::number(message.receivers)});
        }
        return fields;
    };
}

void FillCommand(EventRow& row, const CommandTrace& command, const CWireDecoder& decoder) {
    const bool isSent = command.kind == CommandTrace::EnKind::Sent;
    SetRow(row, QString::fromLatin1(kTraffic[size_t(command.kind)]), command.error != 0,
           {QString::number(command.command), wire::CommandName(command.command),
            command.session == 0 ? QString() : QString::number(command.session),
            isSent ? QString() : QString::number(command.error), QString::number(command.body.size()),
            Number(command.durationMs)});
    row.detail = [&decoder, kept = std::make_shared<const CommandTrace>(command)] {
        const QString type = TypeOf(*kept);
        std::vector<FieldNode> fields = decoder.Decode(type.toStdString(), kept->body);
        return type.isEmpty() ? fields : std::vector<FieldNode>{{type, {}, {}, fields}};
    };
}

// A missing key is normal; a refused save is not.
void FillStore(EventRow& row, const StoreTrace& store) {
    SetRow(row, store.isSave ? "Save"_q : "Read"_q, store.isSave && !store.succeeded,
           {store.owner ? QString::number(*store.owner) : "Installation"_q, QString::fromStdString(store.key),
            store.succeeded || store.isSave ? QString::number(store.value.size()) : QString(),
            store.succeeded ? "Done"_q
            : store.isSave  ? "Refused"_q
                            : "Nothing there"_q,
            readable::Preview(store.value)});
    row.detail = [store] {
        return std::vector<FieldNode>{{"Key"_q, QString::fromStdString(store.key)}, BytesField("Value"_q, store.value)};
    };
}

void FillUrl(EventRow& row, const UrlTrace& url) {
    const bool isRefused = !url.refusal.isEmpty();
    SetRow(row, isRefused ? "Refused"_q : "Opened"_q, isRefused, {url.url, url.refusal});
    row.detail = [url] {
        std::vector<FieldNode> fields{{"URL"_q, url.url},
                                      {"Reason"_q, url.refusal},
                                      {"BusinessType"_q, QString::number(url.businessType)},
                                      {"FallbackMode"_q, QString::number(url.fallbackMode)}};
        if (url.windowSize.isValid()) {
            fields.push_back({"WindowSize"_q, "%1 x %2"_q.arg(url.windowSize.width()).arg(url.windowSize.height())});
        }
        return fields;
    };
}

void FillWeb(EventRow& row, const WebTrace& web) {
    SetRow(row, QString::fromLatin1(kWeb[size_t(web.kind)]), web.isBad,
           {web.name, web.call == 0 ? QString() : QString::number(web.call), readable::Preview(web.text)});
    row.detail = [web] {
        return std::vector<FieldNode>{{"Name"_q, web.name}, BodyField("Value"_q, web.text, web.text.size())};
    };
}

}  // namespace

std::vector<EventFormat::Column> EventFormat::Columns(const QString& list) {
    std::vector<Column> columns;
    const QStringList all = list.split(QLatin1Char('|'));
    for (const QString& column : all) {
        columns.push_back({column.section(QLatin1Char('='), 0, 0), column.section(QLatin1Char('='), 1)});
    }
    return columns;
}

void SetRow(EventRow& row, const QString& kind, bool isBad, const QStringList& cells) {
    row.choices = QStringList{kind};
    row.cells = QStringList{kind} + cells;
    row.tone = isBad ? EnTone::kBad : EnTone::kNormal;
}

EventFormatPtr NewTrafficFormat(const CWireDecoder& decoder) {
    EventFormat format{
        "Traffic"_q,
        "No command, push or bus message was seen yet. Log a user in to see some."_q,
        EventFormat::Columns("What=what|Number=number|Name=name|Session=session|Error=error|Bytes=bytes|ms=ms"_q),
        {{"Kind", "All kinds", {std::begin(kTraffic), std::end(kTraffic)}}}};
    format.takes = [](const Event& event) { return As<CommandTrace>(event) || As<MessageTrace>(event); };
    format.fill = [&decoder](EventRow& row, const Event& event) {
        if (const auto* message = As<MessageTrace>(event)) {
            FillMessage(row, *message);
        } else {
            FillCommand(row, *As<CommandTrace>(event), decoder);
        }
    };
    return std::make_shared<const EventFormat>(std::move(format));
}

EventFormatPtr NewStoreFormat() {
    return FormatOf<StoreTrace>(
        {"Store"_q,
         "Nothing was read from the store or saved to it yet"_q,
         EventFormat::Columns("What=what|Owner=owner|Key=key|Bytes=bytes|Result=result|Value"_q),
         {{"Kind", "All kinds", {"Read", "Save"}}}},
        FillStore);
}

EventFormatPtr NewUrlFormat() {
    return FormatOf<UrlTrace>({"Url"_q,
                               "No page was opened and none was refused yet"_q,
                               EventFormat::Columns("Result=result|URL=url|Reason=reason"_q),
                               {{"Kind", "All kinds", {"Opened", "Refused"}}}},
                              FillUrl);
}

EventFormatPtr NewWebFormat() {
    return FormatOf<WebTrace>({"Web"_q,
                               "No page was loaded yet. Open the AI chat from a page to see one."_q,
                               EventFormat::Columns("What=what|Name=name|Call=call|Value"_q),
                               {{"Kind", "All kinds", {std::begin(kWeb), std::end(kWeb)}}}},
                              FillWeb);
}
