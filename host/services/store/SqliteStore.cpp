#include "store/SqliteStore.h"

#include <QSqlError>
#include <QUuid>
#include <QVariant>

#include "framework/HostLog.h"

namespace {

constexpr host::HostLog kLog("Store");

// The installation's values stand beside those of the users, whose ids are numbers.
QVariant OwnerText(ILocalStore::Owner owner) {
    return owner ? QString::number(*owner) : QStringLiteral("app");
}

std::string Reason(const QSqlError& error) {
    return error.text().simplified().toStdString();
}

}  // namespace

CSqliteStore::CSqliteStore(const QString& path)
    : m_database(
          QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QUuid::createUuid().toString(QUuid::WithoutBraces))) {
    if (!Open(path)) {
        m_statements.reset();
        kLog.Error(FMT_STRING("The store {} is not available: {}"), path.toStdString(), Reason(m_database.lastError()));
    }
}

CSqliteStore::~CSqliteStore() {
    const QString name = m_database.connectionName();
    m_statements.reset();
    m_database.close();
    m_database = QSqlDatabase();
    QSqlDatabase::removeDatabase(name);
}

bool CSqliteStore::Open(const QString& path) {
    m_database.setDatabaseName(path);
    if (!m_database.open() || !Run("PRAGMA journal_mode=WAL") || !Run("PRAGMA synchronous=NORMAL") ||
        !Run("CREATE TABLE IF NOT EXISTS config (owner TEXT NOT NULL, key TEXT NOT NULL, value,"
             " PRIMARY KEY (owner, key)) WITHOUT ROWID")) {
        return false;
    }
    m_statements.reset(new Statements{QSqlQuery(m_database), QSqlQuery(m_database)});
    m_statements->read.setForwardOnly(true);
    return m_statements->read.prepare(QStringLiteral("SELECT value FROM config WHERE owner = ? AND key = ?")) &&
           m_statements->save.prepare(QStringLiteral("INSERT INTO config (owner, key, value) VALUES (?, ?, ?)"
                                                     " ON CONFLICT (owner, key) DO UPDATE SET value = excluded.value"));
}

bool CSqliteStore::Run(const char* sql) {
    QSqlQuery query(m_database);
    return query.exec(QString::fromLatin1(sql));
}

QVariant CSqliteStore::Read(Owner owner, const std::string& key) {
    if (!m_statements) {
        return {};
    }
    QSqlQuery& read = m_statements->read;
    read.bindValue(0, OwnerText(owner));
    read.bindValue(1, QString::fromStdString(key));
    QVariant value;
    if (!read.exec()) {
        kLog.Error(FMT_STRING("Reading {} failed: {}"), key, Reason(read.lastError()));
    } else if (read.next()) {
        value = read.value(0);
    }
    read.finish();
    return value;
}

bool CSqliteStore::Save(Owner owner, const std::string& key, const QVariant& value) {
    if (!m_statements) {
        return false;
    }
    QSqlQuery& save = m_statements->save;
    save.bindValue(0, OwnerText(owner));
    save.bindValue(1, QString::fromStdString(key));
    save.bindValue(2, value);
    const bool saved = save.exec();
    if (!saved) {
        kLog.Error(FMT_STRING("Saving {} failed: {}"), key, Reason(save.lastError()));
    }
    save.finish();
    return saved;
}

bool CSqliteStore::ReadString(Owner owner, const std::string& key, std::string& value) {
    const QVariant stored = Read(owner, key);
    if (stored.type() != QVariant::ByteArray) {
        return false;
    }
    value = stored.toByteArray().toStdString();
    return true;
}

bool CSqliteStore::SaveString(Owner owner, const std::string& key, const std::string& value) {
    // Not null even when empty: an empty text is a value.
    return Save(owner, key, QByteArray(value.data(), int(value.size())));
}

bool CSqliteStore::ReadInt64(const std::string& key, int64_t& value) {
    const QVariant stored = Read(std::nullopt, key);
    if (stored.type() != QVariant::LongLong) {
        return false;
    }
    value = stored.toLongLong();
    return true;
}

bool CSqliteStore::SaveInt64(const std::string& key, int64_t value) {
    return Save(std::nullopt, key, qlonglong(value));
}
