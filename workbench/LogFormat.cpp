// Formats for log lines, and for the activations that they describe.
#include <QRegularExpression>

#include "framework/LogText.h"
#include "workbench/EventModel.h"
#include "workbench/WireDecoder.h"
#include "workbench/diagnosis/LogTable.h"

namespace {

using log_table::EnEvent;

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
void FillLine(EventRow& row, const LogRecord& record) {
    static const QRegularExpression area("^\\[(AIChat|Ad|Premium|Vip)\\]"_q);
    const QString line = Cut(record.text);
    const QString tag = Escaped(QString::fromStdString(record.module));
    const bool isFatal = record.type >= kZRLogFatal;
    const bool isError = record.type >= kZRLogError;
    const bool isExpected = isError && !isFatal && log_table::IsExpectedError(line);
    const QString severity = isFatal ? "Fatal"_q : isExpected ? "Error, expected"_q : isError ? "Error"_q : "Info"_q;
    row.tone = isExpected ? EnTone::kExpected : isError ? EnTone::kBad : EnTone::kNormal;
    row.cells = QStringList{severity, tag, Escaped(line)};
    row.choices =
        QStringList{tag.startsWith("Host."_q) ? "Host"_q : "Module"_q, area.match(line).captured(1),
                    row.tone == EnTone::kBad ? "Errors and up"_q : QString(), isFatal ? "Fatal only"_q : QString()};
    row.found = readable::FromLatin1(line).value_or(QString());
    std::vector<FieldNode> fields{{"Text"_q, row.found.isEmpty() ? row.cells.last() : Escaped(row.found)}};
    if (!record.file.empty()) {
        fields.push_back({"Place"_q, "%1:%2 %3"_q.arg(QString::fromStdString(record.file))
                                         .arg(record.line)
                                         .arg(QString::fromStdString(record.function))});
    }
    row.detail = [fields] { return fields; };
}

/// The module's line about an activation; nothing for any other event.
std::optional<log_table::ParsedLine> ActivationLine(const Event& event) {
    const auto* entry = std::get_if<LogEntry>(&event);
    const auto line = entry ? log_table::Read(entry->record.text) : std::nullopt;
    const bool isActivation = line && line->row->kind == log_table::EnKind::Widget && *line->row->say != '\0';
    return isActivation ? line : std::nullopt;
}

enum EnActivationCell { kRight, kAnswer, kMs, kOutcome, kCellCount };

FieldNode AddCommand(EventRow& row, const CommandTrace& command) {
    const bool isSent = command.kind == CommandTrace::EnKind::Sent;
    const wire::Command& known = wire::Find(kCmdActivate);
    row.cells[kAnswer] = isSent               ? "waiting"_q
                         : command.error == 0 ? "%1 bytes"_q.arg(command.body.size())
                                              : "error %1"_q.arg(command.error);
    row.cells[kMs] = Number(command.durationMs);
    return {
        isSent ? "Request"_q : "Answer"_q, {}, {}, wire::Decode(isSent ? known.request : known.reply, command.body)};
}

FieldNode AddLine(EventRow& row, const log_table::ParsedLine& line) {
    row.cells[kOutcome] = Escaped(Cut(log_table::Filled(line.row->say, line, 0)));
    row.tone = line.row->event == EnEvent::Refused ? EnTone::kBad : EnTone::kNormal;
    if (line.row->event == EnEvent::Asked) {
        row.cells[kRight] = line.values.value(line.row->at);
    } else {
        row.choices = QStringList{row.cells[kOutcome].startsWith("Failed"_q) ? "Failed"_q : "Activated"_q};
    }
    return {"Line"_q, Escaped(Cut(line.text))};
}

}  // namespace

EventFormatPtr NewLogFormat() {
    EventFormat format{"Log"_q,
                       "No line was logged yet"_q,
                       "Severity=severity|Tag=tag|Text=text"_q.split(QLatin1Char('|')),
                       {{"Severity", "All severities", {"Errors and up", "Fatal only"}},
                        {"Source", "All sources", {"Host", "Module"}},
                        {"Area", "All areas", {"AIChat", "Ad", "Premium", "Vip"}}},
                       20'000};
    format.takes = [](const Event& event) { return std::holds_alternative<LogEntry>(event); };
    format.fill = [](EventRow& row, const Event& event) { FillLine(row, std::get<LogEntry>(event).record); };
    return std::make_shared<const EventFormat>(std::move(format));
}

EventFormatPtr NewActivationFormat() {
    EventFormat format{"Activation"_q,
                       "No right was activated yet. A click on a widget of a right that is ready activates it."_q,
                       "Right=right|Answer=answer|ms=ms|Outcome=outcome"_q.split(QLatin1Char('|')),
                       {{"Kind", "All kinds", {"Running", "Failed", "Activated"}}}};
    format.takes = [](const Event& event) {
        const auto* command = As<CommandTrace>(event);
        return command ? command->asked == kCmdActivate : ActivationLine(event).has_value();
    };
    // The picture can be closed long after the click, so that only the next click ends a sequence.
    format.sequence = [clicks = uint64_t(1)](const Event& event) mutable {
        const auto line = ActivationLine(event);
        clicks += line && line->row->event == EnEvent::Asked ? 1 : 0;
        return clicks;
    };
    format.fill = [](EventRow& row, const Event& event) {
        auto fields = row.detail ? row.detail() : std::vector<FieldNode>();
        if (row.cells.isEmpty()) {
            row.cells = QVector<QString>(kCellCount).toList();
            row.choices = QStringList{"Running"_q};
        }
        const auto* command = As<CommandTrace>(event);
        fields.push_back(command ? AddCommand(row, *command) : AddLine(row, *ActivationLine(event)));
        row.detail = [fields = std::move(fields)] { return fields; };
    };
    return std::make_shared<const EventFormat>(std::move(format));
}
