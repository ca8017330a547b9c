#pragma once

#include <SQLiteCpp/SQLiteCpp.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <csignal>

#include "store/SqliteStore.h"
#include "support/ScriptedHostTest.h"

inline std::ostream& operator<<(std::ostream& stream, EnStoreTrouble trouble) {
    return stream << "trouble " << int(trouble);
}

/// A store in a temporary folder.
class StoreFolderTest : public ScriptedHostTest {
protected:
    static constexpr std::nullopt_t kApp = std::nullopt;

    QString Path() const { return folder.filePath(QStringLiteral("client.sqlite")); }

    static std::string Read(CSqliteStore& file, const std::string& key) {
        std::string value = "absent";
        file.ReadString(kApp, key, value);
        return value;
    }

    /// Runs one statement on a separate connection and returns its first value as text.
    std::string Sql(const std::string& sql) const {
        SQLite::Database file(Path().toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE, 5'000);
        SQLite::Statement statement(file, sql);
        return statement.executeStep() ? statement.getColumn(0).getString() : "";
    }

    /// Names of the quarantined files, without their logs.
    QStringList Quarantined() const {
        QStringList names = QDir(folder.path()).entryList({QStringLiteral("client.sqlite.corrupt-*")}, QDir::Files);
        names.erase(std::remove_if(names.begin(), names.end(),
                                   [](const QString& name) {
                                       return name.endsWith(QLatin1String("-wal")) ||
                                              name.endsWith(QLatin1String("-shm"));
                                   }),
                    names.end());
        return names;
    }

    static QByteArray Bytes(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    static void Overwrite(const QString& path, qint64 from, qint64 count) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(file.seek(from));
        ASSERT_EQ(file.write(QByteArray(int(count), '\xA5')), count);
    }

    QTemporaryDir folder;
};

/// Simulates a full disk: while it exists, no file of this process grows beyond the limit.
class CFileSizeLimit {
public:
    explicit CFileSizeLimit(rlim_t bytes) {
        m_fnBefore = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~CFileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_fnBefore);
    }
    CFileSizeLimit(const CFileSizeLimit&) = delete;
    CFileSizeLimit& operator=(const CFileSizeLimit&) = delete;

private:
    rlimit m_before{};
    void (*m_fnBefore)(int) = nullptr;
};

/// Runs the process as nobody while it exists, since permissions don't restrict root.
class CWithoutRoot {
public:
    static constexpr uid_t kNobody = 65534;

    CWithoutRoot() {
        if (m_bRoot) {
            EXPECT_EQ(seteuid(kNobody), 0);
        }
    }
    ~CWithoutRoot() {
        if (m_bRoot) {
            EXPECT_EQ(seteuid(0), 0);
        }
    }
    CWithoutRoot(const CWithoutRoot&) = delete;
    CWithoutRoot& operator=(const CWithoutRoot&) = delete;

private:
    const bool m_bRoot = geteuid() == 0;
};
