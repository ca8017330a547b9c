#include "workbench/TraceFormat.h"

#include "workbench/ReadableBytes.h"
#include "workbench/WireCommands.h"
#include "workbench/WireDecoder.h"

namespace {

FieldNode Node(const QString& name, const QString& value) {
    return {name, value, {}, {}};
}

class CTrafficFormat : public ITraceFormat {
public:
    explicit CTrafficFormat(const CWireDecoder& decoder) : m_decoder(decoder) {}

    QString Name() const override { return QStringLiteral("Traffic"); }
    std::vector<QString> Titles() const override {
        return {QStringLiteral("Time"),    QStringLiteral("What"),  QStringLiteral("Number"), QStringLiteral("Name"),
                QStringLiteral("Session"), QStringLiteral("Error"), QStringLiteral("Bytes"),  QStringLiteral("ms")};
    }
    std::vector<int> Widths() const override { return {80, 58, 58, 138, 58, 46, 46, 40}; }
    std::vector<QString> Kinds() const override {
        return {QStringLiteral("Sent"), QStringLiteral("Reply"), QStringLiteral("Failed"), QStringLiteral("Push"),
                QStringLiteral("Bus")};
    }

    bool Takes(const TraceEvent& seen) const override {
        return std::holds_alternative<CommandTrace>(seen.what) || std::holds_alternative<MessageTrace>(seen.what);
    }

    int Kind(const TraceEvent& seen) const override {
        const auto* command = std::get_if<CommandTrace>(&seen.what);
        return command ? int(command->kind) : 4;
    }

    bool IsBad(const TraceEvent& seen) const override {
        const auto* command = std::get_if<CommandTrace>(&seen.what);
        return command && command->error != 0;
    }

    QStringList Cells(const TraceEvent& seen) const override {
        const QString kind = Kinds()[size_t(Kind(seen))];
        if (const auto* message = std::get_if<MessageTrace>(&seen.what)) {
            return {kind, QString::number(message->id), wire::MessageName(message->id), {}, {}, {}, {}};
        }
        const auto& command = std::get<CommandTrace>(seen.what);
        return {kind,
                QString::number(command.command),
                wire::CommandName(command.command),
                command.session == 0 ? QString() : QString::number(command.session),
                command.kind == CommandTrace::EnKind::Sent ? QString() : QString::number(command.error),
                QString::number(command.body.size()),
                command.durationMs < 0 ? QString() : QString::number(command.durationMs)};
    }

    std::vector<FieldNode> Detail(const TraceEvent& seen) const override {
        if (const auto* message = std::get_if<MessageTrace>(&seen.what)) {
            std::vector<FieldNode> fields{Node(QStringLiteral("wParam"), QString::number(message->wParam))};
            if (message->hasBody) {
                fields.push_back(Node(QStringLiteral("p1"), QString::number(message->p1)));
                fields.push_back(Node(QStringLiteral("p2"), QString::number(message->p2)));
            }
            fields.push_back(Node(QStringLiteral("Place"), QString::fromStdString(message->location)));
            if (message->receivers >= 0) {
                fields.push_back(Node(QStringLiteral("Receivers"), QString::number(message->receivers)));
            }
            return fields;
        }
        const auto& command = std::get<CommandTrace>(seen.what);
        const char* type = TypeOf(command);
        std::vector<FieldNode> fields = m_decoder.Decode(type ? type : "", command.body);
        return type ? std::vector<FieldNode>{{QString::fromLatin1(type), QString(), {}, std::move(fields)}} : fields;
    }

private:
    // Depends on the requested command: a reply with another number is decoded as the expected one.
    static const char* TypeOf(const CommandTrace& seen) {
        const wire::Command* command = wire::Find(seen.asked);
        if (!command) {
            return nullptr;
        }
        switch (seen.kind) {
            case CommandTrace::EnKind::Sent:
                return command->request;
            case CommandTrace::EnKind::Pushed:
                return command->push;
            case CommandTrace::EnKind::Replied:
            case CommandTrace::EnKind::Failed:
                break;
        }
        return command->reply;
    }

    const CWireDecoder& m_decoder;
};

class CStoreFormat : public ITraceFormat {
public:
    QString Name() const override { return QStringLiteral("Store"); }
    std::vector<QString> Titles() const override {
        return {QStringLiteral("Time"),  QStringLiteral("What"),   QStringLiteral("Owner"), QStringLiteral("Key"),
                QStringLiteral("Bytes"), QStringLiteral("Result"), QStringLiteral("Value")};
    }
    std::vector<int> Widths() const override { return {80, 46, 70, 126, 46, 84, 60}; }
    std::vector<QString> Kinds() const override { return {QStringLiteral("Read"), QStringLiteral("Save")}; }

    bool Takes(const TraceEvent& seen) const override { return std::holds_alternative<StoreTrace>(seen.what); }
    int Kind(const TraceEvent& seen) const override { return std::get<StoreTrace>(seen.what).isSave ? 1 : 0; }

    // A missing key is normal; a refused save is not.
    bool IsBad(const TraceEvent& seen) const override {
        const auto& store = std::get<StoreTrace>(seen.what);
        return store.isSave && !store.succeeded;
    }

    QStringList Cells(const TraceEvent& seen) const override {
        const auto& store = std::get<StoreTrace>(seen.what);
        return {Kinds()[size_t(Kind(seen))],
                store.owner ? QString::number(*store.owner) : QStringLiteral("Installation"),
                QString::fromStdString(store.key),
                store.succeeded || store.isSave ? QString::number(store.value.size()) : QString(),
                store.succeeded ? QStringLiteral("Done")
                : store.isSave  ? QStringLiteral("Refused")
                                : QStringLiteral("Nothing there"),
                readable::Text(store.value).left(80).simplified()};
    }

    std::vector<FieldNode> Detail(const TraceEvent& seen) const override {
        const auto& store = std::get<StoreTrace>(seen.what);
        return {Node(QStringLiteral("Key"), QString::fromStdString(store.key)),
                BytesField(QStringLiteral("Value"), store.value)};
    }
};

class CUrlFormat : public ITraceFormat {
public:
    QString Name() const override { return QStringLiteral("Url"); }
    std::vector<QString> Titles() const override {
        return {QStringLiteral("Time"), QStringLiteral("Result"), QStringLiteral("URL"), QStringLiteral("Reason")};
    }
    std::vector<int> Widths() const override { return {84, 70, 230, 120}; }
    std::vector<QString> Kinds() const override { return {QStringLiteral("Opened"), QStringLiteral("Refused")}; }

    bool Takes(const TraceEvent& seen) const override { return std::holds_alternative<UrlTrace>(seen.what); }
    int Kind(const TraceEvent& seen) const override { return IsBad(seen) ? 1 : 0; }
    bool IsBad(const TraceEvent& seen) const override { return !std::get<UrlTrace>(seen.what).refusal.isEmpty(); }

    QStringList Cells(const TraceEvent& seen) const override {
        const auto& url = std::get<UrlTrace>(seen.what);
        return {Kinds()[size_t(Kind(seen))], url.url, url.refusal};
    }

    std::vector<FieldNode> Detail(const TraceEvent& seen) const override {
        const auto& url = std::get<UrlTrace>(seen.what);
        std::vector<FieldNode> nodes{Node(QStringLiteral("URL"), url.url), Node(QStringLiteral("Reason"), url.refusal),
                                     Node(QStringLiteral("BusinessType"), QString::number(url.businessType)),
                                     Node(QStringLiteral("FallbackMode"), QString::number(url.fallbackMode))};
        if (url.windowSize.isValid()) {
            nodes.push_back(Node(QStringLiteral("WindowSize"),
                                 QStringLiteral("%1 x %2").arg(url.windowSize.width()).arg(url.windowSize.height())));
        }
        return nodes;
    }
};

}  // namespace

std::unique_ptr<ITraceFormat> NewTrafficFormat(const CWireDecoder& decoder) {
    return std::make_unique<CTrafficFormat>(decoder);
}

std::unique_ptr<ITraceFormat> NewStoreFormat() {
    return std::make_unique<CStoreFormat>();
}

std::unique_ptr<ITraceFormat> NewUrlFormat() {
    return std::make_unique<CUrlFormat>();
}
