#include "log/FileLog.h"

#include <fmt/format.h>
#include <spdlog/sinks/rotating_file_sink.h>
#include <spdlog/spdlog.h>

#include <QFile>
#include <algorithm>

#include "framework/LogText.h"

namespace {

constexpr size_t kFileBytes = 5 * 1024 * 1024;
constexpr size_t kFiles = 3;

constexpr int kMaxLineBytes = 16 << 10;

/// Returns the text if it has at most kMaxLineBytes as a line, otherwise its beginning and the number of other bytes.
QString Limited(const QString& text) {
    constexpr int kRoomForCount = 40;
    constexpr int kMaxEscapeBytes = 6;  // of a UTF-16 unit
    if (text.size() <= kMaxLineBytes / kMaxEscapeBytes) {
        return text;
    }
    int kept = std::min(text.size(), kMaxLineBytes);
    int bytes = int(host::EscapedLogText(text.left(kept)).size());
    if (kept == text.size() && bytes <= kMaxLineBytes) {
        return text;
    }
    while (bytes > kMaxLineBytes - kRoomForCount) {
        kept = int(qint64(kept) * (kMaxLineBytes - kRoomForCount) / bytes) - 1;
        bytes = int(host::EscapedLogText(text.left(kept)).size());
    }
    kept -= text.at(kept - 1).isHighSurrogate() ? 1 : 0;
    return text.left(kept) + QStringLiteral("... (%1 bytes left out)").arg(text.mid(kept).toUtf8().size());
}

spdlog::level::level_enum Level(ZRLogType type) {
    if (type >= kZRLogFatal) {
        return spdlog::level::critical;
    }
    return type >= kZRLogError ? spdlog::level::err : spdlog::level::info;
}

}  // namespace

CFileLog::CFileLog(const QString& path) {
    qRegisterMetaType<LogEntry>();
    if (path.isEmpty()) {
        return;
    }
    try {
        auto sink = std::make_shared<spdlog::sinks::rotating_file_sink_mt>(QFile::encodeName(path).toStdString(),
                                                                           kFileBytes, kFiles);
        m_logger = std::make_shared<spdlog::logger>("client", std::move(sink));
        m_logger->set_pattern("%Y-%m-%dT%H:%M:%S.%e%z %l %t %v");
        m_logger->flush_on(spdlog::level::info);
    } catch (const spdlog::spdlog_ex& error) {
        // The log view still shows all lines.
        fmt::print(stderr, "The log file can't be written: {}\n", error.what());
    }
}

CFileLog::~CFileLog() = default;

void CFileLog::Write(const LogRecord& whole) {
    LogRecord record = whole;
    record.text = Limited(whole.text);
    if (m_logger) {
        m_logger->log(Level(record.type), "[{}] {}:{} {} {}", record.module, record.file, record.line, record.function,
                      host::EscapedLogText(record.text));
    }
    LogEntry entry{QDateTime::currentDateTimeUtc(), record};
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        entry.number = ++m_nLast;
        m_kept.push_back(entry);
        if (m_kept.size() > kKept) {
            m_kept.pop_front();
        }
    }
    Q_EMIT Written(entry);
}

std::deque<LogEntry> CFileLog::Kept() const {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_kept;
}

void CFileLog::AssertionFailed(const AssertionRecord& record) {
    LogRecord line;
    line.file = record.file;
    line.line = record.line;
    line.type = kZRLogError;
    line.module = record.module;
    line.text = QStringLiteral("Assertion %1 failed: %2 %3")
                    .arg(record.type)
                    .arg(QString::fromStdString(record.expression), QString::fromStdString(record.detail))
                    .trimmed();
    Write(line);
}
