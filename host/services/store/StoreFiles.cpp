#include "store/StoreFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QtEndian>
#include <algorithm>

#include "framework/HostLog.h"
#include "store/Checkpointer.h"
#include "store/SqliteConnection.h"

namespace {

constexpr int kMaxCopies = 3;

constexpr qint64 kLogHeaderBytes = 32;
constexpr qint64 kFrameHeaderBytes = 24;
constexpr int kChecksummedHeaderBytes = 24;
constexpr int kChecksummedFrameBytes = 8;
constexpr int kPageSizeAt = 8;
constexpr int kSaltAt = 16;
constexpr int kChecksumAt = 24;
constexpr int kFrameCommitAt = 4;
constexpr int kFrameSaltAt = 8;
constexpr int kFrameChecksumAt = 16;
constexpr quint32 kLogMagic = 0x377F0682;  // or the next number, if the checksums are big-endian

quint32 NumberAt(const char* bytes) {
    return qFromBigEndian<quint32>(bytes);
}

/// The running checksum of a log.
class CLogChecksum {
public:
    explicit CLogChecksum(bool bigEndian) : m_bBigEndian(bigEndian) {}

    void Add(const char* bytes, qint64 count) {
        for (qint64 at = 0; at < count; at += 8) {
            m_nFirst += Word(bytes + at) + m_nSecond;
            m_nSecond += Word(bytes + at + 4) + m_nFirst;
        }
    }
    bool IsAt(const char* bytes) const { return NumberAt(bytes) == m_nFirst && NumberAt(bytes + 4) == m_nSecond; }

private:
    quint32 Word(const char* bytes) const {
        return m_bBigEndian ? qFromBigEndian<quint32>(bytes) : qFromLittleEndian<quint32>(bytes);
    }

    const bool m_bBigEndian;
    quint32 m_nFirst = 0;
    quint32 m_nSecond = 0;
};

QString FreeName(const QString& path, const QDateTime& now) {
    const QString stem = path + QStringLiteral(".corrupt-") + now.toString(QStringLiteral("yyyyMMddTHHmmss"));
    QString target = stem;
    for (int number = 2; QFileInfo::exists(target); ++number) {
        target = stem + QLatin1Char('-') + QString::number(number);
    }
    return target;
}

/// Deletes all but the last copies of a file.
void ThinOut(const QString& path) {
    const QFileInfo file(path);
    QStringList copies = file.dir().entryList({file.fileName() + QStringLiteral(".corrupt-*")}, QDir::Files,
                                              QDir::Name | QDir::Reversed);
    const auto isPart = [](const QString& name) {
        return name.endsWith(QLatin1String("-wal")) || name.endsWith(QLatin1String("-shm"));
    };
    copies.erase(std::remove_if(copies.begin(), copies.end(), isPart), copies.end());
    const QStringList surplus = copies.mid(kMaxCopies);
    for (const QString& copy : surplus) {
        for (const char* suffix : {"", "-wal", "-shm"}) {
            QFile::remove(file.dir().filePath(copy + QLatin1String(suffix)));
        }
    }
}

}  // namespace

namespace store_files {

qint64 LostPages(const QString& path) {
    QFile file(path + QStringLiteral("-wal"));
    const QByteArray log = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    if (log.size() <= kLogHeaderBytes) {
        return 0;
    }
    CLogChecksum checksum((NumberAt(log.data()) & 1) != 0);
    checksum.Add(log.data(), kChecksummedHeaderBytes);
    const qint64 pageBytes = NumberAt(log.data() + kPageSizeAt);
    if ((NumberAt(log.data()) & ~1U) != kLogMagic || !checksum.IsAt(log.data() + kChecksumAt) || pageBytes <= 0) {
        // Nothing of the log is recovered. Its page size is not known.
        constexpr qint64 usualPageBytes = 4096;
        return (log.size() - kLogHeaderBytes + usualPageBytes - 1) / usualPageBytes;
    }
    bool whole = true;
    qint64 lost = 0;
    bool finished = false;
    const qint64 frameBytes = kFrameHeaderBytes + pageBytes;
    for (qint64 at = kLogHeaderBytes; at + frameBytes <= log.size(); at += frameBytes) {
        const char* frame = log.data() + at;
        // Frames with another salt are older than the log's last restart.
        if (NumberAt(frame + kFrameSaltAt) != NumberAt(log.data() + kSaltAt) ||
            NumberAt(frame + kFrameSaltAt + 4) != NumberAt(log.data() + kSaltAt + 4)) {
            whole = false;
            continue;
        }
        if (whole) {
            checksum.Add(frame, kChecksummedFrameBytes);
            checksum.Add(frame + kFrameHeaderBytes, pageBytes);
            whole = checksum.IsAt(frame + kFrameChecksumAt);
        }
        if (!whole) {
            // A process that is killed while it writes leaves the last frame half written, which is no damage.
            finished = finished || (lost > 0 && NumberAt(frame + kFrameCommitAt) != 0);
            ++lost;
        }
    }
    return finished ? lost : 0;
}

void KeepDamagedLog(const host::CHostLog& log, const char* kind, const QString& path) {
    const qint64 lost = LostPages(path);
    if (lost == 0) {
        return;
    }
    const QString file = path + QStringLiteral("-wal");
    const QString copy = FreeName(file, QDateTime::currentDateTimeUtc());
    log.Error(FMT_STRING("The log of the {} {} is damaged: {} pages of it can't be recovered. {} {}"), kind,
              path.toStdString(), lost, QFile::copy(file, copy) ? "It is kept as" : "It can't be kept as",
              copy.toStdString());
    ThinOut(file);
}

QString Quarantine(const QString& path, const QDateTime& now) {
    const QString target = FreeName(path, now);
    if (!QDir().rename(path, target)) {
        return {};
    }
    for (const char* suffix : {"-wal", "-shm"}) {
        QDir().rename(path + QLatin1String(suffix), target + QLatin1String(suffix));
    }
    ThinOut(path);
    return target;
}

bool QuarantineCorrupt(const host::CHostLog& log, const char* kind, const QString& path, const SqliteError& error,
                       CCheckpointer* checkpointer) {
    if (checkpointer) {
        checkpointer->Abandon();
    }
    const QString target = Quarantine(path, QDateTime::currentDateTimeUtc());
    if (target.isEmpty()) {
        log.Error(FMT_STRING("The {} {} is damaged and can't be moved aside: {}"), kind, path.toStdString(),
                  error.reason);
        return false;
    }
    log.Error(FMT_STRING("The {} {} is damaged and was moved to {}: {}"), kind, path.toStdString(),
              target.toStdString(), error.reason);
    return true;
}

qint64 Bytes(const QString& path) {
    return QFileInfo(path).size() + QFileInfo(path + QStringLiteral("-wal")).size();
}

bool HasLog(const QString& path) {
    return QFileInfo(path + QStringLiteral("-wal")).size() > 0;
}

}  // namespace store_files
