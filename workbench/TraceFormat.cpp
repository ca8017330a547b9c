// Formats for traffic, store and URLs.
#include "workbench/EventFormatParts.h"
#include "workbench/ReadableBytes.h"
#include "workbench/WireCommands.h"
#include "workbench/WireDecoder.h"

namespace {

// Depends on the requested command: a reply with another number is decoded as the expected one.
const char* TypeOf(const CommandTrace& command) {
    const wire::Command* known = wire::Find(command.asked);
    if (!known) {
        return nullptr;
    }
    switch (command.kind) {
        case CommandTrace::EnKind::Sent:
            return known->request;
        case CommandTrace::EnKind::Pushed:
            return known->push;
        case CommandTrace::EnKind::Replied:
        case CommandTrace::EnKind::Failed:
            break;
    }
    return known->reply;
}

std::vector<FieldNode> MessageFields(const MessageTrace& message) {
    std::vector<FieldNode> fields{Node("wParam", QString::number(message.wParam))};
    if (message.hasBody) {
        fields.push_back(Node("p1", QString::number(message.p1)));
        fields.push_back(Node("p2", QString::number(message.p2)));
    }
    fields.push_back(Node("Place", QString::fromStdString(message.location)));
    if (message.receivers >= 0) {
        fields.push_back(Node("Receivers", QString::number(message.receivers)));
    }
    return fields;
}

class CTrafficFormat : public IEventFormat {
public:
    explicit CTrafficFormat(const CWireDecoder& decoder) : m_decoder(decoder) {}

    QString Name() const override { return QStringLiteral("Traffic"); }
    QString Nothing() const override {
        return QStringLiteral("No command, push or bus message was seen yet. Log a user in to see some.");
    }
    std::vector<Column> Columns() const override {
        return {{"What", "what"},   {"Number", "number"}, {"Name", "name"}, {"Session", "session"},
                {"Error", "error"}, {"Bytes", "bytes"},   {"ms", "ms"}};
    }
    std::vector<Filter> Filters() const override {
        return {{"Kind", "All kinds", {std::begin(kKinds), std::end(kKinds)}}};
    }

    bool Takes(const Event& event) const override { return As<CommandTrace>(event) || As<MessageTrace>(event); }

    EventRow Row(const Event& event) const override {
        EventRow row = NewRow(event);
        if (const auto* bus = As<MessageTrace>(event)) {
            row.choices << QStringLiteral("Bus");
            row.cells =
                QStringList{row.choices[0], QString::number(bus->id), wire::MessageName(bus->id), {}, {}, {}, {}};
            row.detail = [message = *bus] { return MessageFields(message); };
            return row;
        }
        const CommandTrace& command = *As<CommandTrace>(event);
        row.choices << QString::fromLatin1(kKinds[size_t(command.kind)]);
        row.cells = QStringList{row.choices[0],
                                QString::number(command.command),
                                wire::CommandName(command.command),
                                command.session == 0 ? QString() : QString::number(command.session),
                                command.kind == CommandTrace::EnKind::Sent ? QString() : QString::number(command.error),
                                QString::number(command.body.size()),
                                Number(command.durationMs)};
        row.tone = command.error == 0 ? EnTone::kNormal : EnTone::kBad;
        row.detail = [this, kept = std::make_shared<const CommandTrace>(command)] {
            const char* type = TypeOf(*kept);
            std::vector<FieldNode> fields = m_decoder.Decode(type ? type : "", kept->body);
            return type ? std::vector<FieldNode>{{QString::fromLatin1(type), QString(), {}, std::move(fields)}}
                        : fields;
        };
        return row;
    }

private:
    // The first are those of CommandTrace::EnKind.
    static constexpr const char* kKinds[] = {"Sent", "Reply", "Failed", "Push", "Bus"};

    const CWireDecoder& m_decoder;
};

class CStoreFormat : public IEventFormat {
public:
    QString Name() const override { return QStringLiteral("Store"); }
    QString Nothing() const override { return QStringLiteral("Nothing was read from the store or saved to it yet"); }
    std::vector<Column> Columns() const override {
        return {{"What", "what"},   {"Owner", "owner"},   {"Key", "key"},
                {"Bytes", "bytes"}, {"Result", "result"}, {"Value", nullptr}};
    }
    std::vector<Filter> Filters() const override { return {{"Kind", "All kinds", {"Read", "Save"}}}; }

    bool Takes(const Event& event) const override { return As<StoreTrace>(event) != nullptr; }

    // A missing key is normal; a refused save is not.
    EventRow Row(const Event& event) const override {
        constexpr int kPreview = 80;
        const StoreTrace& store = *As<StoreTrace>(event);
        EventRow row = NewRow(event);
        row.choices << (store.isSave ? QStringLiteral("Save") : QStringLiteral("Read"));
        row.cells = QStringList{row.choices[0],
                                store.owner ? QString::number(*store.owner) : QStringLiteral("Installation"),
                                QString::fromStdString(store.key),
                                store.succeeded || store.isSave ? QString::number(store.value.size()) : QString(),
                                store.succeeded ? QStringLiteral("Done")
                                : store.isSave  ? QStringLiteral("Refused")
                                                : QStringLiteral("Nothing there"),
                                readable::Text(store.value.substr(0, 4 * kPreview)).left(kPreview).simplified()};
        row.tone = store.isSave && !store.succeeded ? EnTone::kBad : EnTone::kNormal;
        row.detail = [store] {
            return std::vector<FieldNode>{Node("Key", QString::fromStdString(store.key)),
                                          BytesField(QStringLiteral("Value"), store.value)};
        };
        return row;
    }
};

class CUrlFormat : public IEventFormat {
public:
    QString Name() const override { return QStringLiteral("Url"); }
    QString Nothing() const override { return QStringLiteral("No page was opened and none was refused yet"); }
    std::vector<Column> Columns() const override {
        return {{"Result", "result"}, {"URL", "url"}, {"Reason", "reason"}};
    }
    std::vector<Filter> Filters() const override { return {{"Kind", "All kinds", {"Opened", "Refused"}}}; }

    bool Takes(const Event& event) const override { return As<UrlTrace>(event) != nullptr; }

    EventRow Row(const Event& event) const override {
        const UrlTrace& url = *As<UrlTrace>(event);
        EventRow row = NewRow(event);
        row.tone = url.refusal.isEmpty() ? EnTone::kNormal : EnTone::kBad;
        row.choices << (url.refusal.isEmpty() ? QStringLiteral("Opened") : QStringLiteral("Refused"));
        row.cells = QStringList{row.choices[0], url.url, url.refusal};
        row.detail = [url] {
            std::vector<FieldNode> nodes{Node("URL", url.url), Node("Reason", url.refusal),
                                         Node("BusinessType", QString::number(url.businessType)),
                                         Node("FallbackMode", QString::number(url.fallbackMode))};
            if (url.windowSize.isValid()) {
                nodes.push_back(Node(
                    "WindowSize", QStringLiteral("%1 x %2").arg(url.windowSize.width()).arg(url.windowSize.height())));
            }
            return nodes;
        };
        return row;
    }
};

}  // namespace

std::unique_ptr<IEventFormat> NewTrafficFormat(const CWireDecoder& decoder) {
    return std::make_unique<CTrafficFormat>(decoder);
}

std::unique_ptr<IEventFormat> NewStoreFormat() {
    return std::make_unique<CStoreFormat>();
}

std::unique_ptr<IEventFormat> NewUrlFormat() {
    return std::make_unique<CUrlFormat>();
}
