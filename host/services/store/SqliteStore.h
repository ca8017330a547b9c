#pragma once

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <memory>

#include "core/ILocalStore.h"

/// The local configuration in one SQLite file. What a save acknowledged is in the write-ahead log, and
/// survives the process's end. Main thread.
class CSqliteStore : public ILocalStore {
public:
    /// Opens the file, or makes it. Where that fails the reason is logged, every read and save gives false,
    /// and the client goes on.
    explicit CSqliteStore(const QString& path);
    ~CSqliteStore() override;

    CSqliteStore(const CSqliteStore&) = delete;
    CSqliteStore& operator=(const CSqliteStore&) = delete;

    bool IsOpen() const { return m_statements != nullptr; }

    bool ReadString(Owner owner, const std::string& key, std::string& value) override;
    bool SaveString(Owner owner, const std::string& key, const std::string& value) override;
    bool ReadInt64(const std::string& key, int64_t& value) override;
    bool SaveInt64(const std::string& key, int64_t value) override;

private:
    struct Statements {
        QSqlQuery read;
        QSqlQuery save;
    };

    bool Open(const QString& path);
    bool Run(const char* sql);
    QVariant Read(Owner owner, const std::string& key);
    bool Save(Owner owner, const std::string& key, const QVariant& value);

    QSqlDatabase m_database;
    std::unique_ptr<Statements> m_statements;
};
