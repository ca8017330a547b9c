// Formats for log lines, and for the activations that they describe.
#include <QRegularExpression>

#include "framework/LogText.h"
#include "workbench/EventFormatParts.h"
#include "workbench/ReadableBytes.h"
#include "workbench/WireDecoder.h"

namespace {

constexpr int kMaxLine = 16 << 10;

QString Escaped(const QString& text) {
    return QString::fromStdString(host::EscapedLogText(text));
}

/// The beginning of a long text, with the number of bytes left out.
QString Cut(const QString& text) {
    const QString start = text.left(kMaxLine);
    const int left = text.size() > kMaxLine ? text.midRef(kMaxLine).toUtf8().size() : 0;
    return left == 0 ? start : start + QStringLiteral(" … %1 bytes left out").arg(left);
}

class CLogFormat : public IEventFormat {
public:
    explicit CLogFormat(std::function<bool(const QString& text)> isExpected) : m_fnIsExpected(std::move(isExpected)) {}

    int MaxRows() const override { return 20'000; }
    QString Name() const override { return QStringLiteral("Log"); }
    QString Nothing() const override { return QStringLiteral("No line was logged yet"); }
    std::vector<Column> Columns() const override {
        return {{"Severity", "severity"}, {"Tag", "tag"}, {"Text", "text"}};
    }
    std::vector<Filter> Filters() const override {
        return {{"Severity", "All severities", {kErrors, kFatal}},
                {"Source", "All sources", {kHost, kModule}},
                {"Area", "All areas", {"AIChat", "Ad", "Premium", "Vip"}}};
    }

    bool Passes(const EventRow& row, int filter, const QString& choice) const override {
        return filter == 0 && choice == QLatin1String(kErrors) ? !row.choices[0].isEmpty()
                                                               : IEventFormat::Passes(row, filter, choice);
    }

    bool Takes(const Event& event) const override { return std::holds_alternative<LogEntry>(event); }

    // The host's own lines carry their area after "Host.". All other tags belong to modules.
    EventRow Row(const Event& event) const override {
        const LogRecord& record = std::get<LogEntry>(event).record;
        const QString line = Cut(record.text);
        const QString text = Escaped(line);
        const QString tag = Escaped(QString::fromStdString(record.module));
        const bool isFatal = record.type >= kZRLogFatal;
        const bool isError = record.type >= kZRLogError;
        const bool isExpected = isError && !isFatal && m_fnIsExpected(line);
        EventRow row = NewRow(event);
        row.cells = QStringList{isFatal      ? QStringLiteral("Fatal")
                                : isExpected ? QStringLiteral("Error, expected")
                                : isError    ? QStringLiteral("Error")
                                             : QStringLiteral("Info"),
                                tag, text};
        row.tone = isExpected ? EnTone::kExpected : isError ? EnTone::kBad : EnTone::kNormal;
        row.choices << (isFatal                    ? QString::fromLatin1(kFatal)
                        : row.tone == EnTone::kBad ? QString::fromLatin1(kErrors)
                                                   : QString());
        row.choices << QString::fromLatin1(tag.startsWith(QLatin1String("Host.")) ? kHost : kModule);
        const int end = text.indexOf(QLatin1Char(']'));
        row.choices << (text.startsWith(QLatin1Char('[')) && end > 0 ? text.mid(1, end - 1) : QString());
        const auto readable = readable::FromLatin1(line);
        row.found = readable.value_or(QString());
        std::vector<FieldNode> fields{Node("Text", readable ? Escaped(*readable) : text)};
        if (!record.file.empty()) {
            fields.push_back(Node("Place", QStringLiteral("%1:%2 %3")
                                               .arg(QString::fromStdString(record.file))
                                               .arg(record.line)
                                               .arg(QString::fromStdString(record.function))));
        }
        row.detail = [fields] { return fields; };
        return row;
    }

private:
    static constexpr const char* kErrors = "Errors and up";
    static constexpr const char* kFatal = "Fatal only";
    static constexpr const char* kHost = "Host";
    static constexpr const char* kModule = "Module";

    const std::function<bool(const QString& text)> m_fnIsExpected;
};

constexpr uint32_t kCmdActivate = 20981;

/// A line of the module about an activation.
struct ActivationLine {
    const char* text;
    const char* outcome;  // %1 is the line's rest
    bool isBad;
};

constexpr ActivationLine kActivationLines[] = {
    {"Active vip, access = ", "Clicked", false},
    {"RequestActiveVip callback, ", "Failed: %1", true},
    {"Show popup failed, imageUrl is empty", "Activated, told by a toast: no picture for market and language", false},
    {"Show popup failed, ", "Activated, not told: %1", true},
    {"Get ActiveVipPopImageUrl failed, ", "Activated, no picture: %1", false},
    {"Show popup start, imageUrl = ", "Activated, the picture loads", false},
    {"OnImageLoadSucceeded, ", "Activated, the picture is shown", false},
    {"OnImageLoadFailed, ", "Activated, the picture failed: %1", true},
    {"OnImageClicked, ", "Activated, the picture was clicked: %1", false},
    {"OnClosed", "Activated, the picture was closed", false},
};

/// Returns the row of the table and the rest of the line; a null row for any other line.
std::pair<const ActivationLine*, QString> ActivationOf(const Event& event) {
    const auto* entry = std::get_if<LogEntry>(&event);
    static const QString area = QStringLiteral("[Vip] ");
    if (!entry || !entry->record.text.startsWith(area)) {
        return {nullptr, QString()};
    }
    for (const ActivationLine& line : kActivationLines) {
        const QString start = area + QString::fromLatin1(line.text);
        if (entry->record.text.startsWith(start)) {
            return {&line, Escaped(Cut(entry->record.text.mid(start.size())))};
        }
    }
    return {nullptr, QString()};
}

class CActivationFormat : public IEventFormat {
public:
    explicit CActivationFormat(const CWireDecoder& decoder) : m_decoder(decoder) {}

    QString Name() const override { return QStringLiteral("Activation"); }
    QString Nothing() const override {
        return QStringLiteral("No right was activated yet. A click on a widget of a right that is ready activates it.");
    }
    std::vector<Column> Columns() const override {
        return {{"Right", "right"}, {"Answer", "answer"}, {"ms", "ms"}, {"Outcome", "outcome"}};
    }
    std::vector<Filter> Filters() const override { return {{"Kind", "All kinds", {"Running", "Failed", "Activated"}}}; }

    bool Takes(const Event& event) const override {
        const auto* command = As<CommandTrace>(event);
        return (command && command->asked == kCmdActivate) || ActivationOf(event).first;
    }

    // The picture can be closed long after the click, so that only the next click ends a sequence.
    std::optional<Step> StepOf(const Event& event) override {
        const bool isClick = ActivationOf(event).first == &kActivationLines[0];
        m_nClicks += isClick ? 1 : 0;
        return Step{m_nClicks, isClick ? EnPart::kBegin : EnPart::kMiddle};
    }

    EventRow Row(const Event& event) const override {
        EventRow row = NewRow(event);
        row.cells = QStringList{QString(), QString(), QString(), QString()};
        row.choices << QStringLiteral("Running");
        Amend(row, event);
        return row;
    }

    void Amend(EventRow& row, const Event& event) const override {
        std::vector<FieldNode> fields = row.detail ? row.detail() : std::vector<FieldNode>();
        if (const auto* command = As<CommandTrace>(event)) {
            const bool isSent = command->kind == CommandTrace::EnKind::Sent;
            const char* type =
                isSent ? "web_premium_access.ActivePermissionStateReq" : "web_premium_access.ActivePermissionStateRsp";
            row.cells[kAnswer] = isSent                ? QStringLiteral("waiting")
                                 : command->error == 0 ? QStringLiteral("%1 bytes").arg(command->body.size())
                                                       : QStringLiteral("error %1").arg(command->error);
            row.cells[kMs] = Number(command->durationMs);
            fields.push_back({isSent ? QStringLiteral("Request") : QStringLiteral("Answer"),
                              QString(),
                              {},
                              m_decoder.Decode(type, command->body)});
        } else {
            AmendByLine(row, event);
            fields.push_back(Node("Line", Escaped(Cut(std::get<LogEntry>(event).record.text))));
        }
        row.detail = [fields = std::move(fields)] { return fields; };
    }

private:
    enum EnCell { kRight, kAnswer, kMs, kOutcome };

    static void AmendByLine(EventRow& row, const Event& event) {
        const auto& [line, rest] = ActivationOf(event);
        if (line == &kActivationLines[0]) {
            row.cells[kRight] = rest.section(QLatin1Char(','), 0, 0);
        }
        const QString outcome = QString::fromLatin1(line->outcome);
        row.cells[kOutcome] = outcome.contains(QLatin1String("%1")) ? outcome.arg(rest) : outcome;
        row.tone = line->isBad ? EnTone::kBad : EnTone::kNormal;
        if (line != &kActivationLines[0]) {
            row.choices[0] = outcome.section(QRegularExpression(QStringLiteral("[:,]")), 0, 0);
        }
    }

    const CWireDecoder& m_decoder;
    uint64_t m_nClicks = 0;
};

}  // namespace

std::unique_ptr<IEventFormat> NewLogFormat(std::function<bool(const QString& text)> isExpected) {
    return std::make_unique<CLogFormat>(std::move(isExpected));
}

std::unique_ptr<IEventFormat> NewActivationFormat(const CWireDecoder& decoder) {
    return std::make_unique<CActivationFormat>(decoder);
}
