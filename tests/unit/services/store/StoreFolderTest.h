#pragma once

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

/// The store in a folder of its own.
class StoreFolderTest : public ScriptedHostTest {
protected:
    static constexpr std::nullopt_t kApp = std::nullopt;

    QString Path() const { return folder.filePath(QStringLiteral("client.sqlite")); }

    static std::string Read(CSqliteStore& file, const std::string& key) {
        std::string value = "absent";
        file.ReadString(kApp, key, value);
        return value;
    }

    /// One statement on a connection of its own; the first value that it gives.
    QVariant Sql(const QString& sql) const {
        CSqliteConnection connection;
        EXPECT_TRUE(connection.Open(Path(), EnSqliteAccess::kReadWrite));
        return connection.Value(sql).value_or(QVariant());
    }

    /// The files that were moved aside, without their logs.
    QStringList MovedAside() const {
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

/// No file of this process grows past the limit while this lives, as on a disk that is full.
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

/// Permissions don't bind root: while this lives, the process is nobody.
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
