#include "store/StoreFiles.h"

#include <QDir>
#include <QFileInfo>

#include "framework/HostLog.h"
#include "store/Checkpointer.h"
#include "store/SqliteConnection.h"

namespace store_files {

QString Quarantine(const QString& path, const QDateTime& now) {
    const QString stem = path + QStringLiteral(".corrupt-") + now.toString(QStringLiteral("yyyyMMddTHHmmss"));
    QString target = stem;
    for (int number = 2; QFileInfo::exists(target); ++number) {
        target = stem + QLatin1Char('-') + QString::number(number);
    }
    if (!QDir().rename(path, target)) {
        return {};
    }
    for (const char* suffix : {"-wal", "-shm"}) {
        QDir().rename(path + QLatin1String(suffix), target + QLatin1String(suffix));
    }
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
