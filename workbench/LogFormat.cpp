// Formats for log lines, and for the activations that they describe.
#include <QRegularExpression>

#include "framework/LogText.h"
#include "workbench/EventFormat.h"
#include "workbench/WireDecoder.h"

namespace {

constexpr uint32_t kCmdActivate = 20981;

QString Escaped(const QString& text) {
    return QString::fromStdString(host::EscapedLogText(text));
}

/// The beginning of a long text, with the number of bytes left out.
QString Cut(const QString& text) {
    constexpr int kMaxLine = 16 << 10;
    const int left = text.size() > kMaxLine ? text.midRef(kMaxLine).toUtf8().size() : 0;
    return left == 0 ? text : text.left(kMaxLine) + " … %1 bytes left out"_q.arg(left);
}

// The host's own lines carry their area after "Host.". All other tags belong to modules.
void FillLine(EventRow& row, const LogRecord& record, const std::function<bool(const QString& text)>& isExpected) {
    static const QRegularExpression area("^\\[([^\\]]*)\\]"_q);
    const QString line = Cut(record.text);
    const QString text = Escaped(line);
    const QString tag = Escaped(QString::fromStdString(record.module));
    const bool isFatal = record.type >= kZRLogFatal;
    const bool isError = record.type >= kZRLogError;
    row.tone = !isError ? EnTone::kNormal : !isFatal && isExpected(line) ? EnTone::kExpected : EnTone::kBad;
    row.cells = QStringList{isFatal                         ? "Fatal"_q
                            : row.tone == EnTone::kExpected ? "Error, expected"_q
                            : isError                       ? "Error"_q
                                                            : "Info"_q,
                            tag, text};
    row.choices = QStringList{isFatal                    ? "Errors and up|Fatal only"_q
                              : row.tone == EnTone::kBad ? "Errors and up"_q
                                                         : QString(),
                              tag.startsWith("Host."_q) ? "Host"_q : "Module"_q, area.match(text).captured(1)};
    row.found = readable::FromLatin1(line).value_or(QString());
    std::vector<FieldNode> fields{{"Text"_q, row.found.isEmpty() ? text : Escaped(row.found)}};
    if (!record.file.empty()) {
        fields.push_back({"Place"_q, "%1:%2 %3"_q.arg(QString::fromStdString(record.file))
                                         .arg(record.line)
                                         .arg(QString::fromStdString(record.function))});
    }
    row.detail = [fields] { return fields; };
}

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

const ActivationLine* const kClick = &kActivationLines[0];

/// Returns the row of the table and the rest of the line; a null row for any other line.
std::pair<const ActivationLine*, QString> ActivationOf(const Event& event) {
    const auto* entry = std::get_if<LogEntry>(&event);
    for (const ActivationLine& line : kActivationLines) {
        const QString start = "[Vip] "_q + QString::fromLatin1(line.text);
        if (entry && entry->record.text.startsWith(start)) {
            return {&line, Escaped(Cut(entry->record.text.mid(start.size())))};
        }
    }
    return {nullptr, QString()};
}

enum EnActivationCell { kRight, kAnswer, kMs, kOutcome, kCellCount };

FieldNode AddCommand(EventRow& row, const CommandTrace& command, const CWireDecoder& decoder) {
    const bool isSent = command.kind == CommandTrace::EnKind::Sent;
    const wire::Command& known = *wire::Find(kCmdActivate);
    row.cells[kAnswer] = isSent               ? "waiting"_q
                         : command.error == 0 ? "%1 bytes"_q.arg(command.body.size())
                                              : "error %1"_q.arg(command.error);
    row.cells[kMs] = Number(command.durationMs);
    return {
        isSent ? "Request"_q : "Answer"_q, {}, {}, decoder.Decode(isSent ? known.request : known.reply, command.body)};
}

FieldNode AddLine(EventRow& row, const Event& event) {
    const auto& [line, rest] = ActivationOf(event);
    const QString outcome = QString::fromLatin1(line->outcome);
    row.cells[kOutcome] = outcome.contains("%1"_q) ? outcome.arg(rest) : outcome;
    row.tone = line->isBad ? EnTone::kBad : EnTone::kNormal;
    if (line == kClick) {
        row.cells[kRight] = rest.section(QLatin1Char(','), 0, 0);
    } else {
        row.choices[0] = outcome.section(QRegularExpression("[:,]"_q), 0, 0);
    }
    return {"Line"_q, Escaped(Cut(std::get<LogEntry>(event).record.text))};
}

}  // namespace

EventFormatPtr NewLogFormat(const std::function<bool(const QString& text)>& isExpected) {
    EventFormat format{"Log"_q,
                       "No line was logged yet"_q,
                       EventFormat::Columns("Severity=severity|Tag=tag|Text=text"_q),
                       {{"Severity", "All severities", {"Errors and up", "Fatal only"}},
                        {"Source", "All sources", {"Host", "Module"}},
                        {"Area", "All areas", {"AIChat", "Ad", "Premium", "Vip"}}},
                       20'000};
    format.takes = [](const Event& event) { return std::holds_alternative<LogEntry>(event); };
    format.fill = [isExpected](EventRow& row, const Event& event) {
        FillLine(row, std::get<LogEntry>(event).record, isExpected);
    };
    return std::make_shared<const EventFormat>(std::move(format));
}

EventFormatPtr NewActivationFormat(const CWireDecoder& decoder) {
    EventFormat format{"Activation"_q,
                       "No right was activated yet. A click on a widget of a right that is ready activates it."_q,
                       EventFormat::Columns("Right=right|Answer=answer|ms=ms|Outcome=outcome"_q),
                       {{"Kind", "All kinds", {"Running", "Failed", "Activated"}}}};
    format.takes = [](const Event& event) {
        const auto* command = As<CommandTrace>(event);
        return command ? command->asked == kCmdActivate : ActivationOf(event).first != nullptr;
    };
    // The picture can be closed long after the click, so that only the next click ends a sequence.
    format.step = [clicks = uint64_t(0)](const Event& event) mutable {
        const bool isClick = ActivationOf(event).first == kClick;
        clicks += isClick ? 1 : 0;
        return EventFormat::Step{clicks, isClick ? EventFormat::EnPart::kBegin : EventFormat::EnPart::kMiddle};
    };
    format.fill = [&decoder](EventRow& row, const Event& event) {
        const bool isNew = row.cells.isEmpty();
        auto fields = isNew ? std::vector<FieldNode>() : row.detail();
        if (isNew) {
            row.cells = QVector<QString>(kCellCount).toList();
            row.choices = QStringList{"Running"_q};
        }
        const auto* command = As<CommandTrace>(event);
        fields.push_back(command ? AddCommand(row, *command, decoder) : AddLine(row, event));
        row.detail = [fields = std::move(fields)] { return fields; };
    };
    return std::make_shared<const EventFormat>(std::move(format));
}
