#include "workbench/LogModel.h"

#include "Theme.h"
#include "framework/LogText.h"
#include "workbench/ReadableBytes.h"

namespace {

QString Escaped(const QString& text) {
    return QString::fromStdString(host::EscapedLogText(text));
}

QString PlaceOf(const LogRecord& record) {
    return record.file.empty() ? QString()
                               : QStringLiteral("%1:%2 %3")
                                     .arg(QString::fromStdString(record.file))
                                     .arg(record.line)
                                     .arg(QString::fromStdString(record.function));
}

QString SeverityName(ZRLogType severity) {
    if (severity >= kZRLogFatal) {
        return QStringLiteral("Fatal");
    }
    return severity >= kZRLogError ? QStringLiteral("Error") : QStringLiteral("Info");
}

}  // namespace

CLogModel::CLogModel(QObject* parent) : CEntryRows(kMaxLines, kMaxLines, parent) {
    theme::OnThemeChange(this, [this] { ShowAnew(); });
}

LogRow CLogModel::Read(LogEntry entry) const {
    const LogRecord& record = entry.record;
    return {entry.time.toLocalTime().toString(QStringLiteral("HH:mm:ss.zzz")),
            record.type,
            Escaped(QString::fromStdString(record.module)),
            Escaped(record.text),
            PlaceOf(record),
            readable::FromLatin1(record.text).value_or(record.text)};
}

// The host's own lines carry their area after this word. All other tags belong to modules.
bool CLogModel::IsHostAt(int row) const {
    return At(row).tag.startsWith(QLatin1String("Host."));
}

QStringView CLogModel::AreaAt(int row) const {
    const QStringView text(At(row).text);
    const int end = At(row).text.indexOf(QLatin1Char(']'));
    return text.startsWith(QLatin1Char('[')) && end > 0 ? text.mid(1, end - 1) : QStringView();
}

QString CLogModel::InFull(int row) const {
    const LogRow& line = At(row);
    const QString readable = Escaped(line.readable);
    return line.place.isEmpty() ? readable : readable + QLatin1Char('\n') + line.place;
}

bool CLogModel::Holds(int row, const QString& text) const {
    const LogRow& line = At(row);
    return line.text.contains(text, Qt::CaseInsensitive) || line.readable.contains(text, Qt::CaseInsensitive) ||
           line.tag.contains(text, Qt::CaseInsensitive);
}

std::vector<QString> CLogModel::Titles() const {
    return {QStringLiteral("Time"), QStringLiteral("Severity"), QStringLiteral("Tag"), QStringLiteral("Text")};
}

QString CLogModel::Cell(int row, int column) const {
    const LogRow& line = At(row);
    switch (column) {
        case Time:
            return line.time;
        case Severity:
            return SeverityName(line.severity);
        case Tag:
            return line.tag;
        default:
            return line.text;
    }
}
