#include "store/SqliteConnection.h"

#include <QUrl>
#include <QUuid>
#include <QVariant>

namespace {

// SQLite's own numbers; the driver hands them on as text.
constexpr int kReadOnlyCode = 8;
constexpr int kIoErrorCode = 10;
constexpr int kCorruptCode = 11;
constexpr int kFullCode = 13;
constexpr int kNotADatabaseCode = 26;

}  // namespace

EnSqliteFault FaultOf(const QSqlError& error) {
    if (!error.isValid()) {
        return EnSqliteFault::kNone;
    }
    // The low byte: an extended code says the same in more detail.
    switch (error.nativeErrorCode().toInt() & 0xFF) {
        case kReadOnlyCode:
            return EnSqliteFault::kReadOnly;
        case kIoErrorCode:
        case kFullCode:
            return EnSqliteFault::kCantWrite;
        case kCorruptCode:
        case kNotADatabaseCode:
            return EnSqliteFault::kCorrupt;
        default:
            return EnSqliteFault::kOther;
    }
}

std::string ReasonOf(const QSqlError& error) {
    return error.text().simplified().toStdString();
}

bool CSqliteConnection::Open(const QString& path, EnSqliteAccess access) {
    Close();
    m_database =
        QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QUuid::createUuid().toString(QUuid::WithoutBraces));
    QString name = path;
    QString options = QStringLiteral("QSQLITE_BUSY_TIMEOUT=5000");
    if (access != EnSqliteAccess::kReadWrite) {
        options += QStringLiteral(";QSQLITE_OPEN_READONLY");
    }
    if (access == EnSqliteAccess::kImmutable) {
        options += QStringLiteral(";QSQLITE_OPEN_URI");
        name = QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded(QUrl::FullyEncoded)) +
               QStringLiteral("?immutable=1");
    }
    m_database.setConnectOptions(options);
    m_database.setDatabaseName(name);
    if (!m_database.open()) {
        m_error = m_database.lastError();
        return false;
    }
    return true;
}

void CSqliteConnection::Close() {
    const QString name = m_database.connectionName();
    if (name.isEmpty()) {
        return;
    }
    m_database.close();
    m_database = QSqlDatabase();
    QSqlDatabase::removeDatabase(name);
}

bool CSqliteConnection::Run(const QString& sql) {
    QSqlQuery query(m_database);
    if (!query.exec(sql)) {
        m_error = query.lastError();
        return false;
    }
    return true;
}

std::optional<QVariant> CSqliteConnection::Value(const QString& sql) {
    QSqlQuery query(m_database);
    query.setForwardOnly(true);
    if (!query.exec(sql) || !query.next()) {
        m_error = query.lastError();
        return std::nullopt;
    }
    return query.value(0);
}

bool CSqliteConnection::Check() {
    const auto found = Value(QStringLiteral("PRAGMA quick_check(1)"));
    if (found && found->toString() != QLatin1String("ok")) {
        m_error = QSqlError(QString(), found->toString(), QSqlError::StatementError, QString::number(kCorruptCode));
        return false;
    }
    return found.has_value();
}

bool CSqliteConnection::InTransaction(const std::function<bool()>& work) {
    if (!Run(QStringLiteral("BEGIN IMMEDIATE"))) {
        return false;
    }
    if (work() && Run(QStringLiteral("COMMIT"))) {
        return true;
    }
    const QSqlError reason = m_error;
    Run(QStringLiteral("ROLLBACK"));
    m_error = reason;
    return false;
}
